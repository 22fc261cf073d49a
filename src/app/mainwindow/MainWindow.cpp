#include "mainwindow/MainWindow.h"

#include "ProjectListModel.h"
#include "ProjectListView.h"
#include "customers/CustomerSideBar.h"
#include "desktop/DesktopPresence.h"
#include "desktop/RemoteControl.h"
#include "details/AttachmentOpenPanel.h"
#include "details/AttachmentsPanel.h"
#include "details/DetailsPane.h"
#include "details/TagEditorPanel.h"
#include "editors/EntrySheet.h"
#include "editors/FlatFeeSheet.h"
#include "editors/ProjectSheet.h"
#include "export/ExportCommands.h"
#include "filters/FilterSheet.h"
#include "filters/SearchResultsWindow.h"
#include "import/ImportDialogue.h"
#include "mainwindow/ProjectController.h"
#include "mainwindow/QuickFilterBar.h"
#include "mainwindow/RestoreBackupDialog.h"
#include "model/Entry.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"
#include "preferences/PreferencesWindow.h"
#include "stores/CustomerStorage.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

MainWindow::MainWindow(const Services &services, QWidget *parent)
    : QMainWindow(parent)
    , m_services(services)
    , m_pages(services.collection, services.customers, services.currency)
    , m_controller(new ProjectController(services.preferences, services.collection, services.alerts,
                                         services.panels, services.desktop, this))
    , m_model(
          new ProjectListModel(services.collection, services.preferences, services.currency, this))
    , m_list(new ProjectListView(services.alerts, this))
    , m_details(new DetailsPane(m_pages, this))
    , m_customerBar(new CustomerSideBar(services.customers, services.collection,
                                        services.preferences, services.alerts))
    , m_attachments(new AttachmentsPanel(services.collection, services.desktop, services.alerts,
                                         &AttachmentOpenPanel::begin, this))
    , m_tagEditor(new TagEditorPanel(services.tags, this))
    , m_filters(*new MainWindowFilters(services.preferences, services.collection, *m_controller,
                                       {services.filtersPath, services.quickFiltersPath}, this))
    , m_statusLine(*new MainWindowStatusLine(services.collection, *m_controller, statusBar()))
    , m_entrySheet(new EntrySheet(services.collection, services.preferences, services.alerts,
                                  &services.tags, this))
    , m_projectSheet(new ProjectSheet(services.collection, services.customers, services.tags,
                                      services.preferences, services.currency, services.alerts,
                                      this))
    , m_flatFeeSheet(new FlatFeeSheet(services.collection, services.tags, services.currency, this))
    , m_filterSheet(
          new FilterSheet(m_filters.filterController(), services.customers, services.alerts, this))
    , m_searchResults(new SearchResultsWindow(services.collection, *m_list, this))
    , m_editCommands(
          services.collection,
          {[this](const std::shared_ptr<Project> &project) {
               m_projectSheet->editProject(project);
           },
           [this](const std::shared_ptr<Entry> &entry) { m_entrySheet->editEntry(entry); },
           [this](const std::shared_ptr<FlatFeeEntry> &fee) { m_flatFeeSheet->editFlatFee(fee); }})
    , m_timerCommands(services.collection)
    , m_actions(*new MainWindowActions(services.collection.undoStack(), this))
    , m_toolbar(*new MainWindowToolbar(services.preferences, m_actions, m_filters.filterPopUp(),
                                       m_filters.searchField(), this))
    , m_drawer(*new MainWindowDrawer(services.preferences, m_details,
                                     m_actions.action(u"toggleDrawer:"_s), this))
    , m_presence(new DesktopPresence({services.preferences, services.collection, services.alerts,
                                      [&customers = services.customers](int id) {
                                          const auto customer = customers.customerWithID(id);
                                          return customer ? customer->color() : QColor();
                                      }},
                                     this)) {
    setObjectName(u"MainWindow"_s);
    setUnifiedTitleAndToolBarOnMac(true);
    m_model->setCustomerStorage(&services.customers);
    m_list->setProjectListModel(m_model);

    auto *listSide = new QWidget;
    auto *layout = new QVBoxLayout(listSide);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_filters.quickFilterBar());
    layout->addWidget(m_list);
    auto *splitter = new QSplitter(this);
    splitter->setObjectName(u"MainSplitter"_s);
    splitter->addWidget(m_customerBar);
    splitter->addWidget(listSide);
    splitter->setCollapsible(1, false);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({220, 800});
    setCentralWidget(splitter);
    connect(m_customerBar, &CustomerSideBar::customerSelected, this,
            [this](const Customer::Pointer &customer) {
                if (customer)
                    m_details->showCustomer(*customer);
                else
                    m_details->clear();
            });

    connectCommands();
    m_actions.buildMenus(menuBar(), m_list,
                         {[this] {
                              return m_controller->recentDocuments().files(
                                  ProjectController::projectsMimeType(), 10);
                          },
                          [this](const QString &path) { m_controller->openFile(path); }});
    connect(&m_actions, &MainWindowActions::menuAboutToShow, this,
            &MainWindow::updateCommandStates);

    ProjectCollection &collection = services.collection;
    connect(&collection, &ProjectCollection::projectsChanged, this, &MainWindow::documentChanged);
    connect(&collection, &ProjectCollection::changedMarkChanged, this, [this](bool changed) {
        setWindowModified(changed);
        // Changes made in place (a timer paused or resumed, attachments) only set the mark.
        if (changed && !m_services.collection.isMarkingAnnouncedChange())
            documentChanged();
        else
            updateCommandStates();
    });
    connect(m_controller, &ProjectController::currentFilenameChanged, this,
            &MainWindow::updateTitle);
    connect(m_controller, &ProjectController::documentReplaced, this, &MainWindow::documentChanged);
    connect(m_controller, &ProjectController::mainWindowWanted, m_presence,
            &DesktopPresence::showMainWindow);
    // Only running durations change with the clock; the totals change with the document.
    connect(m_controller, &ProjectController::refresh, m_model, &ProjectListModel::refreshRunning);
    connect(m_controller, &ProjectController::refresh, m_presence, &DesktopPresence::refresh);
    connect(m_presence, &DesktopPresence::preferencesWanted, this, &MainWindow::showPreferences);
    connect(m_presence, &DesktopPresence::quitWanted, this, &MainWindow::quit);
    connect(m_presence, &DesktopPresence::remoteAction, this, &MainWindow::remoteAction);
    m_presence->setSelectedTimer([this]() -> std::shared_ptr<Entry> {
        const auto item = m_list->selectedItem();
        return item && item->isEntry() ? std::static_pointer_cast<Entry>(item) : nullptr;
    });
    connect(m_controller, &ProjectController::quitAnswered, this, [this](bool quit) {
        if (quit)
            terminate();
    });
    connect(m_list, &ProjectListView::actionSegmentClicked, this, &MainWindow::actionButtonClicked);
    connect(m_list, &ProjectListView::itemDoubleClicked, this, &MainWindow::doubleClick);
    // A new entry or fee opens its project; the row selected before stays selected.
    connect(m_entrySheet, &EntrySheet::entryAdded, this,
            [this](const std::shared_ptr<Entry> &, const std::shared_ptr<Project> &project) {
                expandProject(project.get());
            });
    connect(m_projectSheet, &ProjectSheet::projectSaved, this,
            [this](const std::shared_ptr<Project> &project) { selectRow(project); });
    connect(m_flatFeeSheet, &FlatFeeSheet::flatFeeSaved, this,
            [this](const std::shared_ptr<FlatFeeEntry> &fee, bool created) {
                if (created)
                    expandProject(fee->parent());
            });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        updateDetails();
        updateCommandStates();
        m_presence->updateRemoteTimer();
    });
    connect(&services.preferences, &Preferences::valueChanged, this,
            &MainWindow::preferenceChanged);
    m_controller->setBusyCheck([] { return QApplication::activeModalWidget() != nullptr; });
    updateTitle();
}

MainWindow::~MainWindow() = default;

void MainWindow::connectCommands() {
    const auto on = [this](const char *name, auto *receiver, auto handler) {
        connect(m_actions.action(QString::fromLatin1(name)), &QAction::triggered, receiver,
                handler);
    };
    on("newDatabase:", m_controller, &ProjectController::newDatabase);
    on("load:", m_controller, &ProjectController::load);
    on("save:", m_controller, &ProjectController::save);
    on("saveAs:", m_controller, &ProjectController::saveAs);
    on("revert:", m_controller, &ProjectController::revert);
    on("restoreFromBackup:", this, &MainWindow::restoreFromBackup);
    on("terminate:", this, &MainWindow::quit);
    on("cut:", m_list, &ProjectListView::cut);
    on("copy:", m_list, &ProjectListView::copy);
    on("paste:", m_list, &ProjectListView::paste);
    on("delete:", this, &MainWindow::deleteSelection);
    on("newProject:", this, &MainWindow::newProject);
    on("newTimerEntry:", this, &MainWindow::newTimerEntry);
    on("newFlatFeeEntry:", this, &MainWindow::newFlatFeeEntry);
    on("edit:", this, &MainWindow::edit);
    on("startTimerInProject:", this, &MainWindow::startTimer);
    on("pause:", this, &MainWindow::pause);
    on("resume:", this, &MainWindow::resume);
    on("actionButtonClicked:", this, [this] { actionButtonClicked(m_list->currentIndex(), 2); });
    on("openAttachments:", this, &MainWindow::openAttachments);
    on("openTagsEditor:", m_tagEditor, &TagEditorPanel::openTagsEditor);
    on("toggleDropBox:", m_customerBar, &CustomerSideBar::toggleDropBox);
    on("toggleQuickFilters:", &m_filters, &MainWindowFilters::toggleQuickFilterBar);
    on("toggleMiniWindow:", m_presence, &DesktopPresence::toggleMiniWindow);
    on("runToolbarCustomizationPalette:", &m_toolbar, &MainWindowToolbar::customize);
    on("showPreferences:", this, &MainWindow::showPreferences);
    on("orderFrontStandardAboutPanel:", this, &MainWindow::showAbout);
    auto *exports = new ExportCommands(
        {m_services.collection, &m_services.customers, m_services.preferences, m_services.alerts},
        this);
    on("showExportSheet:", exports, &ExportCommands::showExportSheet);
    on("print:", exports, &ExportCommands::print);
    on("printPreview:", exports, &ExportCommands::printPreview);
    on("showImportSheet:", this, &MainWindow::showImportSheet);
    on("performFindPanelAction:", &m_filters, &MainWindowFilters::focusSearchField);
    on("showSearchResults:", m_searchResults,
       [this] { m_searchResults->searchFor(m_filters.searchField()->text()); });
    connect(&m_filters, &MainWindowFilters::editFiltersRequested, m_filterSheet,
            &FilterSheet::showSheet);
    connect(m_filterSheet, &QDialog::finished, &m_filters, &MainWindowFilters::fillFilterPopUp);
    connect(&m_filters, &MainWindowFilters::statusMessage, this,
            [this](const QString &message) { statusBar()->showMessage(message); });

    connect(&m_drawer, &MainWindowDrawer::opened, this, &MainWindow::updateDetails);
    QAction *customers = m_actions.action(u"toggleDropBox:"_s);
    connect(m_customerBar, &CustomerSideBar::dropBoxHiddenChanged, customers,
            [customers](bool hidden) { customers->setChecked(!hidden); });
    connect(&m_filters, &MainWindowFilters::quickFilterBarToggled,
            m_actions.action(u"toggleQuickFilters:"_s), &QAction::setChecked);
}

void MainWindow::showImportSheet() {
    auto *dialogue = new ImportDialogue(
        {m_services.collection, &m_services.customers, &m_services.tags,
         [this](bool folder) {
             return folder ? QFileDialog::getExistingDirectory(this, tr("Import from Folder"))
                           : QFileDialog::getOpenFileName(this, tr("Import from File"));
         },
         [this] {
             m_controller->newDatabase();
             return m_services.collection.projectArray().isEmpty() &&
                    m_services.collection.currentFile().isEmpty();
         }},
        this);
    dialogue->setAttribute(Qt::WA_DeleteOnClose);
    dialogue->setWindowModality(Qt::WindowModal);
    dialogue->show();
}

void MainWindow::restoreWindowState() {
    Preferences &preferences = m_services.preferences;
    if (!restoreGeometry(preferences.objectForKey(u"MainWindowGeometry").toByteArray())) {
        const QRect screen = this->screen()->availableGeometry();
        resize(qMin(1100, screen.width() * 9 / 10), qMin(720, screen.height() * 9 / 10));
        move(screen.center() - rect().center());
    }
    m_drawer.restoreSize();
}

void MainWindow::startUp(bool reopenLastFile, bool welcome) {
    m_controller->setStartingUp(true);
    m_toolbar.setup();
    m_customerBar->restoreDropBoxState();
    m_controller->startUp(reopenLastFile, welcome);
    m_list->restoreExpansion();
    m_filters.load();
    m_controller->setStartingUp(false);
    updateCommandStates();
    m_presence->start();
}

void MainWindow::preferenceChanged(const QString &key) {
    if (key == u"hideFadedProjects") {
        m_services.collection.setHideFadedProjects(
            m_services.preferences.boolForKey(u"hideFadedProjects"));
    } else if (key == u"listDateFormat") {
        updateDetails();
    }
}

void MainWindow::updateTitle() {
    const QString filename = m_controller->currentFilename();
    if (m_controller->isUntitled()) {
        setWindowFilePath(QString());
        setWindowTitle(tr("untitled") + u"[*] — Hourfold"_s);
    } else {
        setWindowFilePath(filename);
        setWindowTitle(QFileInfo(filename).fileName() + u"[*] — Hourfold"_s);
    }
    setWindowModified(m_services.collection.dataChanged());
}

void MainWindow::documentChanged() {
    m_statusLine.updateInfo();
    updateDetails();
    updateCommandStates();
}

CommandValidation::Selection MainWindow::selection() const {
    CommandValidation::Selection selected;
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid() || !m_list->selectionModel()->isSelected(current))
        return selected;
    const auto item = m_model->itemAt(current);
    const auto project = m_model->projectAt(current);
    selected.item = item.get();
    selected.project = project.get();
    return selected;
}

void MainWindow::updateCommandStates() {
    const CommandValidation::Selection selected = selection();
    const CommandValidation::DocumentState document{m_services.collection.dataChanged(),
                                                    m_controller->isUntitled()};
    m_actions.updateStates(selected, document, *m_list);
}

void MainWindow::updateDetails() {
    const CommandValidation::Selection selected = selection();
    // A closed pane is filled when it opens, not at every change of the selection.
    if (m_details->isVisible())
        m_details->updateDetails(selected.project, selected.item);
    m_customerBar->showProject(selected.project);
    m_attachments->updateWindowWithItem(attachmentItem());
}

void MainWindow::deleteSelection() {
    const QModelIndex current = m_list->currentIndex();
    const int row = current.row();
    // The project row may move or go (a filter, the sort) when its last entry goes.
    const QPersistentModelIndex parent = current.parent();
    const bool topLevel = !parent.isValid();
    if (!m_editCommands.deleteSelection(m_model->projectAt(current), m_model->itemAt(current)))
        return;
    if (!topLevel && !parent.isValid())
        return;
    const int rows = m_model->rowCount(parent);
    if (rows > 0)
        m_list->setCurrentIndex(m_model->index(qMin(row, rows - 1), 0, parent));
}

void MainWindow::pause() {
    const QModelIndex current = m_list->currentIndex();
    m_timerCommands.pause(m_model->projectAt(current), m_model->itemAt(current));
}

void MainWindow::resume() {
    const QModelIndex current = m_list->currentIndex();
    m_timerCommands.resume(m_model->projectAt(current), m_model->itemAt(current));
}

void MainWindow::startTimer() {
    const auto project = m_model->projectAt(m_list->currentIndex());
    if (!project)
        return;
    m_services.collection.startTimerInProject(project);
    expandProject(project.get());
}

void MainWindow::newProject() {
    m_projectSheet->newProject(m_customerBar->selectedCustomerIndex());
}

void MainWindow::newTimerEntry() {
    const QModelIndex current = m_list->currentIndex();
    if (const auto project = m_model->projectAt(current))
        m_entrySheet->newEntry(project, m_model->itemAt(current));
}

void MainWindow::newFlatFeeEntry() {
    if (const auto project = m_model->projectAt(m_list->currentIndex()))
        m_flatFeeSheet->newFlatFee(project);
}

void MainWindow::edit() {
    const QModelIndex current = m_list->currentIndex();
    m_editCommands.edit(m_model->projectAt(current), m_model->itemAt(current));
}

void MainWindow::openAttachments() {
    // The first time, the panel comes up at the window's right edge rather than wherever the
    // window system puts new windows.
    if (!m_attachmentsPlaced) {
        m_attachmentsPlaced = true;
        m_attachments->adjustSize();
        const QRect frame = frameGeometry();
        m_attachments->move(frame.right() - m_attachments->width() - 40, frame.top() + 120);
    }
    m_attachments->openAttachmentsWindowForItem(attachmentItem());
}

AttachmentController::Item MainWindow::attachmentItem() const {
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid() || !m_list->selectionModel()->isSelected(current))
        return {};
    if (auto item = m_model->itemAt(current))
        return item;
    if (auto project = m_model->projectAt(current))
        return project;
    return {};
}

void MainWindow::doubleClick(const QModelIndex &index) {
    m_list->setCurrentIndex(index);
    edit();
}

void MainWindow::actionButtonClicked(const QModelIndex &index, int segment) {
    const auto project = m_model->projectAt(index);
    if (!project)
        return;
    const auto item = m_model->itemAt(index);
    m_list->setCurrentIndex(index.siblingAtColumn(0));
    switch (TimerCommands::commandForSegment(item.get(), segment)) {
    case TimerCommands::Command::StartTimer:
        startTimer();
        break;
    case TimerCommands::Command::Resume:
        resume();
        break;
    case TimerCommands::Command::Pause:
        pause();
        break;
    case TimerCommands::Command::Stop:
        m_entrySheet->stopEntry(std::static_pointer_cast<Entry>(item));
        break;
    }
}

void MainWindow::selectRow(const std::shared_ptr<Project> &project) {
    const QModelIndex row = project ? m_model->indexOfProject(*project) : QModelIndex();
    if (!row.isValid())
        return;
    m_list->setCurrentIndex(row);
    m_list->scrollTo(row);
}

void MainWindow::expandProject(const Project *project) {
    const QModelIndex row = project ? m_model->indexOfProject(*project) : QModelIndex();
    if (row.isValid())
        m_list->expand(row);
}

void MainWindow::showPreferences() {
    if (!m_preferencesWindow) {
        m_preferencesWindow = new PreferencesWindow(m_services.preferences, m_services.collection,
                                                    m_services.currency, this);
        RemoteControl &remote = m_presence->remoteControl();
        m_preferencesWindow->setRemoteNotice(remote.notice());
        connect(&remote, &RemoteControl::noticeChanged, m_preferencesWindow,
                [this, &remote] { m_preferencesWindow->setRemoteNotice(remote.notice()); });
        // Centred over the main window the first time; later where the user left it.
        m_preferencesWindow->adjustSize();
        m_preferencesWindow->move(frameGeometry().center() - m_preferencesWindow->rect().center());
    }
    m_preferencesWindow->show();
    m_preferencesWindow->raise();
    m_preferencesWindow->activateWindow();
}

void MainWindow::remoteAction(RemoteButtonLogic::Action action) {
    using Action = RemoteButtonLogic::Action;
    const QModelIndex current = m_list->selectedIndex();
    switch (action) {
    case Action::SelectPrevious:
    case Action::SelectNext: {
        const QModelIndexList rows = shownRows();
        const int at = int(rows.indexOf(current));
        const int row = action == Action::SelectPrevious
                            ? RemoteButtonLogic::previousRow(at, int(rows.size()))
                            : RemoteButtonLogic::nextRow(at, int(rows.size()));
        if (row >= 0) {
            m_list->selectRow(rows.at(row));
            m_list->scrollTo(rows.at(row));
        }
        break;
    }
    case Action::PauseOrResume: {
        const auto item = m_list->selectedItem();
        if (item && item->isEntry()) {
            if (item->isPaused())
                resume();
            else
                pause();
        }
        break;
    }
    case Action::Expand:
    case Action::Collapse:
        // Only a project row opens and closes.
        if (current.isValid() && !current.parent().isValid())
            m_list->setExpanded(current, action == Action::Expand);
        break;
    default:
        break;
    }
}

QModelIndexList MainWindow::shownRows() const {
    QModelIndexList rows;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex project = m_model->index(row, 0);
        rows << project;
        if (!m_list->isExpanded(project))
            continue;
        for (int child = 0; child < m_model->rowCount(project); ++child)
            rows << m_model->index(child, 0, project);
    }
    return rows;
}

void MainWindow::showAbout() {
    QMessageBox::about(this, tr("About Hourfold"),
                       tr("<h3>Hourfold %1</h3><p>Time tracking for freelancers.</p>")
                           .arg(QApplication::applicationVersion()));
}

void MainWindow::restoreFromBackup() {
    auto *dialog = new RestoreBackupDialog(ProjectBackups(ProjectBackups::sharedFolder()), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &RestoreBackupDialog::backupChosen, m_controller,
            &ProjectController::openBackup);
    dialog->open();
}

void MainWindow::quit() {
    switch (m_controller->applicationShouldTerminate()) {
    case ProjectController::TerminateReply::Now:
        terminate();
        break;
    case ProjectController::TerminateReply::Later:
    case ProjectController::TerminateReply::Cancel:
        break;
    }
}

void MainWindow::terminate() {
    if (m_terminated)
        return;
    m_terminated = true;
    m_controller->applicationWillTerminate();
    m_drawer.storeSize();
    m_services.preferences.setObject(saveGeometry(), u"MainWindowGeometry");
    m_services.preferences.synchronize();
    emit terminated();
}

void MainWindow::openFiles(const QStringList &files) {
    // A launch without a file asks for the program to come back.
    if (files.isEmpty())
        m_presence->reopen();
    else
        m_presence->showMainWindow();
    for (const QString &file : files)
        m_controller->openFile(file);
}

void MainWindow::closeEvent(QCloseEvent *event) {
    if (m_terminated) {
        event->accept();
        return;
    }
    // The program keeps running with its timers; Quit ends it.
    event->ignore();
    m_presence->mainWindowClosed();
}

void MainWindow::changeEvent(QEvent *event) {
    if (event->type() == QEvent::PaletteChange)
        m_list->viewport()->update();
    QMainWindow::changeEvent(event);
}
