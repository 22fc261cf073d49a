#include "RTFExporter.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "HTMLExporter.h"
#include "ReportScratchFolder.h"
#include "RtfWriter.h"

#include <QFile>
#include <QTextDocument>
#include <QUrl>

RTFExporter::RTFExporter(const QString &stylePath, const CustomerStorage *customers)
    : m_templateName(stylePath)
    , m_customers(customers)
    , m_scratchFolder(ReportScratchFolder::defaultPath()) {}

Exporter::Result RTFExporter::exportProjects(const QStringList &projectNames,
                                             const QList<bool> &projectFields,
                                             const QList<bool> &entryFields, const QString &path,
                                             bool applyFilter, const QString &encoding) {
    // A fresh folder: style sheets and images are always the style's own.
    const ReportScratchFolder::Result scratch = ReportScratchFolder::recreate(m_scratchFolder);
    if (!scratch.ok)
        return {false, scratch.error};
    HTMLExporter html(m_templateName, m_customers);
    html.setProjectCollection(projectCollection());
    html.setProgressHandler(progressHandler());
    const Result report = html.exportProjects(projectNames, projectFields, entryFields,
                                              m_scratchFolder, applyFilter, encoding);
    if (!report.ok)
        return report;

    QFile file(m_scratchFolder + u"/report.html");
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcFile, "Cannot create RTF");
        return {false, tr("Cannot create RTF")};
    }
    QTextDocument document;
    document.setBaseUrl(QUrl::fromLocalFile(m_scratchFolder + u'/'));
    document.setHtml(QString::fromUtf8(file.readAll()));
    const AtomicFile::Result written = AtomicFile::write(path, RtfWriter::write(document));
    if (!written.ok) {
        qCWarning(lcFile, "Error writing file");
        return {false, written.error};
    }
    return {true, {}};
}
