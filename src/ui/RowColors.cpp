#include "RowColors.h"

namespace {
constexpr float fadedOpacity = 0.45f;
constexpr float darkTintShare = 0.35f;
} // namespace

RowColors::RowColors(const QPalette &palette)
    : m_palette(palette) {}

bool RowColors::isDark(const QPalette &palette) {
    return palette.color(QPalette::Active, QPalette::Base).lightness() < 128;
}

QColor RowColors::text() const {
    return m_palette.color(QPalette::Active, QPalette::Text);
}

QColor RowColors::pausedText() const {
    return m_palette.color(QPalette::Disabled, QPalette::Text);
}

QColor RowColors::runningText() const {
    return isDark() ? QColor(255, 110, 110) : QColor(255, 0, 0);
}

QColor RowColors::tint(const QColor &tint) const {
    if (!isDark())
        return tint;
    const QColor base = m_palette.color(QPalette::Active, QPalette::Base);
    const auto mix = [](float from, float to) { return from + (to - from) * darkTintShare; };
    return QColor::fromRgbF(mix(base.redF(), tint.redF()), mix(base.greenF(), tint.greenF()),
                            mix(base.blueF(), tint.blueF()));
}

QColor RowColors::faded(const QColor &color) {
    QColor result = color;
    result.setAlphaF(color.alphaF() * fadedOpacity);
    return result;
}
