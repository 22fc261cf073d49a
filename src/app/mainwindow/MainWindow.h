#pragma once

#include "desktop/RemoteButtonLogic.h"
#include "details/DetailsPage.h"
#include "mainwindow/CommandValidation.h"
#include "mainwindow/EditCommands.h"
#include "mainwindow/MainWindowActions.h"
#include "mainwindow/MainWindowDrawer.h"
#include "mainwindow/MainWindowFilters.h"
#include "mainwindow/MainWindowStatusLine.h"
#include "mainwindow/MainWindowToolbar.h"
#include "mainwindow/TimerCommands.h"
#include "stores/AttachmentController.h"

#include <QMainWindow>
#include <QModelIndexList>

class AttachmentsPanel;
class CurrencyFormatter;
class CustomerSideBar;
class CustomerStorage;
class DesktopPresence;
class DesktopServices;
class DetailsPane;
class EntrySheet;
class FilterSheet;
class FlatFeeSheet;
class FilePanels;
class Preferences;
class PreferencesWindow;
class ProjectCollection;
class ProjectController;
class ProjectListModel;
class ProjectListView;
class ProjectSheet;
class QComboBox;
class QLabel;
class QLineEdit;
class QToolBar;
class QuickFilterBar;
class SearchResultsWindow;
class TagEditorPanel;
class TagStorage;
class UserAlerts;

// The main window: the quick-filter bar over the project list, the details pane beside it, the
// toolbar, the menus and the status line. It shows the document and hands every command to the
// document or to the controller; the rules live in those and in the small logic classes. Its parts
// have classes of their own: the commands and menus (MainWindowActions), the toolbar
// (MainWindowToolbar), the filters (MainWindowFilters), the status line (MainWindowStatusLine) and
// the details drawer (MainWindowDrawer).
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    // What the window works with; the caller keeps them alive longer than the window.
    struct Services {
        Preferences &preferences;
        ProjectCollection &collection;
        CustomerStorage &customers;
        TagStorage &tags;
        const CurrencyFormatter &currency;
        UserAlerts &alerts;
        FilePanels &panels;
        DesktopServices &desktop;
        QString filtersPath;      // filters.plist of the support folder
        QString quickFiltersPath; // quickfilters.plist of the resources
    };

    explicit MainWindow(const Services &services, QWidget *parent = nullptr);
    ~MainWindow() override;

    // The size and place of the last run, centred on the screen the first time.
    void restoreWindowState();
    // The start-up sequence: toolbar, document, list, welcome prompt, filters.
    // Without reopenLastFile the caller opens a file of its own afterwards; without welcome the
    // caller asks the welcome question once the window shows.
    void startUp(bool reopenLastFile = true, bool welcome = true);

    ProjectController &controller() const { return *m_controller; }
    ProjectListView *listView() const { return m_list; }
    ProjectListModel *listModel() const { return m_model; }
    DetailsPane *detailsPane() const { return m_details; }
    CustomerSideBar *customerSideBar() const { return m_customerBar; }
    AttachmentsPanel *attachmentsPanel() const { return m_attachments; }
    DesktopPresence &desktopPresence() const { return *m_presence; }
    EntrySheet *entrySheet() const { return m_entrySheet; }
    ProjectSheet *projectSheet() const { return m_projectSheet; }
    FlatFeeSheet *flatFeeSheet() const { return m_flatFeeSheet; }
    FilterSheet *filterSheet() const { return m_filterSheet; }
    SearchResultsWindow *searchResultsWindow() const { return m_searchResults; }
    QuickFilterBar *quickFilterBar() const { return m_filters.quickFilterBar(); }
    QComboBox *filterPopUp() const { return m_filters.filterPopUp(); }
    QLineEdit *searchField() const { return m_filters.searchField(); }
    QLabel *saveWarningLabel() const { return m_statusLine.saveWarningLabel(); }
    QLabel *statusInfoLabel() const { return m_statusLine.infoLabel(); }
    QToolBar *mainToolbar() const { return m_toolbar.toolbar(); }
    // The menu and toolbar command of an action ("save:", "delete:", ...); nullptr when the
    // window has no such command.
    QAction *commandAction(const QString &action) const { return m_actions.action(action); }
    // The identifiers of the toolbar items shown, in order.
    QStringList toolbarItemIdentifiers() const { return m_toolbar.itemIdentifiers(); }

    // Quits as the Quit command does: asks, saves, or waits for the save panel.
    void quit();
    // Shows the window and opens the files handed over by the desktop or a second launch.
    void openFiles(const QStringList &files);
    // File ▸ Restore from Backup…: the kept copies; the chosen one opens as an untitled document.
    void restoreFromBackup();

    void updateCommandStates();
    // A click on a segment of the action column, or the Stop command (segment 2).
    void actionButtonClicked(const QModelIndex &index, int segment);
    void updateDetails();
    void setToolbarItems(const QStringList &identifiers) { m_toolbar.setItems(identifiers); }
    void customizeToolbar() { m_toolbar.customize(); }

signals:
    // The quit went through: the application ends its event loop.
    void terminated();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    // Connects each command to what it does.
    void connectCommands();
    void preferenceChanged(const QString &key);
    void updateTitle();
    // What the document shows changed, or what it holds: the totals, the details and the
    // commands follow, whichever command or program made the change.
    void documentChanged();
    void deleteSelection();
    void pause();
    void resume();
    void startTimer();
    void newProject();
    void newTimerEntry();
    void newFlatFeeEntry();
    void edit();
    void doubleClick(const QModelIndex &index);
    void openAttachments();
    // The selected row for the attachments panel.
    AttachmentController::Item attachmentItem() const;
    // Selects the project's row.
    void selectRow(const std::shared_ptr<Project> &project);
    // Opens the project's row (a new entry or timer in it); the selection stays.
    void expandProject(const Project *project);
    void showPreferences();
    // File ▸ Import…: another tracker's data into the open document or a new one.
    void showImportSheet();
    void showAbout();
    // A button of the remote on the list: select the row above or below (round the ends), pause
    // or resume the selected entry, expand or collapse the selected project.
    void remoteAction(RemoteButtonLogic::Action action);
    // The rows the list shows, top to bottom.
    QModelIndexList shownRows() const;
    void terminate();
    CommandValidation::Selection selection() const;

    Services m_services;
    DetailsPage m_pages;
    ProjectController *m_controller;
    ProjectListModel *m_model;
    ProjectListView *m_list;
    DetailsPane *m_details;
    CustomerSideBar *m_customerBar;
    AttachmentsPanel *m_attachments;
    TagEditorPanel *m_tagEditor;
    MainWindowFilters &m_filters;
    MainWindowStatusLine &m_statusLine;
    PreferencesWindow *m_preferencesWindow = nullptr;
    EntrySheet *m_entrySheet;
    ProjectSheet *m_projectSheet;
    FlatFeeSheet *m_flatFeeSheet;
    FilterSheet *m_filterSheet;
    SearchResultsWindow *m_searchResults;
    EditCommands m_editCommands;
    TimerCommands m_timerCommands;
    MainWindowActions &m_actions;
    MainWindowToolbar &m_toolbar;
    MainWindowDrawer &m_drawer;
    DesktopPresence *m_presence;
    bool m_terminated = false;
    bool m_attachmentsPlaced = false;
};
