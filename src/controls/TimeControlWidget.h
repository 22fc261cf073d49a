#pragma once

#include "WBTimeControl.h"

#include <QBasicTimer>
#include <QStyle>
#include <QWidget>

class QStyleOptionSpinBox;

// The time entry control on screen: the fields of a WBTimeControl in one line-edit frame with
// their separators, and the stepper's arrows beside them, drawn by the style like a spin box (so
// high-density screens and dark palettes look as the desktop does).
//
// Keyboard: Up and Down step the selected field; Left and Right, Tab and Shift+Tab move between
// the fields (Tab leaves the control after the last field); digits type into a number field
// (the first replaces the field, the second appends); a letter switches the morning/afternoon
// field; Backspace deletes; Return and moving to another field take a typed value over, Escape
// drops it. A click selects a field or steps with the arrows (held down, it repeats); the wheel
// steps while the control has the focus.
//
// The widget shows and edits the control given to it (or one of its own); enable and disable
// through the control, which the widget follows.
class TimeControlWidget : public QWidget {
    Q_OBJECT

public:
    explicit TimeControlWidget(QWidget *parent = nullptr);
    explicit TimeControlWidget(WBTimeControl &control, QWidget *parent = nullptr);

    WBTimeControl &control() const { return *m_control; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    // Where a field is drawn (empty for a hidden one) and where the arrows are.
    QRect fieldRect(int field) const;
    QRect upButtonRect() const;
    QRect downButtonRect() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void timerEvent(QTimerEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void attach();
    void initStyleOption(QStyleOptionSpinBox *option) const;
    QRect editFieldRect() const;
    // Width of a field's text box: two digits, or the longer designation.
    int fieldWidth(int field) const;
    // The field next to the selected one (-1: none that way).
    int neighbour(bool next) const;
    void typeText(const QString &text);
    void deleteBackward();
    void step(QStyle::SubControl arrow);

    WBTimeControl *m_control;
    // A selected field shows its text selected whole until a digit is typed into it.
    bool m_wholeSelected = true;
    QStyle::SubControl m_pressed = QStyle::SC_None;
    QBasicTimer m_repeat;
};
