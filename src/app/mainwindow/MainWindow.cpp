#include "mainwindow/MainWindow.h"

#include "ProjectListModel.h"
#include "ProjectListView.h"
#include "customers/CustomerSideBar.h"
#include "details/AttachmentOpenPanel.h"
#include "details/AttachmentsPanel.h"
#include "details/DetailsPane.h"
#include "details/TagEditorPanel.h"
#include "editors/EntrySheet.h"
#include "editors/FlatFeeSheet.h"
#include "editors/ProjectSheet.h"
#include "mainwindow/ProjectController.h"
#include "mainwindow/QuickFilterBar.h"
#include "mainwindow/ToolbarCustomizeDialog.h"
#include "mainwindow/ToolbarItems.h"
#include "model/Entry.h"
#include "model/ProjectCollection.h"
#include "platform/Folders.h"
#include "platform/Preferences.h"
#include "preferences/PreferencesWindow.h"
#include "search/FilterController.h"
#include "search/QuickFilters.h"
#include "stores/CustomerStorage.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QUndoStack>
#include <QVBoxLayout>
#include <QWidgetAction>

using namespace Qt::StringLiterals;

namespace {

const QString toolbarKey = u"TB Item Identifiers"_s;

} // namespace

MainWindow::MainWindow(const Services &services, QWidget *parent)
    : QMainWindow(parent)
    , m_services(services)
    , m_pages(services.collection, services.customers, services.currency)
    , m_controller(new ProjectController(services.preferences, services.collection, services.alerts,
                                         services.panels, services.desktop, this))
    , m_filters(
          std::make_unique<FilterController>(services.filtersPath, services.preferences, *this))
    , m_quickFilters(std::make_unique<QuickFilters>())
    , m_model(
          new ProjectListModel(services.collection, services.preferences, services.currency, this))
    , m_list(new ProjectListView(services.alerts, this))
    , m_details(new DetailsPane(m_pages, this))
    , m_customerBar(new CustomerSideBar(services.customers, services.collection,
                                        services.preferences, services.alerts))
    , m_attachments(new AttachmentsPanel(services.collection, services.desktop, services.alerts,
                                         &AttachmentOpenPanel::begin, this))
    , m_tagEditor(new TagEditorPanel(services.tags, this))
    , m_quickFilterBar(new QuickFilterBar(this))
    , m_filterPopUp(new QComboBox(this))
    , m_searchField(new QLineEdit(this))
    , m_statusInfo(new QLabel(this))
    , m_saveWarning(new QLabel(this))
    , m_toolbar(new QToolBar(tr("Toolbar"), this))
    , m_entrySheet(new EntrySheet(services.collection, services.preferences, services.alerts,
                                  &services.tags, this))
    , m_projectSheet(new ProjectSheet(services.collection, services.customers, services.tags,
                                      services.preferences, services.currency, services.alerts,
                                      this))
    , m_flatFeeSheet(new FlatFeeSheet(services.collection, services.tags, services.currency, this))
    , m_editCommands(
          services.collection,
          {[this](const std::shared_ptr<Project> &project) {
               m_projectSheet->editProject(project);
           },
           [this](const std::shared_ptr<Entry> &entry) { m_entrySheet->editEntry(entry); },
           [this](const std::shared_ptr<FlatFeeEntry> &fee) { m_flatFeeSheet->editFlatFee(fee); }})
    , m_timerCommands(services.collection) {
    setObjectName(u"MainWindow"_s);
    setUnifiedTitleAndToolBarOnMac(true);
    m_model->setCustomerStorage(&services.customers);
    m_list->setProjectListModel(m_model);

    auto *listSide = new QWidget;
    auto *layout = new QVBoxLayout(listSide);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_quickFilterBar);
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
    addDockWidget(Qt::RightDockWidgetArea, m_details);
    m_details->setVisible(services.preferences.boolForKey(u"DrawerState"));

    createCommands();
    createFilterControls();
    fillFilterPopUp();
    createToolbar();
    createMenus();
    createStatusLine();

    ProjectCollection &collection = services.collection;
    connect(&collection, &ProjectCollection::projectsChanged, this, [this] {
        updateStatusInfo();
        updateDetails();
        updateCommandStates();
    });
    connect(&collection, &ProjectCollection::changedMarkChanged, this, [this](bool changed) {
        setWindowModified(changed);
        updateCommandStates();
    });
    connect(m_controller, &ProjectController::currentFilenameChanged, this,
            &MainWindow::updateTitle);
    connect(m_controller, &ProjectController::documentReplaced, this, [this] {
        updateStatusInfo();
        updateDetails();
        updateCommandStates();
    });
    connect(m_controller, &ProjectController::mainWindowWanted, this, [this] {
        show();
        raise();
        activateWindow();
    });
    // Only running durations change with the clock; the totals change with the document.
    connect(m_controller, &ProjectController::refresh, m_model, &ProjectListModel::refreshRunning);
    connect(m_controller, &ProjectController::statusMessage, this,
            [this](const QString &message) { statusBar()->showMessage(message, 15000); });
    connect(m_controller, &ProjectController::saveWarningChanged, this,
            [this](const QString &warning) {
                m_saveWarning->setText(warning);
                m_saveWarning->setToolTip(warning);
                m_saveWarning->setVisible(!warning.isEmpty());
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
    connect(m_entrySheet, &EntrySheet::entryEdited, this, &MainWindow::updateDetails);
    connect(m_projectSheet, &ProjectSheet::projectSaved, this,
            [this](const std::shared_ptr<Project> &project) { selectRow(project); });
    connect(m_flatFeeSheet, &FlatFeeSheet::flatFeeSaved, this,
            [this](const std::shared_ptr<FlatFeeEntry> &fee, bool created) {
                if (created)
                    expandProject(fee->parent());
                updateDetails();
            });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        updateDetails();
        updateCommandStates();
    });
    connect(&services.preferences, &Preferences::valueChanged, this,
            &MainWindow::preferenceChanged);
    m_controller->setBusyCheck([] { return QApplication::activeModalWidget() != nullptr; });
    updateTitle();
}

MainWindow::~MainWindow() = default;

QStringList MainWindow::availableToolbarItems() {
    return {u"AddProject"_s, u"AddEntry"_s, u"AddFlatFeeEntry"_s, u"Delete"_s,
            u"Edit"_s,       u"Details"_s,  u"Pause"_s,           u"Resume"_s,
            u"Stop"_s,       u"Filters"_s,  u"Search"_s,          u"Attachments"_s};
}

QAction *MainWindow::addCommand(const QString &action, const QString &title,
                                const QKeySequence &keys, const QString &image) {
    auto *command = new QAction(title, this);
    command->setObjectName(action);
    if (!keys.isEmpty())
        command->setShortcut(keys);
    if (!image.isEmpty())
        command->setIcon(QIcon(Folders::imagePath(image)));
    m_commands.insert(action, command);
    return command;
}

void MainWindow::createCommands() {
    ProjectController *controller = m_controller;
    connect(addCommand(u"newDatabase:"_s, tr("&New"), QKeySequence::New), &QAction::triggered,
            controller, &ProjectController::newDatabase);
    connect(addCommand(u"load:"_s, tr("&Open…"), QKeySequence::Open), &QAction::triggered,
            controller, &ProjectController::load);
    connect(addCommand(u"save:"_s, tr("&Save"), QKeySequence::Save), &QAction::triggered,
            controller, &ProjectController::save);
    connect(addCommand(u"saveAs:"_s, tr("Save &As…"), QKeySequence::SaveAs), &QAction::triggered,
            controller, &ProjectController::saveAs);
    connect(addCommand(u"revert:"_s, tr("&Revert to Saved"), {}), &QAction::triggered, controller,
            &ProjectController::revert);
    connect(addCommand(u"terminate:"_s, tr("&Quit"), QKeySequence::Quit), &QAction::triggered, this,
            &MainWindow::quit);
    connect(addCommand(u"cut:"_s, tr("Cu&t"), QKeySequence::Cut), &QAction::triggered, m_list,
            &ProjectListView::cut);
    connect(addCommand(u"copy:"_s, tr("&Copy"), QKeySequence::Copy), &QAction::triggered, m_list,
            &ProjectListView::copy);
    connect(addCommand(u"paste:"_s, tr("&Paste"), QKeySequence::Paste), &QAction::triggered, m_list,
            &ProjectListView::paste);
    connect(addCommand(u"delete:"_s, tr("&Delete"), QKeySequence::Delete, u"Trash"_s),
            &QAction::triggered, this, &MainWindow::deleteSelection);
    connect(addCommand(u"newProject:"_s, tr("New &Project…"),
                       QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N), u"NewProject"_s),
            &QAction::triggered, this, &MainWindow::newProject);
    connect(addCommand(u"newTimerEntry:"_s, tr("New &Entry…"), QKeySequence(Qt::CTRL | Qt::Key_E),
                       u"NewEntry"_s),
            &QAction::triggered, this, &MainWindow::newTimerEntry);
    connect(addCommand(u"newFlatFeeEntry:"_s, tr("New &Flat Fee…"),
                       QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), u"NewFlatFeeEntry"_s),
            &QAction::triggered, this, &MainWindow::newFlatFeeEntry);
    connect(addCommand(u"edit:"_s, tr("&Edit…"), QKeySequence(Qt::CTRL | Qt::Key_I), u"Edit"_s),
            &QAction::triggered, this, &MainWindow::edit);
    connect(addCommand(u"startTimerInProject:"_s, tr("&Start Timer"),
                       QKeySequence(Qt::CTRL | Qt::Key_T), u"btn_clock"_s),
            &QAction::triggered, this, &MainWindow::startTimer);
    connect(addCommand(u"pause:"_s, tr("&Pause"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P),
                       u"pause"_s),
            &QAction::triggered, this, &MainWindow::pause);
    connect(addCommand(u"resume:"_s, tr("&Resume"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R),
                       u"play"_s),
            &QAction::triggered, this, &MainWindow::resume);
    connect(addCommand(u"actionButtonClicked:"_s, tr("S&top"),
                       QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T), u"Stop"_s),
            &QAction::triggered, this, [this] { actionButtonClicked(m_list->currentIndex(), 2); });
    connect(addCommand(u"openAttachments:"_s, tr("&Attachments"),
                       QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), u"attachments"_s),
            &QAction::triggered, this, &MainWindow::openAttachments);
    connect(addCommand(u"openTagsEditor:"_s, tr("&Tags…"), {}), &QAction::triggered, m_tagEditor,
            &TagEditorPanel::openTagsEditor);
    connect(m_attachments, &AttachmentsPanel::attachmentsChanged, this, &MainWindow::updateDetails);
    QAction *details = addCommand(u"toggleDrawer:"_s, tr("&Details"),
                                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D), u"details"_s);
    details->setCheckable(true);
    connect(details, &QAction::triggered, this, &MainWindow::toggleDetails);
    connect(m_details, &QDockWidget::visibilityChanged, this, [this, details](bool visible) {
        details->setChecked(visible);
        if (visible)
            updateDetails();
        // The pane's own close button counts as much as the command; a minimised window does not.
        if (isVisible() && !isMinimized())
            m_services.preferences.setObject(visible, u"DrawerState");
    });
    QAction *customers = addCommand(u"toggleDropBox:"_s, tr("&Customers"),
                                    QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    customers->setCheckable(true);
    customers->setChecked(true);
    connect(customers, &QAction::triggered, m_customerBar, &CustomerSideBar::toggleDropBox);
    connect(m_customerBar, &CustomerSideBar::dropBoxHiddenChanged, customers,
            [customers](bool hidden) { customers->setChecked(!hidden); });
    QAction *quickFilters = addCommand(u"toggleQuickFilters:"_s, tr("&Quick Filters"), {});
    quickFilters->setCheckable(true);
    connect(quickFilters, &QAction::triggered, this, &MainWindow::toggleQuickFilters);
    connect(addCommand(u"runToolbarCustomizationPalette:"_s, tr("Customize &Toolbar…"), {}),
            &QAction::triggered, this, &MainWindow::customizeToolbar);
    QAction *preferences =
        addCommand(u"showPreferences:"_s, tr("Pre&ferences…"), QKeySequence::Preferences);
    if (preferences->shortcut().isEmpty())
        preferences->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    connect(preferences, &QAction::triggered, this, &MainWindow::showPreferences);
    connect(addCommand(u"orderFrontStandardAboutPanel:"_s, tr("&About Hourfold"), {}),
            &QAction::triggered, this, &MainWindow::showAbout);
    QAction *find = addCommand(u"performFindPanelAction:"_s, tr("&Find"), QKeySequence::Find);
    connect(find, &QAction::triggered, this, [this] {
        m_searchField->setFocus();
        m_searchField->selectAll();
    });
    addAction(find);

    QUndoStack *undo = m_services.collection.undoStack();
    QAction *undoAction = undo->createUndoAction(this, tr("&Undo"));
    undoAction->setShortcut(QKeySequence::Undo);
    undoAction->setObjectName(u"undo:"_s);
    m_commands.insert(u"undo:"_s, undoAction);
    QAction *redoAction = undo->createRedoAction(this, tr("&Redo"));
    redoAction->setShortcut(QKeySequence::Redo);
    redoAction->setObjectName(u"redo:"_s);
    m_commands.insert(u"redo:"_s, redoAction);
}

void MainWindow::createMenus() {
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(m_commands.value(u"newDatabase:"_s));
    file->addAction(m_commands.value(u"load:"_s));
    QMenu *recent = file->addMenu(tr("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, [this, recent] {
        recent->clear();
        const QStringList files =
            m_controller->recentDocuments().files(ProjectController::projectsMimeType(), 10);
        for (const QString &path : files) {
            connect(recent->addAction(Folders::withTilde(path)), &QAction::triggered, this,
                    [this, path] { m_controller->openFile(path); });
        }
        recent->addAction(tr("No Recent Files"))->setEnabled(false);
        recent->actions().constLast()->setVisible(files.isEmpty());
    });
    for (const char *action : {"", "save:", "saveAs:", "revert:", "", "terminate:"}) {
        if (*action)
            file->addAction(m_commands.value(QString::fromLatin1(action)));
        else
            file->addSeparator();
    }
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    for (const char *action : {"undo:", "redo:", "", "cut:", "copy:", "paste:", "delete:", "",
                               "performFindPanelAction:", "", "showPreferences:"}) {
        if (*action)
            edit->addAction(m_commands.value(QString::fromLatin1(action)));
        else
            edit->addSeparator();
    }
    QMenu *projects = menuBar()->addMenu(tr("&Project"));
    for (const char *action :
         {"newProject:", "newTimerEntry:", "newFlatFeeEntry:", "", "edit:", "delete:"}) {
        if (*action)
            projects->addAction(m_commands.value(QString::fromLatin1(action)));
        else
            projects->addSeparator();
    }
    QMenu *timer = menuBar()->addMenu(tr("&Timer"));
    for (const char *action : {"startTimerInProject:", "pause:", "resume:", "actionButtonClicked:"})
        timer->addAction(m_commands.value(QString::fromLatin1(action)));
    QMenu *view = menuBar()->addMenu(tr("&View"));
    view->addAction(m_commands.value(u"toggleDropBox:"_s));
    view->addAction(m_commands.value(u"toggleDrawer:"_s));
    view->addAction(m_commands.value(u"openAttachments:"_s));
    view->addAction(m_commands.value(u"openTagsEditor:"_s));
    view->addAction(m_commands.value(u"toggleQuickFilters:"_s));
    m_list->headerMenu()->setTitle(tr("&Columns"));
    view->addMenu(m_list->headerMenu());
    view->addSeparator();
    view->addAction(m_commands.value(u"runToolbarCustomizationPalette:"_s));
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(m_commands.value(u"orderFrontStandardAboutPanel:"_s));

    auto *entryMenu = new QMenu(this);
    auto *projectMenu = new QMenu(this);
    for (const char *action : {"edit:", "", "resume:", "pause:", "actionButtonClicked:", "",
                               "cut:", "copy:", "paste:", "", "delete:"}) {
        if (*action)
            entryMenu->addAction(m_commands.value(QString::fromLatin1(action)));
        else
            entryMenu->addSeparator();
    }
    for (const char *action :
         {"edit:", "newTimerEntry:", "newFlatFeeEntry:", "",
          "startTimerInProject:", "pause:", "resume:", "", "paste:", "", "delete:"}) {
        if (*action)
            projectMenu->addAction(m_commands.value(QString::fromLatin1(action)));
        else
            projectMenu->addSeparator();
    }
    auto *defaultMenu = new QMenu(this);
    defaultMenu->addAction(m_commands.value(u"newProject:"_s));
    defaultMenu->addAction(m_commands.value(u"paste:"_s));
    m_list->setEntryMenu(entryMenu);
    m_list->setProjectMenu(projectMenu);
    m_list->setDefaultMenu(defaultMenu);
    for (QMenu *menu : {file, edit, projects, timer, view, entryMenu, projectMenu, defaultMenu})
        connect(menu, &QMenu::aboutToShow, this, &MainWindow::updateCommandStates);
}

void MainWindow::createFilterControls() {
    m_filterPopUp->setObjectName(u"FilterPopUp"_s);
    m_filterPopUp->setToolTip(tr("Saved filter"));
    m_filterPopUp->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_filterPopUp->setMinimumContentsLength(12);
    connect(m_filterPopUp, &QComboBox::activated, this, [this](int index) {
        m_filters->filterAction(m_filterPopUp->itemData(index).toInt());
        fillFilterPopUp();
    });
    m_searchField->setObjectName(u"SearchField"_s);
    m_searchField->setPlaceholderText(tr("Search"));
    m_searchField->setClearButtonEnabled(true);
    m_searchField->setMinimumWidth(180);
    m_searchField->setMaximumWidth(260);
    connect(m_searchField, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_services.collection.setSearchText(text); });
    connect(m_quickFilterBar, &QuickFilterBar::selectionChanged, this,
            [this](const QString &identifier) {
                m_quickFilters->choose(identifier, m_controller->isStartingUp(), *m_filters, *this,
                                       m_services.preferences);
                fillFilterPopUp();
            });
}

void MainWindow::fillFilterPopUp() {
    m_filterPopUp->clear();
    for (const FilterController::MenuItem &item : m_filters->menuItems()) {
        // The pop-up chooses among the saved filters; editing them is not offered here.
        if (item.tag == FilterController::EditFiltersTag)
            continue;
        if (item.tag == FilterController::SeparatorTag) {
            if (m_filterPopUp->count() > 0 && m_filters->filters().size() > 0)
                m_filterPopUp->insertSeparator(m_filterPopUp->count());
            continue;
        }
        m_filterPopUp->addItem(item.title, item.tag);
    }
    m_filterPopUp->setCurrentIndex(qMax(0, m_filterPopUp->findData(m_filters->selectedTag())));
}

void MainWindow::setCurrentFilter(const Filter::Pointer &filter) {
    m_services.collection.setCurrentFilter(filter);
}

void MainWindow::disableQuickFilters() {
    m_quickFilterBar->setSelected(u"off"_s);
    m_services.preferences.setObject(u"off"_s, u"quickfilter");
}

void MainWindow::createToolbar() {
    m_toolbar->setObjectName(u"mainToolbar"_s);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_toolbar->setIconSize(QSize(24, 24));
    m_toolbar->setMovable(false);
    m_toolbar->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_toolbar->addAction(m_commands.value(u"runToolbarCustomizationPalette:"_s));
    addToolBar(Qt::TopToolBarArea, m_toolbar);
}

void MainWindow::setupToolbar() {
    Preferences &preferences = m_services.preferences;
    const QVariant stored = preferences.objectForKey(toolbarKey);
    const QStringList saved =
        stored.isValid() ? stored.toStringList() : ToolbarItems::defaultItemIdentifiers();
    const QStringList migrated =
        ToolbarItems::migrate(saved, preferences.stringForKey(u"lastVersion"));
    if (migrated != saved || !stored.isValid())
        preferences.setObject(migrated, toolbarKey);
    setToolbarItems(ToolbarItems::validated(migrated));
}

void MainWindow::setToolbarItems(const QStringList &identifiers) {
    // The saved arrangement keeps items this window has no command for; only the shown ones
    // change.
    m_toolbarItems.clear();
    for (QAction *action : m_toolbar->actions()) {
        if (action != m_commands.value(u"runToolbarCustomizationPalette:"_s))
            m_toolbar->removeAction(action);
    }
    const QStringList available = availableToolbarItems();
    bool lastWasSeparator = true;
    for (const QString &identifier : identifiers) {
        if (identifier == ToolbarItems::separator) {
            if (!lastWasSeparator)
                m_toolbar->addSeparator();
            lastWasSeparator = true;
            m_toolbarItems << identifier;
            continue;
        }
        if (identifier == ToolbarItems::space || identifier == ToolbarItems::flexibleSpace) {
            auto *spacer = new QWidget(m_toolbar);
            if (identifier == ToolbarItems::space)
                spacer->setFixedWidth(24);
            else
                spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
            m_toolbar->addWidget(spacer);
            m_toolbarItems << identifier;
            lastWasSeparator = false;
            continue;
        }
        if (!available.contains(identifier))
            continue;
        const ToolbarItems::Item *item = ToolbarItems::item(identifier);
        if (identifier == u"Filters") {
            m_toolbar->addWidget(m_filterPopUp)->setText(item->label);
        } else if (identifier == u"Search") {
            m_toolbar->addWidget(m_searchField)->setText(item->label);
        } else {
            QAction *command = m_commands.value(item->action);
            command->setIconText(item->label);
            m_toolbar->addAction(command);
        }
        m_toolbarItems << identifier;
        lastWasSeparator = false;
    }
    // The customise command stays reachable from the toolbar's own context menu only.
    m_toolbar->actions().constFirst()->setVisible(false);
}

void MainWindow::customizeToolbar() {
    const QStringList saved = m_services.preferences.objectForKey(toolbarKey).toStringList();
    ToolbarCustomizeDialog dialog(availableToolbarItems(), m_toolbarItems, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QStringList result = dialog.items();
    // Items saved by a version that shows them, but not shown here, keep their place.
    const QStringList available = availableToolbarItems();
    for (qsizetype i = 0; i < saved.size(); ++i) {
        const QString &identifier = saved[i];
        if (ToolbarItems::item(identifier) && !available.contains(identifier) &&
            !result.contains(identifier))
            result.insert(qMin(i, result.size()), identifier);
    }
    m_services.preferences.setObject(result, toolbarKey);
    setToolbarItems(result);
}

void MainWindow::createStatusLine() {
    m_saveWarning->setObjectName(u"SaveWarning"_s);
    m_saveWarning->setVisible(false);
    m_saveWarning->setWordWrap(false);
    m_saveWarning->setStyleSheet(u"QLabel { color: palette(bright-text); background: #b3261e; "
                                 "padding: 2px 6px; border-radius: 3px; }"_s);
    m_statusInfo->setObjectName(u"StatusInfo"_s);
    statusBar()->addWidget(m_saveWarning, 1);
    statusBar()->addPermanentWidget(m_statusInfo);
}

void MainWindow::restoreWindowState() {
    Preferences &preferences = m_services.preferences;
    if (!restoreGeometry(preferences.objectForKey(u"MainWindowGeometry").toByteArray())) {
        const QRect screen = this->screen()->availableGeometry();
        resize(qMin(1100, screen.width() * 9 / 10), qMin(720, screen.height() * 9 / 10));
        move(screen.center() - rect().center());
    }
    resizeDocks({m_details}, {int(preferences.floatForKey(u"drawerWidth"))}, Qt::Horizontal);
}

void MainWindow::startUp(bool reopenLastFile) {
    m_controller->setStartingUp(true);
    setupToolbar();
    m_customerBar->restoreDropBoxState();
    m_controller->startUp(reopenLastFile);
    m_list->restoreExpansion();
    loadQuickFilters();
    m_controller->setStartingUp(false);
    updateCommandStates();
}

void MainWindow::loadQuickFilters() {
    Preferences &preferences = m_services.preferences;
    m_quickFilters->load(m_services.quickFiltersPath);
    m_filters->awake();
    const QString chosen = preferences.stringForKey(u"quickfilter");
    const QString identifier = chosen.isEmpty() ? u"off"_s : chosen;
    m_quickFilterBar->setSelected(identifier);
    m_quickFilters->choose(identifier, true, *m_filters, *this, preferences);
    fillFilterPopUp();
    m_quickFilterBar->setVisible(!preferences.boolForKey(u"isQuickFiltersHidden"));
    m_commands.value(u"toggleQuickFilters:"_s)->setChecked(m_quickFilterBar->isVisible());
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

void MainWindow::updateStatusInfo() {
    m_statusInfo->setText(m_services.collection.statusBarInfo().replace(u'\t', u"    "_s));
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
    for (auto it = m_commands.cbegin(); it != m_commands.cend(); ++it) {
        if (it.key() == u"undo:" || it.key() == u"redo:")
            continue;
        it.value()->setEnabled(CommandValidation::validateMenuItem(it.key(), selected, document));
    }
    m_commands.value(u"cut:"_s)->setEnabled(m_list->canCut());
    m_commands.value(u"copy:"_s)->setEnabled(m_list->canCopy());
    m_commands.value(u"paste:"_s)->setEnabled(m_list->canPaste());
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
    updateDetails();
}

void MainWindow::resume() {
    const QModelIndex current = m_list->currentIndex();
    m_timerCommands.resume(m_model->projectAt(current), m_model->itemAt(current));
    updateDetails();
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
    updateDetails();
}

void MainWindow::toggleDetails() {
    m_details->setVisible(!m_details->isVisible());
}

void MainWindow::toggleQuickFilters() {
    const bool hide = m_quickFilterBar->isVisible();
    m_quickFilterBar->setVisible(!hide);
    m_services.preferences.setObject(hide, u"isQuickFiltersHidden");
    m_commands.value(u"toggleQuickFilters:"_s)->setChecked(!hide);
}

void MainWindow::showPreferences() {
    if (!m_preferencesWindow) {
        m_preferencesWindow = new PreferencesWindow(m_services.preferences, m_services.collection,
                                                    m_services.currency, this);
        // Centred over the main window the first time; later where the user left it.
        m_preferencesWindow->adjustSize();
        m_preferencesWindow->move(frameGeometry().center() - m_preferencesWindow->rect().center());
    }
    m_preferencesWindow->show();
    m_preferencesWindow->raise();
    m_preferencesWindow->activateWindow();
}

void MainWindow::showAbout() {
    QMessageBox::about(this, tr("About Hourfold"),
                       tr("<h3>Hourfold %1</h3><p>Time tracking for freelancers.</p>")
                           .arg(QApplication::applicationVersion()));
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
    Preferences &preferences = m_services.preferences;
    preferences.setObject(float(m_details->width()), u"drawerWidth");
    preferences.setObject(float(m_details->height()), u"drawerHeight");
    preferences.setObject(saveGeometry(), u"MainWindowGeometry");
    preferences.synchronize();
    emit terminated();
}

void MainWindow::openFiles(const QStringList &files) {
    show();
    raise();
    activateWindow();
    for (const QString &file : files)
        m_controller->openFile(file);
}

void MainWindow::closeEvent(QCloseEvent *event) {
    if (m_terminated) {
        event->accept();
        return;
    }
    // Without a place in the panel to come back from, closing the window is quitting.
    event->ignore();
    quit();
}

void MainWindow::changeEvent(QEvent *event) {
    if (event->type() == QEvent::PaletteChange)
        m_list->viewport()->update();
    QMainWindow::changeEvent(event);
}
