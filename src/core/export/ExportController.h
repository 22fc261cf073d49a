#pragma once

#include "Exporter.h"
#include "HTMLStyles.h"

#include <QHash>
#include <QObject>
#include <memory>

class CustomerStorage;
class Preferences;
class ProjectCollection;
class ReportRenderer;
class UserAlerts;

// The logic of the export dialogue: the format and its options, the projects to export, the
// destination to ask for, the export itself and the installation of user styles. The dialogue
// only shows this state and passes the user's choices on.
class ExportController : public QObject {
    Q_OBJECT

public:
    enum Format { Pdf = 0, Html = 1, Rtf = 2, Csv = 3, Text = 4 };
    static constexpr int formatCount = 5;
    static constexpr int allProjectsTag = -99;
    static constexpr int unassignedTag = -1;

    struct CustomerChoice {
        QString title;
        int tag = 0;
        bool separator = false; // the line between the fixed items and the customers
        friend bool operator==(const CustomerChoice &, const CustomerChoice &) = default;
    };
    struct LineEnding {
        QString title;
        int tag = 0;
        QString value;
    };
    // What the destination panel asks for.
    struct Destination {
        bool chooseFolder = false; // a folder chooser with folder creation, else a save panel
        QString fileType;          // of the save panel
        QString prompt;            // of the folder chooser
        QString startDirectory;
    };

    // The customers and the renderer may be null; without a renderer PDF export fails.
    ExportController(ProjectCollection &collection, const CustomerStorage *customers,
                     Preferences &preferences, UserAlerts &alerts, ReportRenderer *renderer,
                     QObject *parent = nullptr);
    ~ExportController() override;

    int format() const { return m_format; }
    void setFormat(int format);
    // "pdf", "" (a folder), "rtf", "csv", "txt".
    static QString fileType(int format);
    // Whether the project sheet offers the project and entry field choices (CSV and text).
    static bool showsFieldChoices(int format);

    // The styles offered for PDF, HTML and RTF, built-in first, read afresh on every call.
    static QList<HTMLStyles::Style> styles();
    // The chosen style of the current format while it is offered or its folder exists (a style
    // given by path); otherwise the first offered one.
    QString stylePath() const;
    void setStylePath(const QString &path);

    static const QStringList &encodings();
    QString encoding() const { return m_encoding; }
    void setEncoding(const QString &encoding) { m_encoding = encoding; }

    // The items the delimiter fields offer; the first one of each is the preset text.
    static QStringList textDelimiterItems();
    static QStringList fieldDelimiterItems();
    // What the exporter gets from the texts typed into the delimiter fields.
    static QString textDelimiterFromText(const QString &text);
    static QString fieldDelimiterFromText(const QString &text);
    QString textDelimiterText() const { return m_textDelimiterText; }
    QString fieldDelimiterText() const { return m_fieldDelimiterText; }
    void setTextDelimiterText(const QString &text) { m_textDelimiterText = text; }
    void setFieldDelimiterText(const QString &text) { m_fieldDelimiterText = text; }
    QString textDelimiter() const { return textDelimiterFromText(m_textDelimiterText); }
    QString fieldDelimiter() const { return fieldDelimiterFromText(m_fieldDelimiterText); }

    static QList<LineEnding> lineEndings();
    int lineEndingTag() const { return m_lineEndingTag; }
    void setLineEndingTag(int tag) { m_lineEndingTag = tag; }
    QString lineEnding() const;

    // "All projects", "Unassigned projects", a separator, then the customers in store order.
    QList<CustomerChoice> customerChoices() const;
    int customer() const { return m_customer; }
    // Lists the customer's projects (every project for allProjectsTag), all checked.
    void setCustomer(int tag);

    const QStringList &projectNames() const { return m_projectNames; }
    const QList<bool> &checkStates() const { return m_checkStates; }
    void setChecked(int row, bool checked);
    void selectAll();
    void selectNone();
    void invertSelection();
    QStringList checkedProjectNames() const;

    QList<bool> projectFields() const { return m_projectFields; }
    void setProjectFields(const QList<bool> &fields) { m_projectFields = fields; }
    QList<bool> entryFields() const { return m_entryFields; }
    void setEntryFields(const QList<bool> &fields) { m_entryFields = fields; }
    bool applyFilter() const { return m_applyFilter; }
    void setApplyFilter(bool apply) { m_applyFilter = apply; }

    // False, after telling the user, when no project is checked.
    bool canExport();
    Destination destination() const;
    // Remembers the destination's folder and writes the checked projects there.
    Exporter::Result exportTo(const QString &path);
    // Writes the checked projects there, remembering nothing.
    Exporter::Result writeTo(const QString &path);
    // Stops the export under way (from a progress handler): it ends without writing its file.
    void cancelExport() { m_cancelled = true; }

    // Copies the styles (folders or files) into the user's styles folder, never replacing one.
    // Returns how many were installed.
    int addStyles(const QStringList &paths);

signals:
    // After each project has been put into the report of exportTo().
    void progress(int done, int total);
    // The user's styles folder changed: the style chooser is refilled.
    void stylesChanged();

private:
    std::unique_ptr<Exporter> createExporter(QString &error) const;
    bool copyStyle(const QString &source, const QString &target) const;
    int alert(const QString &message, const QString &information, const QStringList &buttons);

    ProjectCollection &m_collection;
    const CustomerStorage *m_customers;
    Preferences &m_preferences;
    UserAlerts &m_alerts;
    ReportRenderer *m_renderer;

    int m_format = Pdf;
    QHash<int, QString> m_stylePaths;
    QString m_encoding;
    QString m_textDelimiterText = textDelimiterItems().constFirst();
    QString m_fieldDelimiterText = fieldDelimiterItems().constFirst();
    int m_lineEndingTag = 0;
    int m_customer = allProjectsTag;
    QStringList m_projectNames;
    QList<bool> m_checkStates;
    QList<bool> m_projectFields{true, true, true, true, true};
    QList<bool> m_entryFields{true, true, true, true, true};
    bool m_applyFilter = false;
    bool m_cancelled = false;
};
