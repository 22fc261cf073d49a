#pragma once

#include "desktop/MiniWindowLogic.h"

#include <QWidget>

class QLabel;
class QPropertyAnimation;
class QToolButton;

// The mini window: a small dark floating panel that lists the running and paused timers with
// their live durations in a three-row opening. The arrows (buttons or keys) move the selection,
// Space or a click on a line pauses or resumes a timer, Escape hides the panel.
class MiniWindow : public QWidget {
    Q_OBJECT

public:
    explicit MiniWindow(ProjectCollection &collection, QWidget *parent = nullptr);

    MiniWindowLogic &logic() { return m_logic; }
    bool isHUDVisible() const { return m_visible; }

    // Shows the panel in front of every window, with the list reloaded and the keyboard on it.
    void showHUD();
    // Fades the panel out.
    void hideHUD();
    void up();
    void down();
    void play();
    // Takes the timers anew and redraws the lines.
    void reloadData();

signals:
    // The panel was shown or hidden by the user or by a command.
    void visibilityChanged(bool visible);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Moves the list to the selection; after a step down (1) or up (-1) it slides there.
    void placeList(int step);
    void updateButtonState();
    QString lineText(const Entry &entry) const;

    MiniWindowLogic m_logic;
    QWidget *m_opening;
    QWidget *m_selector;
    QWidget *m_list;
    QLabel *m_emptyText;
    QToolButton *m_upButton;
    QToolButton *m_downButton;
    QList<QLabel *> m_lines;
    QPropertyAnimation *m_scrolling;
    QPropertyAnimation *m_fading;
    QPoint m_dragOffset;
    bool m_visible = false;
    bool m_placed = false;
};
