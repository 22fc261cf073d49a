#pragma once

#include <QDate>
#include <QString>
#include <memory>

class FlatFeeEntry;
class Project;
class ProjectCollection;

// The logic of the sheet that books a flat fee in a project or edits one: its fields and what
// ending it changes in the document. It has no checks: an amount that is not a number is booked
// as 0. Cancelling changes nothing.
class FlatFeeSheetLogic {
public:
    enum class Mode { NewEntry, EditEntry };

    explicit FlatFeeSheetLogic(ProjectCollection &collection);

    // Today, no comment, amount 0, no tags; the fee will go into the project. False (the sheet
    // does not open) without a project.
    bool newFlatFeeEntry(const std::shared_ptr<Project> &project);
    // The fee's values; false without a fee.
    bool editFlatFeeEntry(const std::shared_ptr<FlatFeeEntry> &fee);

    Mode mode() const { return m_mode; }
    // "new entry" or "edit entry".
    QString title() const;
    // "Create" or "Accept".
    QString acceptButtonTitle() const;
    std::shared_ptr<Project> project() const { return m_project; }
    std::shared_ptr<FlatFeeEntry> editedEntry() const { return m_fee; }

    QDate day() const { return m_day; }
    void setDay(QDate day) { m_day = day; }
    QString comment() const { return m_comment; }
    void setComment(const QString &comment) { m_comment = comment; }
    // The amount as typed; text that is not a number is an amount of 0.
    QString amountText() const { return m_amountText; }
    void setAmountText(const QString &text) { m_amountText = text; }
    float amount() const;
    QString tags() const { return m_tags; }
    void setTags(const QString &tags) { m_tags = tags; }

    // After the sheet closed: books the new fee in the project ("Add Entry") or changes the
    // edited one ("Edit Entry"); returns the fee.
    std::shared_ptr<FlatFeeEntry> sheetDidEnd();

    // A fee holding the fields: what is booked, or handed over as the new values.
    std::shared_ptr<FlatFeeEntry> valuesFromFields() const;

private:
    ProjectCollection &m_collection;
    Mode m_mode = Mode::NewEntry;
    std::shared_ptr<Project> m_project;
    std::shared_ptr<FlatFeeEntry> m_fee;
    QDate m_day;
    QString m_comment;
    QString m_amountText;
    QString m_tags;
};
