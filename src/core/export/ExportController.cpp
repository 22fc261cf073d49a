#include "ExportController.h"

#include "../model/ProjectCollection.h"
#include "../platform/Folders.h"
#include "../platform/Preferences.h"
#include "../platform/UserAlerts.h"
#include "../stores/CustomerStorage.h"
#include "CSVExporter.h"
#include "HTMLExporter.h"
#include "PDFExporter.h"
#include "RTFExporter.h"
#include "TextEncodings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

const auto startingDirectoryKey = u"exportStartingDirectory";

} // namespace

ExportController::ExportController(ProjectCollection &collection, const CustomerStorage *customers,
                                   Preferences &preferences, UserAlerts &alerts,
                                   ReportRenderer *renderer, QObject *parent)
    : QObject(parent)
    , m_collection(collection)
    , m_customers(customers)
    , m_preferences(preferences)
    , m_alerts(alerts)
    , m_renderer(renderer)
    , m_encoding(TextEncodings::defaultName()) {
    setCustomer(allProjectsTag);
}

ExportController::~ExportController() = default;

void ExportController::setFormat(int format) {
    if (format >= 0 && format < formatCount)
        m_format = format;
}

QString ExportController::fileType(int format) {
    switch (format) {
    case Pdf:
        return u"pdf"_s;
    case Rtf:
        return u"rtf"_s;
    case Csv:
        return u"csv"_s;
    case Text:
        return u"txt"_s;
    default:
        return {};
    }
}

bool ExportController::showsFieldChoices(int format) {
    return format == Csv || format == Text;
}

QList<HTMLStyles::Style> ExportController::styles() {
    return HTMLStyles::availableStyles();
}

QString ExportController::stylePath() const {
    const QList<HTMLStyles::Style> offered = styles();
    const QString chosen = m_stylePaths.value(m_format);
    for (const HTMLStyles::Style &style : offered) {
        if (style.path == chosen)
            return chosen;
    }
    if (!chosen.isEmpty() && QFileInfo(chosen).isDir())
        return chosen;
    return offered.isEmpty() ? QString() : offered.first().path;
}

void ExportController::setStylePath(const QString &path) {
    m_stylePaths.insert(m_format, path);
}

const QStringList &ExportController::encodings() {
    return TextEncodings::availableNames();
}

QStringList ExportController::textDelimiterItems() {
    return {u"\""_s, u"'"_s};
}

QStringList ExportController::fieldDelimiterItems() {
    return {u","_s, u";"_s, u"{tab}"_s, u"{space}"_s, u"|"_s};
}

QString ExportController::textDelimiterFromText(const QString &text) {
    return text.left(1);
}

QString ExportController::fieldDelimiterFromText(const QString &text) {
    if (text == u"{tab}")
        return u"\t"_s;
    if (text == u"{space}")
        return u" "_s;
    return text.left(1);
}

QList<ExportController::LineEnding> ExportController::lineEndings() {
    return {{tr("Unix - Mac OS X (LF)"), 0, u"\n"_s},
            {tr("Mac (CR)"), 1, u"\r"_s},
            {tr("Windows (CRLF)"), 2, u"\r\n"_s}};
}

QString ExportController::lineEnding() const {
    for (const LineEnding &ending : lineEndings()) {
        if (ending.tag == m_lineEndingTag)
            return ending.value;
    }
    return u"\n"_s;
}

QList<ExportController::CustomerChoice> ExportController::customerChoices() const {
    QList<CustomerChoice> choices{{tr("All projects"), allProjectsTag, false},
                                  {tr("Unassigned projects"), unassignedTag, false},
                                  {QString(), 0, true}};
    if (m_customers) {
        for (const auto &customer : m_customers->customers())
            choices.append({customer->name(), customer->customerID(), false});
    }
    return choices;
}

void ExportController::setCustomer(int tag) {
    m_customer = tag;
    m_projectNames.clear();
    for (const auto &project : m_collection.projectArray()) {
        if (tag == allProjectsTag || project->customer() == tag)
            m_projectNames.append(project->name());
    }
    m_checkStates = QList<bool>(m_projectNames.size(), true);
}

void ExportController::setChecked(int row, bool checked) {
    if (row >= 0 && row < m_checkStates.size())
        m_checkStates[row] = checked;
}

void ExportController::selectAll() {
    m_checkStates.fill(true);
}

void ExportController::selectNone() {
    m_checkStates.fill(false);
}

void ExportController::invertSelection() {
    for (bool &state : m_checkStates)
        state = !state;
}

QStringList ExportController::checkedProjectNames() const {
    QStringList names;
    for (qsizetype row = 0; row < m_projectNames.size(); ++row) {
        if (m_checkStates[row])
            names.append(m_projectNames[row]);
    }
    return names;
}

bool ExportController::canExport() {
    if (m_checkStates.contains(true))
        return true;
    alert(tr("No project selected."), tr("At least one project has to be selected."), {tr("OK")});
    return false;
}

ExportController::Destination ExportController::destination() const {
    Destination destination;
    destination.chooseFolder = m_format == Html;
    destination.fileType = fileType(m_format);
    if (destination.chooseFolder)
        destination.prompt = tr("Choose folder");
    destination.startDirectory = m_preferences.stringForKey(startingDirectoryKey);
    if (destination.startDirectory.isEmpty())
        destination.startDirectory = QDir::homePath();
    return destination;
}

std::unique_ptr<Exporter> ExportController::createExporter(QString &error) const {
    switch (m_format) {
    case Pdf: {
        if (!m_renderer) {
            error = tr("PDF export is not available: there is no PDF renderer.");
            return nullptr;
        }
        auto exporter = std::make_unique<PDFExporter>(stylePath(), m_customers, *m_renderer);
        exporter->setShowPrintPanels(false);
        return exporter;
    }
    case Html:
        return std::make_unique<HTMLExporter>(stylePath(), m_customers);
    case Rtf:
        return std::make_unique<RTFExporter>(stylePath(), m_customers);
    case Csv: {
        auto exporter = std::make_unique<CSVExporter>();
        exporter->setTextDelimiter(textDelimiter());
        exporter->setFieldDelimiter(fieldDelimiter());
        exporter->setLineEnding(lineEnding());
        return exporter;
    }
    default:
        return std::make_unique<Exporter>();
    }
}

Exporter::Result ExportController::exportTo(const QString &path) {
    m_preferences.setObject(QFileInfo(path).absolutePath(), startingDirectoryKey);
    return writeTo(path);
}

Exporter::Result ExportController::writeTo(const QString &path) {
    QString error;
    const std::unique_ptr<Exporter> exporter = createExporter(error);
    if (!exporter)
        return {false, error};
    exporter->setProjectCollection(&m_collection);
    exporter->setProgressHandler([this](int done, int total) { emit progress(done, total); });
    m_cancelled = false;
    exporter->setCancelCheck([this] { return m_cancelled; });
    return exporter->exportProjects(checkedProjectNames(), m_projectFields, m_entryFields, path,
                                    m_applyFilter, m_encoding);
}

int ExportController::alert(const QString &message, const QString &information,
                            const QStringList &buttons) {
    return m_alerts.runModal({message, information, UserAlerts::Style::Critical, buttons});
}

bool ExportController::copyStyle(const QString &source, const QString &target) const {
    const QFileInfo info(source);
    if (!info.exists() || QFileInfo::exists(target))
        return false;
    if (!info.isDir())
        return QFile::copy(source, target);
    if (!QDir().mkdir(target))
        return false;
    const QDir folder(source);
    for (const QFileInfo &item :
         folder.entryInfoList(QDir::Dirs | QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot)) {
        if (!copyStyle(item.absoluteFilePath(), target + u'/' + item.fileName())) {
            QDir(target).removeRecursively(); // only what this copy created
            return false;
        }
    }
    return true;
}

int ExportController::addStyles(const QStringList &paths) {
    const QString folder = HTMLStyles::userStylesFolder();
    const QString shown = Folders::withTilde(folder);
    const QFileInfo folderInfo(folder);
    if (folderInfo.exists() && !folderInfo.isDir()) {
        alert(tr("Error creating styles folder."),
              tr("A file named \"%1\" already exists. Please delete this file and try again.")
                  .arg(shown),
              {tr("OK")});
        return 0;
    }
    if (!folderInfo.exists() && !QDir().mkpath(folder)) {
        alert(tr("Error creating styles folder."),
              tr("The folder \"%1\" could not be created.").arg(shown), {tr("OK")});
        return 0;
    }
    int installed = 0;
    for (qsizetype index = 0; index < paths.size(); ++index) {
        const QString name = QFileInfo(paths[index]).fileName();
        if (!name.isEmpty() && copyStyle(paths[index], folder + u'/' + name)) {
            ++installed;
            continue;
        }
        const QString information =
            tr("The style \"%1\" could not be copied to \"%2\".").arg(name, shown);
        if (index == paths.size() - 1) {
            alert(tr("Error while adding style."), information, {tr("OK")});
        } else if (alert(tr("Error while adding style. Would you like to add the remaining "
                            "styles?"),
                         information, {tr("Yes"), tr("No")}) != UserAlerts::firstButton) {
            break;
        }
    }
    emit stylesChanged();
    return installed;
}
