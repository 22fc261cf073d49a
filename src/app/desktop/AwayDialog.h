#pragma once

#include <QDialog>

class QLabel;
class TimeAway;

// Asks what the time away counts for: keep it, count it as a pause in the timers that ran, or
// stop them where it began. It stands on its own above the other windows, so that it shows
// whether the main window or the mini window is up, and blocks neither.
class AwayDialog : public QDialog {
    Q_OBJECT

public:
    enum class Choice { Keep, Pause, Stop };

    explicit AwayDialog(QWidget *parent = nullptr);

    void ask(const TimeAway &away, int timers);
    QLabel *messageLabel() const { return m_message; }

signals:
    void answered(AwayDialog::Choice choice);

private:
    void answer(Choice choice);

    QLabel *m_message;
    bool m_answered = false;
};
