#include "mainwindow/QuickFilterBar.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

QStringList QuickFilterBar::identifiers() {
    return {u"off"_s, u"today"_s, u"week"_s, u"month"_s, u"year"_s};
}

QuickFilterBar::QuickFilterBar(QWidget *parent)
    : QWidget(parent)
    , m_group(new QButtonGroup(this)) {
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->setSpacing(2);
    const QStringList titles{tr("Off"), tr("Today"), tr("This week"), tr("This month"),
                             tr("This year")};
    const QStringList ids = identifiers();
    for (int i = 0; i < ids.size(); ++i) {
        auto *button = new QToolButton(this);
        button->setText(titles[i]);
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setObjectName(ids[i]);
        button->setToolTip(i == 0 ? tr("Show every entry")
                                  : tr("Show the entries of %1").arg(titles[i].toLower()));
        m_group->addButton(button, i);
        layout->addWidget(button);
        if (i == 0) {
            auto *line = new QFrame(this);
            line->setFrameShape(QFrame::VLine);
            line->setFrameShadow(QFrame::Sunken);
            layout->addWidget(line);
        }
    }
    layout->addStretch();
    m_group->button(0)->setChecked(true);
    connect(m_group, &QButtonGroup::idClicked, this,
            [this](int id) { emit selectionChanged(identifiers().at(id)); });
}

QString QuickFilterBar::selected() const {
    const int id = m_group->checkedId();
    return id < 0 ? u"off"_s : identifiers().at(id);
}

void QuickFilterBar::setSelected(const QString &identifier) {
    const qsizetype index = identifiers().indexOf(identifier);
    m_group->button(int(qMax<qsizetype>(index, 0)))->setChecked(true);
}
