#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QPrinter;

// The panels of exporting and printing. File panels run while the event loop goes on and report
// their end through the callback: the chosen path (or paths), or nothing when cancelled. The print
// dialogues are modal. The application shows Qt's dialogues; tests answer for the user.
class ExportPanels {
public:
    using Done = std::function<void(const QString &path)>;
    using DoneMany = std::function<void(const QStringList &paths)>;
    using Paint = std::function<void(QPrinter &printer)>;

    virtual ~ExportPanels() = default;
    // A folder chooser that can create folders, with the prompt on its accept button.
    virtual void beginFolderPanel(const QString &directory, const QString &prompt, Done done) = 0;
    // A save panel for files of the type (their suffix).
    virtual void beginSavePanel(const QString &directory, const QString &fileType, Done done) = 0;
    // An open panel for one or more styles (".hfstyle" folders).
    virtual void beginStylesPanel(const QString &directory, DoneMany done) = 0;
    // The print dialogue, which sets the printer up (a printer or a PDF file); false when
    // cancelled.
    virtual bool runPrintDialog(QPrinter &printer) = 0;
    // Shows the pages that paint draws on the printer, which may then be printed from there.
    virtual void runPrintPreview(QPrinter &printer, const Paint &paint) = 0;
};
