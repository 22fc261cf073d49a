#include "WebEngineReportRenderer.h"

#include "PdfPagePainter.h"

#include <QDir>
#include <QEventLoop>
#include <QLocale>
#include <QLoggingCategory>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

namespace {

Q_LOGGING_CATEGORY(lcRender, "hourfold.render")

// What an asynchronous engine call hands back; shared with its callback, which may come after
// the caller stopped waiting.
template <typename T> struct Outcome {
    bool done = false;
    T value{};
    QPointer<QEventLoop> loop;

    void finish(T result) {
        done = true;
        value = std::move(result);
        if (loop)
            loop->quit();
    }
};

// Runs a local event loop until the outcome is there or the time-out has passed.
template <typename T>
bool waitFor(const std::shared_ptr<Outcome<T>> &outcome, std::chrono::milliseconds timeout) {
    if (outcome->done)
        return true;
    QEventLoop loop;
    outcome->loop = &loop;
    QTimer::singleShot(timeout, &loop, &QEventLoop::quit);
    loop.exec();
    return outcome->done;
}

} // namespace

WebEngineReportRenderer::Engine::~Engine() = default;

WebEngineReportRenderer::WebEngineReportRenderer(QWidget *dialogParent)
    : m_dialogParent(dialogParent) {}

WebEngineReportRenderer::~WebEngineReportRenderer() = default;

QPageLayout WebEngineReportRenderer::pageLayout(const QLocale &locale) {
    const auto size =
        locale.measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter : QPageSize::A4;
    return QPageLayout(QPageSize(size), QPageLayout::Portrait, QMarginsF(35, 45, 35, 35),
                       QPageLayout::Point);
}

std::unique_ptr<WebEngineReportRenderer::Engine> WebEngineReportRenderer::createEngine() {
    auto engine = std::make_unique<Engine>();
    // A profile without a storage name is off the record: no cache or cookies on disk.
    engine->profile = std::make_unique<QWebEngineProfile>();
    engine->profile->setHttpCacheType(QWebEngineProfile::NoCache);
    engine->profile->setUrlRequestInterceptor(&m_interceptor);
    engine->page = std::make_unique<QWebEnginePage>(engine->profile.get());
    QWebEngineSettings *settings = engine->page->settings();
    settings->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
    settings->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    return engine;
}

bool WebEngineReportRenderer::load(QWebEnginePage &page, const QString &folder, QString &error) {
    const QString report = QDir(folder).filePath(QStringLiteral("report.html"));
    auto loaded = std::make_shared<Outcome<bool>>();
    QObject::connect(&page, &QWebEnginePage::loadFinished, &page,
                     [loaded](bool ok) { loaded->finish(ok); });
    page.load(QUrl::fromLocalFile(report));
    if (!waitFor(loaded, m_timeout)) {
        error = tr("The report %1 did not load in time.").arg(QDir::toNativeSeparators(report));
        return false;
    }
    if (!loaded->value) {
        error = tr("The report %1 could not be loaded.").arg(QDir::toNativeSeparators(report));
        return false;
    }
    return true;
}

ReportRenderer::PdfResult WebEngineReportRenderer::renderPdf(const QString &folder) {
    return renderPdf(folder, pageLayout(QLocale()));
}

ReportRenderer::PdfResult WebEngineReportRenderer::renderPdf(const QString &folder,
                                                             const QPageLayout &layout) {
    const std::unique_ptr<Engine> engine = createEngine();
    PdfResult result;
    if (!load(*engine->page, folder, result.error)) {
        qCWarning(lcRender) << result.error;
        return result;
    }
    auto rendered = std::make_shared<Outcome<QByteArray>>();
    engine->page->printToPdf([rendered](const QByteArray &pdf) { rendered->finish(pdf); }, layout);
    if (!waitFor(rendered, m_timeout) || rendered->value.isEmpty()) {
        result.error = tr("The report in %1 could not be rendered as PDF.")
                           .arg(QDir::toNativeSeparators(folder));
        qCWarning(lcRender) << result.error;
        return result;
    }
    result.ok = true;
    result.pdf = rendered->value;
    return result;
}

bool WebEngineReportRenderer::print(const QString &folder) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(pageLayout(QLocale()));
    QPrintDialog dialog(&printer, m_dialogParent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    return printTo(folder, printer);
}

bool WebEngineReportRenderer::printTo(const QString &folder, QPrinter &printer) {
    // The engine's own printing draws its pages without the margins, stretched over the sheet;
    // the report's PDF for the printer's paper keeps them, and its pages are printed as they are.
    const PdfResult rendered = renderPdf(folder, printer.pageLayout());
    if (!rendered.ok)
        return false;
    const QString error = PdfPagePainter::paint(rendered.pdf, printer);
    if (!error.isEmpty())
        qCWarning(lcRender) << "Printing the report in" << folder << "failed:" << error;
    return error.isEmpty();
}
