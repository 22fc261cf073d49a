#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>

#include "AttachmentList.h"
#include "KeyValueCoding.h"

class Project;

// What timed entries and flat fees have in common: they live in one list of a project and answer
// the same state, duration and key-path questions, so that lists, totals, search criteria and
// reports treat both kinds alike.
class ProjectItem : public KeyValueCoding {
public:
    enum class Kind { Entry, FlatFee };

    virtual ~ProjectItem();
    virtual Kind kind() const = 0;
    bool isEntry() const { return kind() == Kind::Entry; }
    bool isFlatFee() const { return kind() == Kind::FlatFee; }

    virtual bool hasPeriod() const = 0;
    virtual bool isWorking() const = 0;
    virtual bool isPaused() const = 0;
    bool isFinished() const { return !isWorking(); }
    virtual int time() const = 0;
    virtual int pauseTime() const = 0;
    virtual int effectiveDuration() const = 0;
    virtual QDateTime fromDateAsDate() const = 0;
    virtual QDateTime toDateAsDate() const = 0;

    // The day of a day entry or flat fee ("dd.MM.yyyy"); empty or none for a period entry.
    QString date() const { return date_; }
    void setDate(const QString &date);
    QString comment() const { return comment_; }
    void setComment(const QString &comment) { comment_ = comment; }
    QString tags() const { return tags_; }
    void setTags(const QString &tags) { tags_ = tags; }
    bool isChecked() const { return checked_; }
    void setChecked(bool checked) { checked_ = checked; }
    Project *parent() const { return m_parent; }
    void setParent(Project *parent) { m_parent = parent; }

    // Attached file paths without duplicates. A missing list (as opposed to an empty one) makes
    // the add and remove operations log and do nothing.
    QStringList attachments() const { return m_attachments.paths(); }
    bool hasAttachmentList() const { return m_attachments.exists(); }
    void setAttachments(const std::optional<QStringList> &attachments) {
        m_attachments.set(attachments);
    }
    void addAttachments(const QStringList &paths) { m_attachments.add(paths); }
    void removeAttachments(const QStringList &paths) { m_attachments.remove(paths); }

    // The day in the "listDateFormat" date style.
    QString formattedDay() const;
    // The comment with every line feed replaced by "<br/>".
    QString htmlComment() const;

    // The value behind a key path ("time", "effectiveDuration", "fromDateAsDate", "amount", ...),
    // as search criteria and reports read it; invalid for a key the item does not have.
    QVariant valueForKey(QStringView key) const override;

    virtual std::shared_ptr<ProjectItem> copyItem() const = 0;
    virtual QString stringDescription() const = 0;
    virtual QVariantMap dictionaryRepresentation() const = 0;

    // Sort key of the item's first day: the Julian day of the start date (period entry) or day,
    // parsed once and kept until the text changes. INT64_MIN when it does not parse.
    qint64 sortDay() const { return m_sortDay != sortDayUnknown ? m_sortDay : parseSortDay(); }

protected:
    ProjectItem() = default;
    ProjectItem(const ProjectItem &) = default;
    // The text the sort day is parsed from.
    virtual const QString &sortDayText() const { return date_; }
    void invalidateSortDay() const { m_sortDay = sortDayUnknown; }
    // A text as a description prints it: "(null)" for none.
    static QString described(const QString &text);

    QString date_;
    QString comment_;
    QString tags_;
    bool checked_ = false;
    Project *m_parent = nullptr;
    AttachmentList m_attachments;

private:
    qint64 parseSortDay() const;

    static constexpr qint64 sortDayUnknown = std::numeric_limits<qint64>::max();
    mutable qint64 m_sortDay = sortDayUnknown;
};

using ItemList = QList<std::shared_ptr<ProjectItem>>;
