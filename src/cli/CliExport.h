#pragma once

#include "search/Filter.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

class CliConsole;
class CliDocument;
class CliFileAccess;
class CurrencyFormatter;
class Preferences;
class ReportRenderer;

// The export command: the project file as the desktop program shows it (entries in its order,
// customers' visibility, a saved or quick filter and the search text) written by the export
// dialogue's logic and the same exporters. The file is only read.
class CliExport {
public:
    using RendererFactory = std::function<std::unique_ptr<ReportRenderer>()>;

    CliExport(CliConsole &console, Preferences &preferences, const QString &supportFolder,
              const CurrencyFormatter &currency, CliFileAccess &file,
              const RendererFactory &rendererFactory);

    static QStringList valuedOptions();
    static QStringList switches();

    int run(const QStringList &args);

    // The saved filters of a filters.plist; none for a missing file, nothing (with the reason)
    // for one that cannot be read.
    static std::optional<QList<Filter::Pointer>> readSavedFilters(const QString &path,
                                                                  QString &error);

private:
    struct Choices {
        int format = 0;
        QString output;
        QStringList projects; // empty for all
        QList<bool> projectFields{true, true, true, true, true};
        QList<bool> entryFields{true, true, true, true, true};
        bool applyFilter = false;
        QString savedFilter;
        QString quickFilter;
        QString searchText;
        QString encoding;
        QString textDelimiter;
        QString fieldDelimiter;
        int lineEnding = 0;
        QString stylePath;
    };

    // False after printing what does not fit.
    bool parse(const QStringList &args, Choices &choices);
    bool parseFields(const QString &option, const QString &text, const QStringList &names,
                     QList<bool> &fields);
    bool resolveStyle(const QString &nameOrPath, QString &path);
    // The filter the choices name; false after printing why there is none.
    bool chosenFilter(const Choices &choices, Filter::Pointer &filter);
    int write(CliDocument &document, const Choices &choices);

    CliConsole &m_console;
    Preferences &m_preferences;
    QString m_supportFolder;
    const CurrencyFormatter &m_currency;
    CliFileAccess &m_file;
    const RendererFactory &m_rendererFactory;
};
