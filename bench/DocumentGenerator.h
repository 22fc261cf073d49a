#pragma once

#include "model/Entry.h"
#include "model/Project.h"

#include <QDate>
#include <cstdint>
#include <random>

// Builds a project list that looks like years of real use: finished period entries (many with
// pauses), day entries and flat fees spread over several years, a few running and paused timers,
// comments of every length in several scripts, tags, wages and rounding rules. The same seed
// always gives the same document.
class DocumentGenerator {
public:
    static constexpr std::uint32_t defaultSeed = 20240517;

    explicit DocumentGenerator(std::uint32_t seed = defaultSeed);

    // itemCount timed entries and flat fees together, shared unevenly among projectCount projects.
    ProjectList generate(int itemCount, int projectCount);

private:
    std::shared_ptr<Project> makeProject(int index);
    std::shared_ptr<Entry> makePeriodEntry(QDate day);
    std::shared_ptr<Entry> makeDayEntry(QDate day);
    std::shared_ptr<ProjectItem> makeFlatFee(QDate day);
    std::shared_ptr<Entry> makeTimer(QDate day, bool paused);
    void fillItem(ProjectItem &item);
    QString comment();
    QString tags();
    QList<QDate> days(int count);

    // Uniform in [0, bound).
    int below(int bound);
    // Uniform in [low, high].
    int between(int low, int high);
    bool chance(int percent);
    template <typename T> const T &pick(const QList<T> &values) {
        return values[below(int(values.size()))];
    }

    std::mt19937 m_random;
    int m_ticket = 1000;
};
