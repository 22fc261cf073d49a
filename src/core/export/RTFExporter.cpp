#include "RTFExporter.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "RtfWriter.h"

#include <QFile>
#include <QTextDocument>
#include <QUrl>

RTFExporter::RTFExporter(const QString &stylePath, const CustomerStorage *customers)
    : RenderedReportExporter(stylePath, customers) {}

Exporter::Result RTFExporter::exportProjects(const QStringList &projectNames,
                                             const QList<bool> &projectFields,
                                             const QList<bool> &entryFields, const QString &path,
                                             bool applyFilter, const QString &encoding) {
    const Result report =
        writeHtmlReport(projectNames, projectFields, entryFields, applyFilter, encoding);
    if (!report.ok)
        return report;

    QFile file(scratchFolder() + u"/report.html");
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcFile, "Cannot create RTF");
        return {false, tr("Cannot create RTF")};
    }
    QTextDocument document;
    document.setBaseUrl(QUrl::fromLocalFile(scratchFolder() + u'/'));
    document.setHtml(QString::fromUtf8(file.readAll()));
    const AtomicFile::Result written = AtomicFile::write(path, RtfWriter::write(document));
    if (!written.ok) {
        qCWarning(lcFile, "Error writing file");
        return {false, written.error};
    }
    return {true, {}};
}
