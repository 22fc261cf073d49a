#pragma once

#include <QFileDialog>
#include <functional>

// The open panel of the attachments window: files and folders, several at once, with a button
// for a new folder. "Open" with a folder selected attaches the folder; double-clicking a folder
// goes into it.
class AttachmentOpenPanel : public QFileDialog {
    Q_OBJECT

public:
    using Done = std::function<void(const QStringList &paths)>;

    // Opens the panel over the window, starting in the directory; done gets the chosen paths, or
    // none when the panel is cancelled.
    static void begin(QWidget *window, const QString &directory, Done done);

    void accept() override;

private:
    AttachmentOpenPanel(QWidget *window, const QString &directory);
};
