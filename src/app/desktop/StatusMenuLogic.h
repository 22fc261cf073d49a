#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <functional>
#include <memory>

class Entry;
class Project;
class ProjectCollection;

// What the status menu lists and what its commands do, without the menu: one line per running or
// paused timer ("Web shop: 01:23") with its pause or resume and stop commands, and the projects a
// new timer can start in, each in its customer's colour.
class StatusMenuLogic {
public:
    // The colour of a customer by id (invalid for none); the project colour stands in then.
    using CustomerColour = std::function<QColor(int customerId)>;

    struct EntryLine {
        std::shared_ptr<Entry> entry;
        QString title;
        QString image;      // "btn_play" while running, "btn_pause" while paused
        QString pauseTitle; // "Pause", or "Resume" while paused
    };

    struct ProjectLine {
        std::shared_ptr<Project> project;
        QColor colour;
    };

    StatusMenuLogic(ProjectCollection &collection, CustomerColour customerColour);

    QList<EntryLine> entryLines() const;
    QList<ProjectLine> projectLines() const;
    // The tray icon's tooltip: the program's name and a line per timer.
    QString toolTip(const QList<EntryLine> &lines) const;

    std::shared_ptr<Entry> startTimer(const std::shared_ptr<Project> &project);
    // Resumes a paused entry, pauses a running one.
    void pauseResume(Entry &entry);
    // Finishes the entry now, without the entry sheet; the end is rounded when its project rounds
    // clock times.
    void stop(Entry &entry);

private:
    ProjectCollection &m_collection;
    CustomerColour m_customerColour;
};
