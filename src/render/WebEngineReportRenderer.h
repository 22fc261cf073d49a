#pragma once

#include "LocalOnlyRequestInterceptor.h"
#include "export/ReportRenderer.h"

#include <QCoreApplication>
#include <QPageLayout>
#include <QPointer>
#include <QWidget>

#include <chrono>
#include <memory>

class QLocale;
class QPrinter;
class QWebEnginePage;
class QWebEngineProfile;

// Renders reports with Qt WebEngine. Nothing of the engine exists until a report is rendered:
// each call creates an off-the-record profile and a page, loads <folder>/report.html into it with
// JavaScript off and every request outside "file" and "data" addresses blocked, and releases both
// at its end. Both calls run a local event loop (see ReportRenderer).
class WebEngineReportRenderer : public ReportRenderer {
    Q_DECLARE_TR_FUNCTIONS(WebEngineReportRenderer)

public:
    // The print dialogue is shown over dialogParent, which is not owned.
    explicit WebEngineReportRenderer(QWidget *dialogParent = nullptr);
    ~WebEngineReportRenderer() override;

    PdfResult renderPdf(const QString &folder) override;
    bool print(const QString &folder) override;
    // Prints <folder>/report.html to the printer as it is set up, without a dialogue.
    bool printTo(const QString &folder, QPrinter &printer);

    // A4, or Letter where the locale measures in US units; portrait; margins of left 35,
    // right 35, top 45 and bottom 35 points.
    static QPageLayout pageLayout(const QLocale &locale);

    // How long loading, and then rendering, may take each.
    void setTimeout(std::chrono::milliseconds timeout) { m_timeout = timeout; }
    // How many requests for something outside the report's files were blocked so far.
    int blockedRequestCount() const { return m_interceptor.blockedCount(); }

private:
    struct Engine {
        std::unique_ptr<QWebEngineProfile> profile;
        std::unique_ptr<QWebEnginePage> page; // destroyed before its profile
        ~Engine();
    };

    std::unique_ptr<Engine> createEngine();
    PdfResult renderPdf(const QString &folder, const QPageLayout &layout);
    bool load(QWebEnginePage &page, const QString &folder, QString &error);

    LocalOnlyRequestInterceptor m_interceptor;
    QPointer<QWidget> m_dialogParent;
    std::chrono::milliseconds m_timeout = std::chrono::minutes(5);
};
