#include "editors/EntrySheet.h"

#include "TimeControlWidget.h"
#include "common/TagCompleter.h"
#include "editors/PauseEditorView.h"
#include "platform/Folders.h"

#include <QButtonGroup>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QDateEdit *datePicker(const QString &name) {
    auto *picker = new QDateEdit;
    picker->setObjectName(name);
    picker->setCalendarPopup(true);
    picker->setDisplayFormat(QLocale().dateFormat(QLocale::ShortFormat));
    return picker;
}

TimeControlWidget *timeControl(WBTimeControl &control, const QString &name) {
    auto *widget = new TimeControlWidget(control);
    widget->setObjectName(name);
    return widget;
}

void showDate(QDateEdit *picker, QDate date, bool enabled) {
    const QSignalBlocker blocker(picker);
    picker->setDate(date);
    picker->setEnabled(enabled);
}

} // namespace

EntrySheet::EntrySheet(ProjectCollection &collection, Preferences &preferences, UserAlerts &alerts,
                       TagStorage *tags, QWidget *parent)
    : QDialog(parent)
    , m_logic(collection, preferences, alerts)
    , m_durationMode(new QRadioButton(tr("Day and duration")))
    , m_periodMode(new QRadioButton(tr("Period")))
    , m_modes(new QButtonGroup(this))
    , m_dayDate(datePicker(QStringLiteral("dayDatePicker")))
    , m_timeCtrl(timeControl(m_logic.timeCtrl(), QStringLiteral("timeTimeCtrl")))
    , m_fromDate(datePicker(QStringLiteral("fromDatePicker")))
    , m_fromTimeCtrl(timeControl(m_logic.fromTimeCtrl(), QStringLiteral("fromTimeCtrl")))
    , m_toDate(datePicker(QStringLiteral("toDatePicker")))
    , m_toTimeCtrl(timeControl(m_logic.toTimeCtrl(), QStringLiteral("toTimeCtrl")))
    , m_startButton(new QPushButton(tr("Start")))
    , m_stopButton(new QPushButton(tr("Stop")))
    , m_pauseCaption(new QLabel(tr("Pause:")))
    , m_pauseLabel(new QLabel)
    , m_totalCaption(new QLabel(tr("Total:")))
    , m_totalLabel(new QLabel)
    , m_comment(new QPlainTextEdit)
    , m_tags(new QLineEdit)
    , m_pauseToggle(new QToolButton)
    , m_conflictMarker(new QLabel)
    , m_pauseView(new PauseEditorView(m_logic.pauseEditor(), alerts))
    , m_acceptButton(new QPushButton) {
    setWindowModality(Qt::WindowModal);
    setSizeGripEnabled(false);
    m_durationMode->setObjectName(QStringLiteral("durationModeButton"));
    m_periodMode->setObjectName(QStringLiteral("periodModeButton"));
    m_modes->addButton(m_durationMode, EntrySheetLogic::DurationMode);
    m_modes->addButton(m_periodMode, EntrySheetLogic::PeriodMode);
    m_startButton->setObjectName(QStringLiteral("startButton"));
    m_stopButton->setObjectName(QStringLiteral("stopButton"));
    for (QPushButton *button : {m_startButton, m_stopButton})
        button->setAutoDefault(false);
    m_pauseLabel->setObjectName(QStringLiteral("pauseTimeTextField"));
    m_totalLabel->setObjectName(QStringLiteral("totalEntryTimeTextField"));
    for (QLabel *label : {m_pauseLabel, m_totalLabel}) {
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("0000:00")));
    }
    m_comment->setObjectName(QStringLiteral("commentTextBox"));
    m_comment->setTabChangesFocus(true);
    m_comment->setFixedHeight(m_comment->fontMetrics().lineSpacing() * 4 +
                              2 * m_comment->frameWidth() + 8);
    m_tags->setObjectName(QStringLiteral("timerTokenField"));
    if (tags)
        new TagCompleter(m_tags, *tags, TagStorage::Panel::Timer);
    m_tags->setPlaceholderText(tr("Tags, separated by commas"));
    m_pauseToggle->setObjectName(QStringLiteral("timerPauseEditorButton"));
    m_pauseToggle->setText(tr("Pauses"));
    m_pauseToggle->setCheckable(true);
    m_pauseToggle->setAutoRaise(true);
    m_pauseToggle->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_conflictMarker->setObjectName(QStringLiteral("conflictImageView"));
    m_conflictMarker->setPixmap(
        QIcon(Folders::imagePath(QStringLiteral("conflict"))).pixmap(QSize(16, 16)));
    m_conflictMarker->setToolTip(tr("Some pauses overlap."));
    m_pauseView->setObjectName(QStringLiteral("pauseEditor"));
    m_acceptButton->setObjectName(QStringLiteral("entryAcceptButton"));

    buildLayout();
    // Only a button inside the dialog can be its default one.
    m_acceptButton->setDefault(true);
    connectControls();
    sync();
}

EntrySheet::~EntrySheet() {
    // The controls show objects of the logic, which goes before the dialog's children would.
    qDeleteAll(findChildren<QWidget *>(Qt::FindDirectChildrenOnly));
}

void EntrySheet::buildLayout() {
    auto *times = new QGridLayout;
    times->setHorizontalSpacing(8);
    const int indent = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                       style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    times->setColumnMinimumWidth(0, indent);
    times->addWidget(m_durationMode, 0, 0, 1, 5);
    auto *dayCaption = new QLabel(tr("Day:"));
    dayCaption->setBuddy(m_dayDate);
    times->addWidget(dayCaption, 1, 1);
    times->addWidget(m_dayDate, 1, 2);
    const int spacing = style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
    const int gap = spacing > 0 ? spacing : 6;
    auto *duration = new QHBoxLayout;
    duration->setSpacing(gap);
    auto *durationCaption = new QLabel(tr("Duration:"));
    durationCaption->setBuddy(m_timeCtrl);
    duration->addWidget(durationCaption);
    duration->addWidget(m_timeCtrl);
    duration->addStretch();
    times->addLayout(duration, 1, 3, 1, 2);
    times->setRowMinimumHeight(2, 6);

    times->addWidget(m_periodMode, 3, 0, 1, 5);
    auto *fromCaption = new QLabel(tr("From:"));
    fromCaption->setBuddy(m_fromDate);
    times->addWidget(fromCaption, 4, 1);
    times->addWidget(m_fromDate, 4, 2);
    times->addWidget(m_fromTimeCtrl, 4, 3);
    auto *toCaption = new QLabel(tr("To:"));
    toCaption->setBuddy(m_toDate);
    times->addWidget(toCaption, 5, 1);
    times->addWidget(m_toDate, 5, 2);
    times->addWidget(m_toTimeCtrl, 5, 3);
    auto *timer = new QHBoxLayout;
    timer->setSpacing(gap);
    timer->addWidget(m_startButton);
    timer->addWidget(m_stopButton);
    times->addLayout(timer, 4, 4, 2, 1, Qt::AlignLeft | Qt::AlignVCenter);
    auto *totals = new QHBoxLayout;
    totals->setSpacing(gap);
    totals->addWidget(m_pauseCaption);
    totals->addWidget(m_pauseLabel);
    totals->addSpacing(16);
    totals->addWidget(m_totalCaption);
    totals->addWidget(m_totalLabel);
    totals->addStretch();
    times->addLayout(totals, 6, 1, 1, 4);
    times->setColumnStretch(4, 1);

    auto *texts = new QFormLayout;
    texts->addRow(tr("Comment:"), m_comment);
    texts->addRow(tr("Tags:"), m_tags);

    auto *pauseBar = new QHBoxLayout;
    pauseBar->setSpacing(gap);
    pauseBar->addWidget(m_pauseToggle);
    pauseBar->addWidget(m_conflictMarker);
    pauseBar->addStretch();

    auto *buttons = new QDialogButtonBox;
    buttons->addButton(QDialogButtonBox::Cancel);
    buttons->addButton(m_acceptButton, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &EntrySheet::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &EntrySheet::reject);

    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addLayout(times);
    layout->addSpacing(6);
    layout->addLayout(texts);
    layout->addLayout(pauseBar);
    layout->addWidget(m_pauseView);
    layout->addWidget(buttons);
}

void EntrySheet::connectControls() {
    connect(&m_logic, &EntrySheetLogic::changed, this, &EntrySheet::sync);
    connect(&m_logic, &EntrySheetLogic::pausesChanged, m_pauseView, &PauseEditorView::refresh);
    connect(&m_logic, &EntrySheetLogic::entryAdded, this, &EntrySheet::entryAdded);
    connect(&m_logic, &EntrySheetLogic::entryEdited, this, &EntrySheet::entryEdited);
    connect(m_modes, &QButtonGroup::idClicked, this,
            [this](int id) { m_logic.selectMode(EntrySheetLogic::Mode(id)); });
    connect(m_dayDate, &QDateEdit::dateChanged, &m_logic, &EntrySheetLogic::changedPeriodDate);
    connect(m_fromDate, &QDateEdit::dateChanged, &m_logic, &EntrySheetLogic::changedPeriodFromDate);
    connect(m_toDate, &QDateEdit::dateChanged, &m_logic, &EntrySheetLogic::changedPeriodToDate);
    connect(m_startButton, &QPushButton::clicked, &m_logic, &EntrySheetLogic::pressedStart);
    connect(m_stopButton, &QPushButton::clicked, &m_logic, &EntrySheetLogic::pressedStop);
    connect(m_comment, &QPlainTextEdit::textChanged, this,
            [this] { m_logic.setComment(m_comment->toPlainText()); });
    connect(m_tags, &QLineEdit::textChanged, &m_logic, &EntrySheetLogic::setTags);
    connect(m_pauseToggle, &QToolButton::toggled, &m_logic, &EntrySheetLogic::setPauseEditorShown);
}

void EntrySheet::sync() {
    setWindowTitle(m_logic.title());
    m_acceptButton->setText(m_logic.acceptButtonTitle());
    (m_logic.mode() == EntrySheetLogic::PeriodMode ? m_periodMode : m_durationMode)
        ->setChecked(true);
    const EntrySheetLogic::Controls &controls = m_logic.controls();
    showDate(m_dayDate, m_logic.dayDate(), controls.dayEnabled);
    showDate(m_fromDate, m_logic.fromDate(), controls.fromDateEnabled);
    showDate(m_toDate, m_logic.toDate(), controls.toDateEnabled);
    m_startButton->setVisible(controls.startVisible);
    m_startButton->setEnabled(controls.startEnabled);
    m_stopButton->setVisible(controls.stopVisible);
    m_stopButton->setEnabled(controls.stopEnabled);
    m_pauseLabel->setText(m_logic.pauseLabel());
    m_totalLabel->setText(m_logic.totalLabel());
    for (QLabel *label : {m_pauseCaption, m_pauseLabel, m_totalCaption, m_totalLabel})
        label->setEnabled(controls.labelsEnabled);
    {
        const QSignalBlocker blocker(m_pauseToggle);
        m_pauseToggle->setEnabled(controls.pauseEditorToggleEnabled);
        m_pauseToggle->setChecked(m_logic.isPauseEditorShown());
    }
    m_pauseToggle->setArrowType(m_logic.isPauseEditorShown() ? Qt::DownArrow : Qt::RightArrow);
    m_pauseView->setVisible(m_logic.isPauseEditorShown());
    m_conflictMarker->setVisible(m_logic.isConflictMarkerShown());
}

void EntrySheet::loadTexts() {
    const QSignalBlocker commentBlocker(m_comment);
    m_comment->setPlainText(m_logic.comment());
    const QSignalBlocker tagsBlocker(m_tags);
    m_tags->setText(m_logic.tags());
    m_pauseView->refresh();
}

void EntrySheet::focusFirstField() {
    (m_logic.mode() == EntrySheetLogic::PeriodMode ? m_fromTimeCtrl : m_timeCtrl)->setFocus();
}

void EntrySheet::newEntry(const std::shared_ptr<Project> &project,
                          const std::shared_ptr<ProjectItem> &selectedItem) {
    m_logic.newTimerEntry(project, selectedItem);
    loadTexts();
    focusFirstField();
    open();
}

void EntrySheet::editEntry(const std::shared_ptr<Entry> &entry) {
    m_logic.edit(entry);
    loadTexts();
    focusFirstField();
    open();
}

void EntrySheet::stopEntry(const std::shared_ptr<Entry> &entry) {
    editEntry(entry);
    m_logic.pressedStop();
}

void EntrySheet::accept() {
    const bool valid = m_pauseView->isEditedDateValid();
    if (valid)
        m_pauseView->endEditing();
    // A value still being typed into a time control counts as typed.
    for (TimeControlWidget *control : {m_timeCtrl, m_fromTimeCtrl, m_toTimeCtrl}) {
        if (control->control().isEditing())
            control->control().acceptNewValueInSelectedCell();
    }
    if (!m_logic.doneCreateEntry(valid))
        return;
    hide();
    m_logic.newEntrySheetDidEnd();
    QDialog::accept();
}

void EntrySheet::reject() {
    m_logic.cancelCreateEntry();
    QDialog::reject();
}
