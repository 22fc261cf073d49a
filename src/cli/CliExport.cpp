#include "CliExport.h"

#include "CliAlerts.h"
#include "CliConsole.h"
#include "CliFileAccess.h"
#include "CliOptions.h"
#include "export/ExportController.h"
#include "export/HTMLStyles.h"
#include "export/ReportRenderer.h"
#include "export/TextEncodings.h"
#include "model/ProjectCollection.h"
#include "platform/Folders.h"
#include "platform/Preferences.h"
#include "search/QuickFilters.h"
#include "stores/CustomerStorage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

const QStringList projectFieldNames{u"name"_s, u"description"_s, u"total-duration"_s,
                                    u"hourly-wages"_s, u"total-wages"_s};
const QStringList entryFieldNames{u"day"_s, u"period"_s, u"duration"_s, u"description"_s,
                                  u"state"_s};

} // namespace

CliExport::CliExport(CliConsole &console, Preferences &preferences, const QString &supportFolder,
                     const CurrencyFormatter &currency, CliFileAccess &file,
                     const RendererFactory &rendererFactory)
    : m_console(console)
    , m_preferences(preferences)
    , m_supportFolder(supportFolder)
    , m_currency(currency)
    , m_file(file)
    , m_rendererFactory(rendererFactory) {}

QStringList CliExport::valuedOptions() {
    return {u"--format"_s,         u"--output"_s,          u"--projects"_s,
            u"--project-fields"_s, u"--entry-fields"_s,    u"--filter"_s,
            u"--quick"_s,          u"--search"_s,          u"--encoding"_s,
            u"--text-delimiter"_s, u"--field-delimiter"_s, u"--line-ending"_s,
            u"--style"_s};
}

QStringList CliExport::switches() {
    return {u"--apply-filter"_s};
}

std::optional<QList<Filter::Pointer>> CliExport::readSavedFilters(const QString &path,
                                                                  QString &error) {
    QFile file(path);
    if (!file.exists())
        return QList<Filter::Pointer>();
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return std::nullopt;
    }
    const auto read = Filter::unarchiveList(file.readAll(), &error);
    if (!read && error.isEmpty())
        error = u"it holds no list of filters"_s;
    return read;
}

bool CliExport::parseFields(const QString &option, const QString &text, const QStringList &names,
                            QList<bool> &fields) {
    fields = QList<bool>(names.size(), false);
    for (const QString &name : text.split(u',', Qt::SkipEmptyParts)) {
        const qsizetype index = names.indexOf(name.trimmed());
        if (index < 0) {
            m_console.fail(u"%1: unknown field \"%2\" (the fields are %3)"_s.arg(option, name,
                                                                                 names.join(u',')));
            return false;
        }
        fields[index] = true;
    }
    return true;
}

bool CliExport::resolveStyle(const QString &nameOrPath, QString &path) {
    const QList<HTMLStyles::Style> offered = HTMLStyles::availableStyles();
    for (const HTMLStyles::Style &style : offered) {
        if (style.title == nameOrPath || style.title == nameOrPath + u".hfstyle"_s) {
            path = style.path;
            return true;
        }
    }
    if (QFileInfo(nameOrPath).isDir()) {
        path = QFileInfo(nameOrPath).absoluteFilePath();
        return true;
    }
    QStringList titles;
    for (const HTMLStyles::Style &style : offered)
        titles << style.title.chopped(style.title.endsWith(u".hfstyle") ? 8 : 0);
    m_console.fail(
        u"No style named \"%1\" (the styles are %2)"_s.arg(nameOrPath, titles.join(u", "_s)));
    return false;
}

bool CliExport::parse(const QStringList &args, Choices &choices) {
    CliOptions options(valuedOptions(), switches());
    if (!options.parse(args)) {
        m_console.fail(options.error());
        return false;
    }
    if (!options.words().isEmpty()) {
        m_console.fail(u"export takes only options, not \"%1\""_s.arg(options.words().first()));
        return false;
    }
    static const QHash<QString, int> formats{{u"pdf"_s, ExportController::Pdf},
                                             {u"html"_s, ExportController::Html},
                                             {u"rtf"_s, ExportController::Rtf},
                                             {u"csv"_s, ExportController::Csv},
                                             {u"txt"_s, ExportController::Text}};
    const QString format = options.value(u"--format"_s);
    if (!formats.contains(format)) {
        m_console.fail(u"export needs --format csv, txt, html, pdf or rtf"_s);
        return false;
    }
    choices.format = formats.value(format);
    choices.output = options.value(u"--output"_s);
    if (choices.output.isEmpty()) {
        m_console.fail(u"export needs --output PATH"_s);
        return false;
    }
    if (options.has(u"--projects"_s)) {
        choices.projects = options.value(u"--projects"_s).split(u',', Qt::SkipEmptyParts);
        if (choices.projects.isEmpty()) {
            m_console.fail(u"--projects needs at least one project name"_s);
            return false;
        }
    }
    if ((options.has(u"--project-fields"_s) &&
         !parseFields(u"--project-fields"_s, options.value(u"--project-fields"_s),
                      projectFieldNames, choices.projectFields)) ||
        (options.has(u"--entry-fields"_s) &&
         !parseFields(u"--entry-fields"_s, options.value(u"--entry-fields"_s), entryFieldNames,
                      choices.entryFields)))
        return false;

    choices.applyFilter = options.isOn(u"--apply-filter"_s);
    choices.savedFilter = options.value(u"--filter"_s);
    choices.quickFilter = options.value(u"--quick"_s);
    choices.searchText = options.value(u"--search"_s);
    if (options.has(u"--filter"_s) && options.has(u"--quick"_s)) {
        m_console.fail(u"Give --filter or --quick, not both"_s);
        return false;
    }
    if (options.has(u"--quick"_s) && QuickFilters::positionForIdentifier(choices.quickFilter) < 0) {
        m_console.fail(
            u"--quick takes today, week, month or year, not \"%1\""_s.arg(choices.quickFilter));
        return false;
    }

    choices.encoding = options.has(u"--encoding"_s) ? options.value(u"--encoding"_s) : u"UTF-8"_s;
    if (TextEncodings::displayName(choices.encoding).isEmpty()) {
        m_console.fail(u"There is no text encoding named \"%1\"."_s.arg(choices.encoding));
        return false;
    }
    choices.textDelimiter = options.has(u"--text-delimiter"_s)
                                ? options.value(u"--text-delimiter"_s)
                                : ExportController::textDelimiterItems().constFirst();
    choices.fieldDelimiter = options.has(u"--field-delimiter"_s)
                                 ? options.value(u"--field-delimiter"_s)
                                 : ExportController::fieldDelimiterItems().constFirst();
    if (choices.textDelimiter.isEmpty() || choices.fieldDelimiter.isEmpty()) {
        m_console.fail(u"A delimiter needs a character"_s);
        return false;
    }
    if (options.has(u"--line-ending"_s)) {
        static const QStringList endings{u"lf"_s, u"cr"_s, u"crlf"_s};
        choices.lineEnding = int(endings.indexOf(options.value(u"--line-ending"_s)));
        if (choices.lineEnding < 0) {
            m_console.fail(u"--line-ending takes lf, cr or crlf"_s);
            return false;
        }
    }
    return resolveStyle(options.has(u"--style"_s) ? options.value(u"--style"_s) : u"Simple"_s,
                        choices.stylePath);
}

bool CliExport::chosenFilter(const Choices &choices, Filter::Pointer &filter) {
    if (!choices.quickFilter.isEmpty()) {
        const QString path = Folders::resourceFolder() + u"/quickfilters.plist"_s;
        QuickFilters quick;
        if (!quick.load(path) || !(filter = quick.filterForIdentifier(choices.quickFilter))) {
            m_console.fail(u"Cannot read the quick filters of \"%1\""_s.arg(path),
                           CliConsole::Unreadable);
            return false;
        }
        return true;
    }
    if (choices.savedFilter.isEmpty())
        return true;
    const QString path = m_supportFolder + u"/filters.plist"_s;
    QString error;
    const std::optional<QList<Filter::Pointer>> saved = readSavedFilters(path, error);
    if (!saved) {
        m_console.fail(u"Cannot read \"%1\": %2"_s.arg(path, error), CliConsole::Unreadable);
        return false;
    }
    for (const auto &candidate : *saved) {
        if (candidate->name() == choices.savedFilter) {
            filter = candidate;
            return true;
        }
    }
    m_console.fail(u"No saved filter named \"%1\""_s.arg(choices.savedFilter));
    return false;
}

int CliExport::run(const QStringList &args) {
    Choices choices;
    if (!parse(args, choices))
        return CliConsole::BadArguments;
    return m_file.read([&](CliDocument &document) { return write(document, choices); });
}

int CliExport::write(CliDocument &document, const Choices &choices) {
    Filter::Pointer filter;
    if (!chosenFilter(choices, filter))
        return CliConsole::BadArguments;
    // The document as the desktop program holds it after opening the file: entries in the
    // order of the sorting preferences (read so), customers deciding which projects are shown.
    ProjectCollection collection(m_preferences);
    collection.setCurrencyFormatter(&m_currency);
    CustomerStorage customers(m_supportFolder + u"/customers.plist"_s, collection, m_preferences);
    const CustomerStorage::Result loaded = customers.loadCustomers();
    if (!loaded.ok)
        m_console.warn(u"Warning: cannot read all customers: %1"_s.arg(loaded.error));
    collection.setCustomerDirectory(&customers);
    for (const auto &project : document.projects())
        collection.addProject(project);
    collection.setCurrentFilter(filter);
    if (!choices.searchText.isEmpty())
        collection.setSearchText(choices.searchText);

    for (const QString &name : choices.projects) {
        if (!collection.projectExists(name))
            return m_console.fail(u"Unknown project \"%1\""_s.arg(name));
    }
    CliAlerts alerts(m_console);
    const std::unique_ptr<ReportRenderer> renderer =
        choices.format == ExportController::Pdf && m_rendererFactory ? m_rendererFactory()
                                                                     : nullptr;
    ExportController controller(collection, &customers, m_preferences, alerts, renderer.get());
    controller.setFormat(choices.format);
    controller.setStylePath(choices.stylePath);
    controller.setEncoding(choices.encoding);
    controller.setTextDelimiterText(choices.textDelimiter);
    controller.setFieldDelimiterText(choices.fieldDelimiter);
    controller.setLineEndingTag(choices.lineEnding);
    if (!choices.projects.isEmpty()) {
        for (int row = 0; row < controller.projectNames().size(); ++row)
            controller.setChecked(row, choices.projects.contains(controller.projectNames()[row]));
    }
    controller.setProjectFields(choices.projectFields);
    controller.setEntryFields(choices.entryFields);
    controller.setApplyFilter(choices.applyFilter);
    if (!controller.canExport())
        return CliConsole::BadArguments;
    if (choices.format == ExportController::Html && !QDir().mkpath(choices.output))
        return m_console.fail(u"Cannot create the folder \"%1\""_s.arg(choices.output),
                              CliConsole::Unreadable);
    const Exporter::Result result = controller.writeTo(choices.output);
    if (!result.ok)
        return m_console.fail(u"Cannot export to \"%1\": %2"_s.arg(choices.output, result.error),
                              CliConsole::Unreadable);
    m_console.out() << u"Wrote \"%1\""_s.arg(QFileInfo(choices.output).absoluteFilePath()) << '\n';
    return CliConsole::Success;
}
