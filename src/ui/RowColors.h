#pragma once

#include <QColor>
#include <QPalette>

// The colours of the project list's rows, taken from the palette so that the list stays readable
// with a light or a dark colour scheme:
//
// - Text is the palette's text colour; a selected row is drawn by the style in the palette's
//   highlighted-text colour.
// - A paused entry uses the palette's disabled text colour.
// - A running duration is red: pure red on a light palette, a lighter red (255, 110, 110) on a
//   dark one.
// - A filtered-out row keeps its colour at 45 % of its opacity.
// - A row tint (project rows, unfinished entries) is used as it is on a light palette. On a dark
//   palette (base colour lightness below 128) it is mixed into the base colour at 35 %, which keeps
//   the hue recognisable while the light text stays readable on it.
class RowColors {
public:
    explicit RowColors(const QPalette &palette = QPalette());

    static bool isDark(const QPalette &palette);
    bool isDark() const { return isDark(m_palette); }

    QColor text() const;
    QColor pausedText() const;
    QColor runningText() const;
    QColor tint(const QColor &tint) const;
    static QColor faded(const QColor &color);

private:
    QPalette m_palette;
};
