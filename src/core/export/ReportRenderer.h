#pragma once

#include <QByteArray>
#include <QString>

// Turns the HTML report in a folder (its "report.html" with the style sheets and images beside
// it) into paper or PDF through an HTML engine. The core only knows this interface; the engine
// lives in a separate library so that the core never links it.
//
// Both calls are synchronous: they run a local event loop until the engine has finished (or
// given up), so the caller sees the result on return, as a save would. Events of the rest of the
// program are handled meanwhile.
class ReportRenderer {
public:
    struct PdfResult {
        bool ok = false;
        QByteArray pdf; // the whole document; the caller writes it (atomically) where it belongs
        QString error;  // why there is no document
    };

    ReportRenderer() = default;
    virtual ~ReportRenderer();
    ReportRenderer(const ReportRenderer &) = delete;
    ReportRenderer &operator=(const ReportRenderer &) = delete;

    // Renders <folder>/report.html with the print media style sheets into PDF bytes.
    virtual PdfResult renderPdf(const QString &folder) = 0;
    // Shows the print dialogue and prints <folder>/report.html to the chosen printer. False when
    // the dialogue was cancelled or printing failed.
    virtual bool print(const QString &folder) = 0;
};
