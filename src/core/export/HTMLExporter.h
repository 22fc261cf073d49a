#pragma once

#include "Exporter.h"

class Customer;
class CustomerStorage;
class Entry;
class EntryTexts;
class FlatFeeEntry;

// Fills the templates of a style folder (".hfstyle") with the chosen projects and writes the page
// as report.html into a target folder, beside copies of the style's sheets and images. Each
// placeholder is replaced, in a fixed order, by literal search and replace in the text built so
// far: a placeholder name inside a value inserted earlier is expanded by a later step, one
// inserted later stays as it is. Values go in as they are, without HTML escaping.
class HTMLExporter : public Exporter {
public:
    // Reads report.html, project.template, entry.template and flatfeeentry.template of the style
    // as UTF-8; a missing one reads as empty. The customers may be null (no project then has one).
    HTMLExporter(const QString &stylePath, const CustomerStorage *customers);

    QString styleBundle() const { return m_styleBundle; }

    // The path names the target folder; the field choices and the encoding are ignored. Fails
    // only when report.html cannot be written.
    Result exportProjects(const QStringList &projectNames, const QList<bool> &projectFields,
                          const QList<bool> &entryFields, const QString &path, bool applyFilter,
                          const QString &encoding) override;

    // The filled template of one project (writing its customer's picture into the target
    // folder), timed entry or flat fee.
    QString getHTMLBlockForProject(const Project &project, bool applyFilter,
                                   const QString &targetDir, EntryTexts &texts) const;
    QString getHTMLBlockForTimerEntry(const Entry &entry, EntryTexts &texts) const;
    QString getHTMLBlockForFlatFeeEntry(const FlatFeeEntry &fee, EntryTexts &texts) const;

    // Every line feed as "<br/>".
    static QString convertNewLines(const QString &text);

private:
    void copyStyleFiles(const QString &targetDir) const;
    // "<img src=...>" of the customer's picture, written as a JPEG into the target folder; empty
    // when the customer has none.
    static QString customerImageText(const Customer &customer, const QString &targetDir);
    static QString stateText(const ProjectItem &item);
    QString liveDuration(const Entry &entry) const;

    const CustomerStorage *m_customers;
    QString m_styleBundle;
    QString m_fileTemplate;
    QString m_projectBlock;
    QString m_entryBlock;
    QString m_flatFeeEntryBlock;
};
