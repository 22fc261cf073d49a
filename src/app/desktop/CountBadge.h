#pragma once

#include <QImage>
#include <QRect>
#include <functional>

class LauncherEntry;

// The number of running and paused timers on the program's icon: a red circle with the white
// number in the icon's top right corner, growing with the number's width, and the same count on
// the launcher. With no timer, or with the badge switched off, the icon is the plain one again.
class CountBadge {
public:
    // Side of the icon the badge is drawn into.
    static constexpr int iconSize = 128;

    CountBadge(const QImage &originalIcon, LauncherEntry &launcher,
               std::function<void(const QImage &)> setIcon);

    // Draws the badge for the count (none when not shown) and tells the launcher; does nothing
    // when neither changed since the last time.
    void update(int count, bool shown);

    // The icon with the badge for the count; the icon itself for 0.
    static QImage drawCountIcon(const QImage &icon, int count);
    // The circle's box for the count in an icon of the size.
    static QRect badgeRect(const QSize &icon, int count);

private:
    QImage m_originalIcon;
    LauncherEntry &m_launcher;
    std::function<void(const QImage &)> m_setIcon;
    int m_shownCount = -1;
};
