#include "preferences/PreferencesWindow.h"

#include "TimeControlWidget.h"
#include "WBTimeControl.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Preferences.h"
#include "preferences/PreferencesForm.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// Sub-settings sit indented under the check box that switches them on.
constexpr int indent = 22;

QLabel *fieldLabel(const QString &text, QWidget *field) {
    auto *label = new QLabel(text);
    label->setBuddy(field);
    return label;
}

} // namespace

PreferencesWindow::PreferencesWindow(Preferences &preferences, ProjectCollection &collection,
                                     const CurrencyFormatter &currency, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_preferences(preferences)
    , m_collection(collection)
    , m_pages(new QTabWidget(this)) {
    setWindowTitle(tr("Preferences"));
    m_pages->addTab(generalPage(currency), tr("General"));
    m_pages->addTab(displayPage(), tr("Display"));
    m_pages->addTab(remindersPage(), tr("Reminders"));

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    auto *close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    connect(&m_preferences, &Preferences::valueChanged, this, [this](const QString &key) {
        load(key);
        updateEnabled();
    });
    loadAll();
}

void PreferencesWindow::showEvent(QShowEvent *event) {
    loadAll();
    QWidget::showEvent(event);
}

void PreferencesWindow::changeEvent(QEvent *event) {
    // The colour swatches are drawn with the palette's frame colour.
    if (event->type() == QEvent::PaletteChange) {
        load(u"projectColor"_s);
        load(u"unfinishedEntryColor"_s);
    }
    QWidget::changeEvent(event);
}

QWidget *PreferencesWindow::generalPage(const CurrencyFormatter &currency) {
    auto *page = new QWidget;
    page->setObjectName(u"GeneralTab"_s);
    auto *layout = new QVBoxLayout(page);

    auto *documents = new QGroupBox(tr("Documents"));
    auto *documentsLayout = new QVBoxLayout(documents);
    documentsLayout->addWidget(checkBox(u"loadLastOpenFile"_s, tr("Open the last file at start")));
    documentsLayout->addWidget(
        checkBox(u"crashProtection"_s, tr("Save the file after every change")));
    documentsLayout->addWidget(
        checkBox(u"saveOnExit"_s, tr("Save changes without asking when quitting")));
    documentsLayout->addWidget(checkBox(u"showInfo"_s, tr("Show the welcome message at start")));
    layout->addWidget(documents);

    auto *newItems = new QGroupBox(tr("New entries and projects"));
    auto *form = new QFormLayout(newItems);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    auto *modes = new QHBoxLayout;
    // 0 a day and a duration, 1 a period from and to.
    addRadioRows(
        modes, u"defaultEntryMode"_s, {tr("Day and duration"), tr("From and to")},
        [](int row) { return row; }, [](int value) { return value == 1 ? 1 : 0; });
    modes->addStretch();
    form->addRow(tr("New entries start with:"), modes);

    // The proposed duration is kept as a clock time, edited in the program's time control.
    auto *clock = new WBTimeControl(this);
    auto *time = new TimeControlWidget(*clock);
    time->setObjectName(u"defaultTime"_s);
    connect(clock, &WBTimeControl::dateChanged, this, [this, clock] {
        m_preferences.setObject(QTime(clock->hour(), clock->minute()), u"defaultTime");
    });
    m_loaders.insert(u"defaultTime"_s, [this, clock, time] {
        const QSignalBlocker blocker(clock);
        const QTime value = m_preferences.timeForKey(u"defaultTime");
        clock->setHour(value.isValid() ? value.hour() : 0);
        clock->setMinute(value.isValid() ? value.minute() : 0);
        time->update();
    });
    m_controls.insert(u"defaultTime"_s, {time});
    form->addRow(fieldLabel(tr("Proposed duration:"), time), time);

    auto *wage = new QDoubleSpinBox;
    wage->setObjectName(u"hourlyWage"_s);
    wage->setRange(0, 999999.99);
    wage->setDecimals(2);
    wage->setKeyboardTracking(false);
    wage->setAlignment(Qt::AlignRight);
    connect(wage, &QDoubleSpinBox::valueChanged, this,
            [this](double value) { m_preferences.setObject(float(value), u"hourlyWage"); });
    m_loaders.insert(u"hourlyWage"_s, [this, wage] {
        const QSignalBlocker blocker(wage);
        wage->setValue(m_preferences.floatForKey(u"hourlyWage"));
    });
    m_controls.insert(u"hourlyWage"_s, {wage});
    auto *wageRow = new QHBoxLayout;
    wageRow->addWidget(wage);
    auto *symbol = new QLabel(QLocale(currency.localeName()).currencySymbol());
    symbol->setObjectName(u"currencySymbol"_s);
    wageRow->addWidget(symbol);
    wageRow->addStretch();
    form->addRow(fieldLabel(tr("Hourly wage of new projects:"), wage), wageRow);
    layout->addWidget(newItems);

    auto *other = new QGroupBox(tr("Calendar and remote control"));
    auto *otherForm = new QFormLayout(other);
    otherForm->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    auto *firstDay = new QComboBox;
    firstDay->setObjectName(u"firstDayOfWeek"_s);
    // 0 is Sunday, as the week ranges count.
    for (int day = 0; day < 7; ++day)
        firstDay->addItem(QLocale().dayName(day == 0 ? 7 : day));
    connect(firstDay, &QComboBox::currentIndexChanged, this,
            [this](int day) { m_preferences.setObject(day, u"firstDayOfWeek"); });
    m_loaders.insert(u"firstDayOfWeek"_s, [this, firstDay] {
        const QSignalBlocker blocker(firstDay);
        firstDay->setCurrentIndex(qBound(0, m_preferences.integerForKey(u"firstDayOfWeek"), 6));
    });
    m_controls.insert(u"firstDayOfWeek"_s, {firstDay});
    otherForm->addRow(fieldLabel(tr("Weeks start on:"), firstDay), firstDay);
    otherForm->addRow(checkBox(u"useRemote"_s, tr("Listen to the remote control and media keys")));
    m_remoteNotice = new QLabel;
    m_remoteNotice->setObjectName(u"remoteNotice"_s);
    m_remoteNotice->setWordWrap(true);
    m_remoteNotice->setMaximumWidth(380);
    m_remoteNotice->setContentsMargins(indent, 0, 0, 0);
    m_remoteNotice->hide();
    otherForm->addRow(m_remoteNotice);
    layout->addWidget(other);
    layout->addStretch();
    return page;
}

QWidget *PreferencesWindow::displayPage() {
    auto *page = new QWidget;
    page->setObjectName(u"DisplayTab"_s);
    auto *layout = new QVBoxLayout(page);

    auto *dates = new QGroupBox(tr("Dates in the list"));
    auto *datesLayout = new QVBoxLayout(dates);
    addRadioRows(datesLayout, u"listDateFormat"_s, PreferencesForm::dateFormatTitles(),
                 &PreferencesForm::dateFormatOfRow, &PreferencesForm::rowOfDateFormat);
    layout->addWidget(dates);

    auto *rows = new QGroupBox(tr("Rows"));
    auto *rowsLayout = new QGridLayout(rows);
    rowsLayout->addWidget(checkBox(u"useProjectColor"_s, tr("Tint project rows")), 0, 0);
    rowsLayout->addWidget(colorButton(u"projectColor"_s), 0, 1);
    rowsLayout->addWidget(checkBox(u"useUnfinishedEntryColor"_s, tr("Tint unfinished entries")), 1,
                          0);
    rowsLayout->addWidget(colorButton(u"unfinishedEntryColor"_s), 1, 1);
    rowsLayout->addWidget(checkBox(u"useAlternateBackground"_s, tr("Alternate row backgrounds")), 2,
                          0, 1, 3);
    rowsLayout->addWidget(checkBox(u"useGridLines"_s, tr("Draw grid lines")), 3, 0, 1, 3);
    // The document stores the preference itself when it changes what it shows.
    rowsLayout->addWidget(checkBox(u"hideFadedProjects"_s, tr("Hide projects of hidden customers"),
                                   [this](bool hide) { m_collection.setHideFadedProjects(hide); }),
                          4, 0, 1, 3);
    rowsLayout->setColumnStretch(2, 1);
    layout->addWidget(rows);

    auto *columns = new QGroupBox(tr("Columns"));
    auto *columnsLayout = new QHBoxLayout(columns);
    columnsLayout->addWidget(checkBox(u"showDescriptionColumn"_s, tr("Description")));
    columnsLayout->addWidget(checkBox(u"showStateColumn"_s, tr("State")));
    columnsLayout->addWidget(checkBox(u"showActionColumn"_s, tr("Action")));
    columnsLayout->addWidget(checkBox(u"showDurationColumn"_s, tr("Duration")));
    columnsLayout->addStretch();
    layout->addWidget(columns);

    auto *desktop = new QGroupBox(tr("Desktop"));
    auto *desktopLayout = new QVBoxLayout(desktop);
    desktopLayout->addWidget(checkBox(
        u"showDockBadge"_s, tr("Show the number of running timers on the program's icon")));
    desktopLayout->addWidget(
        checkBox(u"showStatusMenuItem"_s, tr("Show the status icon in the panel")));
    layout->addWidget(desktop);
    layout->addStretch();
    return page;
}

QWidget *PreferencesWindow::remindersPage() {
    auto *page = new QWidget;
    page->setObjectName(u"ReminderTab"_s);
    auto *layout = new QVBoxLayout(page);
    auto *reminders = new QGroupBox(tr("Timers"));
    auto *remindersLayout = new QVBoxLayout(reminders);
    remindersLayout->addWidget(checkBox(u"useReminders"_s, tr("Remind me of my timers")));

    auto *intervals = new QGridLayout;
    intervals->setContentsMargins(indent, 0, 0, 0);
    const auto intervalRow = [this, intervals](int row, const QString &useKey,
                                               const QString &intervalKey, const QString &text) {
        intervals->addWidget(checkBox(useKey, text), row, 0);
        intervals->addWidget(intervalSpinBox(intervalKey), row, 1);
        auto *unit = new QLabel(tr("minutes"));
        m_controls[intervalKey].append(unit);
        intervals->addWidget(unit, row, 2);
    };
    intervalRow(0, u"useRunningReminder"_s, u"runningReminderInterval"_s,
                tr("Of running timers every"));
    intervalRow(1, u"usePauseReminder"_s, u"pausedReminderInterval"_s,
                tr("Of paused timers every"));
    intervals->setColumnStretch(3, 1);
    remindersLayout->addLayout(intervals);

    auto *kinds = new QVBoxLayout;
    kinds->setContentsMargins(indent, 8, 0, 0);
    auto *kindsLabel = new QLabel(tr("Show reminders as:"));
    m_controls[u"reminderType"_s].append(kindsLabel);
    kinds->addWidget(kindsLabel);
    auto *kindRows = new QVBoxLayout;
    kindRows->setContentsMargins(indent, 0, 0, 0);
    addRadioRows(
        kindRows, u"reminderType"_s, {tr("A reminder window"), tr("A desktop notification")},
        [](int row) { return row; }, [](int value) { return value == 0 ? 0 : 1; });
    kinds->addLayout(kindRows);
    remindersLayout->addLayout(kinds);
    layout->addWidget(reminders);

    auto *away = new QGroupBox(tr("Time away"));
    auto *awayLayout = new QHBoxLayout(away);
    auto *idle = static_cast<QSpinBox *>(intervalSpinBox(u"idleMinutes"_s, 0));
    idle->setSpecialValueText(tr("never"));
    idle->setAccessibleName(tr("Ask about time away after idle minutes"));
    awayLayout->addWidget(fieldLabel(tr("Ask about time away after"), idle));
    awayLayout->addWidget(idle);
    awayLayout->addWidget(new QLabel(tr("idle minutes")));
    awayLayout->addStretch();
    layout->addWidget(away);
    layout->addStretch();
    return page;
}

void PreferencesWindow::setRemoteNotice(const QString &notice) {
    m_remoteNotice->setText(notice);
    m_remoteNotice->setVisible(!notice.isEmpty());
}

QCheckBox *PreferencesWindow::checkBox(const QString &key, const QString &text,
                                       std::function<void(bool)> write) {
    auto *box = new QCheckBox(text);
    box->setObjectName(key);
    if (!write)
        write = [this, key](bool checked) { m_preferences.setObject(checked, key); };
    connect(box, &QAbstractButton::toggled, this, write);
    m_loaders.insert(key, [this, box, key] {
        const QSignalBlocker blocker(box);
        box->setChecked(m_preferences.boolForKey(key));
    });
    m_controls.insert(key, {box});
    return box;
}

void PreferencesWindow::addRadioRows(QBoxLayout *layout, const QString &key,
                                     const QStringList &titles, std::function<int(int)> valueOfRow,
                                     std::function<int(int)> rowOfValue) {
    auto *group = new QButtonGroup(this);
    group->setObjectName(key);
    QList<QWidget *> buttons;
    for (int row = 0; row < titles.size(); ++row) {
        auto *button = new QRadioButton(titles[row]);
        button->setObjectName(key + QString::number(row));
        group->addButton(button, row);
        layout->addWidget(button);
        buttons << button;
    }
    connect(group, &QButtonGroup::idToggled, this, [this, key, valueOfRow](int row, bool checked) {
        if (checked)
            m_preferences.setObject(valueOfRow(row), key);
    });
    m_loaders.insert(key, [this, group, key, rowOfValue] {
        const QSignalBlocker blocker(group);
        QAbstractButton *button = group->button(rowOfValue(m_preferences.integerForKey(key)));
        const QSignalBlocker buttonBlocker(button);
        button->setChecked(true);
    });
    m_controls[key].append(buttons);
}

QWidget *PreferencesWindow::colorButton(const QString &key) {
    auto *button = new QPushButton;
    button->setObjectName(key);
    button->setToolTip(tr("Choose the colour"));
    button->setIconSize(QSize(28, 14));
    connect(button, &QPushButton::clicked, this, [this, key] { chooseColor(key); });
    m_loaders.insert(key, [this, button, key] {
        QPixmap swatch(button->iconSize() * button->devicePixelRatioF());
        swatch.setDevicePixelRatio(button->devicePixelRatioF());
        swatch.fill(m_preferences.colorForKey(key));
        QPainter painter(&swatch);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(QRectF(QPointF(0, 0), button->iconSize()).adjusted(0, 0, -1, -1));
        painter.end();
        button->setIcon(swatch);
    });
    m_controls.insert(key, {button});
    return button;
}

void PreferencesWindow::chooseColor(const QString &key) {
    auto *dialog = new QColorDialog(m_preferences.colorForKey(key), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this,
            [this, key](const QColor &color) { m_preferences.setColor(color, key); });
    dialog->open();
}

QWidget *PreferencesWindow::intervalSpinBox(const QString &key, int minimum) {
    auto *box = new QSpinBox;
    box->setObjectName(key);
    box->setRange(minimum, 24 * 60);
    box->setKeyboardTracking(false);
    box->setAlignment(Qt::AlignRight);
    connect(box, &QSpinBox::valueChanged, this,
            [this, key](int minutes) { m_preferences.setObject(minutes, key); });
    m_loaders.insert(key, [this, box, key] {
        const QSignalBlocker blocker(box);
        box->setValue(m_preferences.integerForKey(key));
    });
    m_controls.insert(key, {box});
    return box;
}

void PreferencesWindow::load(const QString &key) {
    const auto loader = m_loaders.constFind(key);
    if (loader != m_loaders.cend())
        (*loader)();
}

void PreferencesWindow::loadAll() {
    for (const auto &loader : std::as_const(m_loaders))
        loader();
    updateEnabled();
}

void PreferencesWindow::updateEnabled() {
    for (auto it = m_controls.cbegin(); it != m_controls.cend(); ++it) {
        const bool enabled = PreferencesForm::isEnabled(it.key(), m_preferences);
        for (QWidget *widget : it.value())
            widget->setEnabled(enabled);
    }
}
