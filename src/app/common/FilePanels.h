#pragma once

#include <QString>
#include <functional>

// The open and save panels for project files. A panel runs while the event loop goes on and
// reports its end through the callback: the chosen path, or an empty text when cancelled. The
// application shows QFileDialog; tests answer the callback themselves.
class FilePanels {
public:
    using Done = std::function<void(const QString &path)>;

    virtual ~FilePanels() = default;
    virtual void beginOpenPanel(const QString &directory, Done done) = 0;
    virtual void beginSavePanel(const QString &directory, Done done) = 0;
};
