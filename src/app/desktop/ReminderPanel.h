#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class UserAlerts;

// The built-in reminder: a small floating panel with an icon, a title, the list of timers and
// OK. It is not modal and does not take the keyboard from the window in use; it is centred the
// first time it shows and stays where the user puts it afterwards.
class ReminderPanel : public QWidget {
    Q_OBJECT

public:
    // Height = 105 + title height + text height, at least 122; width = the wider of title and
    // text + 216.
    static QSize panelSize(QSize title, QSize text);
    // Where the text starts from the top.
    static constexpr int textTop = 60;

    explicit ReminderPanel(UserAlerts &alerts, QWidget *parent = nullptr);

    // Beeps, lays the panel out for the texts and shows it.
    void showBuiltInAlert(const QString &title, const QString &text, const QString &icon);
    void reminderDialogOk();

    QLabel *titleLabel() const { return m_title; }
    QLabel *textLabel() const { return m_text; }

private:
    UserAlerts &m_alerts;
    QLabel *m_icon;
    QLabel *m_title;
    QLabel *m_text;
    QPushButton *m_ok;
    bool m_placed = false;
};
