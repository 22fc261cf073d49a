#pragma once

#include "PauseEntry.h"
#include "Project.h"

#include <QString>
#include <QStringList>
#include <optional>
#include <string>

// Builds the model from the element texts the project-file reader collects: one project, entry,
// flat fee or pause at a time, each finished when its element closes. Here the texts are checked:
// a missing required element ends the read with a message naming the element, the object and the
// line; a number or moment that is none leaves its field without a value (as if the element were
// not there) and is noted in unreadable().
class ProjectXmlBuilder {
public:
    using Text = std::optional<QString>;
    // Numbers and moments are only parsed, so their text is kept as it came.
    using Raw = std::optional<std::string>;

    struct PauseFields {
        Raw from;
        Raw to;
    };

    struct EntryFields {
        int line = 0;
        Raw working, time, checked;
        Text day, comment, tags;
        bool hasPeriod = false;
        bool hasPausedAt = false;
        Text fromDate, fromTime, toDate, toTime, pausedDate, pausedTime;
        QStringList attachments;
        PauseList pauses;
    };

    struct FeeFields {
        int line = 0;
        Raw amount, checked;
        Text day, comment, tags;
        QStringList attachments;
    };

    struct ProjectFields {
        int line = 0;
        Text name, description, tags;
        Raw wage, expanded, customer;
        bool hasRounding = false;
        Raw what, roundTo, type;
        QStringList attachments;
        ItemList timed;
        ItemList fees;
    };

    // Thrown by the finishing operations to end a read with a structural error.
    struct ReadError {
        QString message;
        int line;
    };

    static QString fromUtf8(const std::string &text) {
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }
    // An element given twice counts with its first text.
    static void setOnce(Text &field, const std::string &text) {
        if (!field)
            field = fromUtf8(text);
    }
    static void setOnce(Raw &field, const std::string &text) {
        if (!field)
            field = text;
    }

    // The object whose element is open, or null.
    ProjectFields *project() { return m_project ? &*m_project : nullptr; }
    EntryFields *entry() { return m_entry ? &*m_entry : nullptr; }
    FeeFields *fee() { return m_fee ? &*m_fee : nullptr; }
    PauseFields *pause() { return m_pause ? &*m_pause : nullptr; }

    void startProject(int line);
    void startEntry(int line);
    void startFee(int line);
    void startPause();

    // Each makes the object from its texts and hands it to the one that holds it.
    void finishProject();
    void finishEntry();
    void finishFee();
    void finishPause();

    // Drops the entry, flat fee and pause being read.
    void leaveOutOpenItems();

    const ProjectList &projects() const { return m_projects; }
    // One sentence per value left without one.
    const QStringList &unreadable() const { return m_unreadable; }

private:
    // The object an element belongs to, named in error messages only: the label is made when a
    // message needs it, not for every object read.
    struct Object {
        const char *kind; // "entry", "flat fee"; null for the project itself
        int line;
    };

    QString projectLabel() const;
    QString label(const Object &object) const;
    [[noreturn]] void missing(const char *element, const Object &object) const;
    void noteUnreadable(const char *message, const char *element, const Object &object,
                        const std::string &text);

    template <typename T>
    const T &required(const std::optional<T> &field, const char *element,
                      const Object &object) const {
        if (!field)
            missing(element, object);
        return *field;
    }

    // The value of the field; the fallback (no moment) when it is missing or unreadable.
    int integer(const Raw &field, const char *element, const Object &object, int fallback);
    float number(const Raw &field, const char *element, const Object &object, float fallback);
    QDateTime moment(const Raw &field, const char *element, const Object &object);

    int m_projectIndex = 0;
    std::optional<ProjectFields> m_project;
    std::optional<EntryFields> m_entry;
    std::optional<FeeFields> m_fee;
    std::optional<PauseFields> m_pause;
    ProjectList m_projects;
    QStringList m_unreadable;
};
