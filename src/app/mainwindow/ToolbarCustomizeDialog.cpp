#include "mainwindow/ToolbarCustomizeDialog.h"

#include "mainwindow/ToolbarItems.h"
#include "platform/Folders.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString titleOf(const QString &identifier) {
    if (identifier == ToolbarItems::separator)
        return QDialog::tr("Separator");
    if (identifier == ToolbarItems::space)
        return QDialog::tr("Space");
    if (identifier == ToolbarItems::flexibleSpace)
        return QDialog::tr("Flexible Space");
    const ToolbarItems::Item *item = ToolbarItems::item(identifier);
    return item ? item->label : identifier;
}

bool isPlatformItem(const QString &identifier) {
    return identifier == ToolbarItems::separator || identifier == ToolbarItems::space ||
           identifier == ToolbarItems::flexibleSpace;
}

QListWidgetItem *makeRow(const QString &identifier) {
    auto *row = new QListWidgetItem(titleOf(identifier));
    row->setData(Qt::UserRole, identifier);
    const ToolbarItems::Item *item = ToolbarItems::item(identifier);
    if (item && !item->image.isEmpty())
        row->setIcon(QIcon(Folders::imagePath(item->image)));
    return row;
}

} // namespace

ToolbarCustomizeDialog::ToolbarCustomizeDialog(const QStringList &available,
                                               const QStringList &current, QWidget *parent)
    : QDialog(parent)
    , m_available(new QListWidget(this))
    , m_toolbar(new QListWidget(this)) {
    setWindowTitle(tr("Customize Toolbar"));
    for (const QString &identifier : ToolbarItems::allowedItemIdentifiers()) {
        if (isPlatformItem(identifier) || available.contains(identifier))
            m_offered << identifier;
    }
    auto *add = new QPushButton(tr("Add →"), this);
    auto *remove = new QPushButton(tr("← Remove"), this);
    auto *up = new QPushButton(tr("Move Up"), this);
    auto *down = new QPushButton(tr("Move Down"), this);
    auto *buttons = new QDialogButtonBox(
        QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults, this);
    connect(add, &QPushButton::clicked, this, &ToolbarCustomizeDialog::addSelected);
    connect(remove, &QPushButton::clicked, this, &ToolbarCustomizeDialog::removeSelected);
    connect(up, &QPushButton::clicked, this, [this] { moveSelected(-1); });
    connect(down, &QPushButton::clicked, this, [this] { moveSelected(1); });
    connect(m_available, &QListWidget::itemDoubleClicked, this,
            &ToolbarCustomizeDialog::addSelected);
    connect(m_toolbar, &QListWidget::itemDoubleClicked, this,
            &ToolbarCustomizeDialog::removeSelected);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &ToolbarCustomizeDialog::restoreDefaults);

    auto *middle = new QVBoxLayout;
    middle->addStretch();
    for (QPushButton *button : {add, remove, up, down})
        middle->addWidget(button);
    middle->addStretch();
    auto *grid = new QGridLayout;
    grid->addWidget(new QLabel(tr("Available items:"), this), 0, 0);
    grid->addWidget(new QLabel(tr("Toolbar items:"), this), 0, 2);
    grid->addWidget(m_available, 1, 0);
    grid->addLayout(middle, 1, 1);
    grid->addWidget(m_toolbar, 1, 2);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(buttons);
    fill(current);
}

void ToolbarCustomizeDialog::fill(const QStringList &current) {
    m_available->clear();
    m_toolbar->clear();
    for (const QString &identifier : current)
        m_toolbar->addItem(makeRow(identifier));
    for (const QString &identifier : std::as_const(m_offered)) {
        if (isPlatformItem(identifier) || !current.contains(identifier))
            m_available->addItem(makeRow(identifier));
    }
}

QStringList ToolbarCustomizeDialog::items() const {
    QStringList result;
    for (int row = 0; row < m_toolbar->count(); ++row)
        result << m_toolbar->item(row)->data(Qt::UserRole).toString();
    return result;
}

void ToolbarCustomizeDialog::addSelected() {
    QListWidgetItem *chosen = m_available->currentItem();
    if (!chosen)
        return;
    const QString identifier = chosen->data(Qt::UserRole).toString();
    const int at = m_toolbar->currentRow() < 0 ? m_toolbar->count() : m_toolbar->currentRow() + 1;
    m_toolbar->insertItem(at, makeRow(identifier));
    m_toolbar->setCurrentRow(at);
    if (!isPlatformItem(identifier))
        delete m_available->takeItem(m_available->row(chosen));
}

void ToolbarCustomizeDialog::removeSelected() {
    const int row = m_toolbar->currentRow();
    if (row < 0)
        return;
    const QStringList remaining = [&] {
        QStringList list = items();
        list.removeAt(row);
        return list;
    }();
    fill(remaining);
    m_toolbar->setCurrentRow(qMin(row, m_toolbar->count() - 1));
}

void ToolbarCustomizeDialog::moveSelected(int step) {
    const int row = m_toolbar->currentRow();
    const int target = row + step;
    if (row < 0 || target < 0 || target >= m_toolbar->count())
        return;
    m_toolbar->insertItem(target, m_toolbar->takeItem(row));
    m_toolbar->setCurrentRow(target);
}

void ToolbarCustomizeDialog::restoreDefaults() {
    QStringList defaults;
    // Items this window cannot show are left out, and with them a separator they leave doubled.
    for (const QString &identifier : ToolbarItems::defaultItemIdentifiers()) {
        const bool doubledSeparator = identifier == ToolbarItems::separator &&
                                      !defaults.isEmpty() && defaults.constLast() == identifier;
        if (m_offered.contains(identifier) && !doubledSeparator)
            defaults << identifier;
    }
    fill(defaults);
}
