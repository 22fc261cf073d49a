#pragma once

#include "desktop/IdleTime.h"

// The idle time from org.freedesktop.ScreenSaver (GetSessionIdleTime, Plasma and others), from
// GNOME's org.gnome.Mutter.IdleMonitor, else from the X server's screen-saver extension. The
// first that answers is kept; when none does, the log says so once.
class DesktopIdleTime : public IdleTime {
public:
    std::optional<qint64> idleMilliseconds() override;

private:
    enum class Source { Unknown, ScreenSaver, Mutter, X11, Unavailable };
    std::optional<qint64> ask(Source source) const;

    Source m_source = Source::Unknown;
};
