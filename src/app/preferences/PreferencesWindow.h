#pragma once

#include <QHash>
#include <QWidget>
#include <functional>

class CurrencyFormatter;
class Preferences;
class ProjectCollection;
class QBoxLayout;
class QCheckBox;
class QLabel;
class QTabWidget;

// The preferences window: the pages "General", "Display" and "Reminders" (with the question
// about time away). Every control writes
// its preference the moment it changes (listeners react to Preferences::valueChanged), and shows
// the stored value whenever the window is shown or the value changes elsewhere. Hiding faded
// projects goes through the document, which stores the preference itself. A normal window:
// it does not block the others, and Escape closes it.
//
// Each control's object name is its preference key; a radio button's is the key followed by its
// row ("listDateFormat0" to "listDateFormat3").
class PreferencesWindow : public QWidget {
    Q_OBJECT

public:
    PreferencesWindow(Preferences &preferences, ProjectCollection &collection,
                      const CurrencyFormatter &currency, QWidget *parent = nullptr);

    QTabWidget *pages() const { return m_pages; }
    // Why the remote cannot be read (shown under its check box); empty hides the notice.
    void setRemoteNotice(const QString &notice);

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QWidget *generalPage(const CurrencyFormatter &currency);
    QWidget *displayPage();
    QWidget *remindersPage();

    // A check box for a boolean preference; WRITE replaces storing the preference directly.
    QCheckBox *checkBox(const QString &key, const QString &text,
                        std::function<void(bool)> write = {});
    // Radio rows for an integer preference; the row's value is given by the mapping functions.
    void addRadioRows(QBoxLayout *layout, const QString &key, const QStringList &titles,
                      std::function<int(int)> valueOfRow, std::function<int(int)> rowOfValue);
    QWidget *colorButton(const QString &key);
    void chooseColor(const QString &key);
    QWidget *intervalSpinBox(const QString &key, int minimum = 1);

    // Shows the stored value of one setting in its control, without writing it back.
    void load(const QString &key);
    void loadAll();
    void updateEnabled();

    Preferences &m_preferences;
    ProjectCollection &m_collection;
    QTabWidget *m_pages;
    QLabel *m_remoteNotice = nullptr;
    QHash<QString, std::function<void()>> m_loaders;
    // The widgets that take input for a setting, or say what it is, by preference key.
    QHash<QString, QList<QWidget *>> m_controls;
};
