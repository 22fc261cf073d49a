#pragma once

#include <QObject>
#include <QStringList>

class MainWindowActions;
class Preferences;
class QMainWindow;
class QToolBar;
class QWidget;

// The main window's toolbar: built from the saved arrangement ("TB Item Identifiers", brought up
// to date for this version at start), rebuilt when the arrangement changes, and customised in
// its dialog. The saved filter pop-up and the search field are the two items that hold a control.
class MainWindowToolbar : public QObject {
    Q_OBJECT

public:
    MainWindowToolbar(Preferences &preferences, const MainWindowActions &actions,
                      QWidget *filterPopUp, QWidget *searchField, QMainWindow *window);

    QToolBar *toolbar() const { return m_toolbar; }
    // The identifiers of the items shown, in order.
    QStringList itemIdentifiers() const { return m_items; }
    // The items whose commands exist in the main window.
    static QStringList availableItems();

    // Shows the saved arrangement (the default one the first time), updated for this version.
    void setup();
    void setItems(const QStringList &identifiers);
    // The customising dialog; an accepted arrangement is saved and shown.
    void customize();

private:
    Preferences &m_preferences;
    const MainWindowActions &m_actions;
    QWidget *m_filterPopUp;
    QWidget *m_searchField;
    QMainWindow *m_window;
    QToolBar *m_toolbar;
    QStringList m_items;
};
