#include "filters/QueryEditor.h"

#include "common/SignButtons.h"
#include "filters/CriterionRow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

QueryEditor::QueryEditor(const FilterDelegate &properties, const CustomerStorage &customers,
                         QWidget *parent)
    : QWidget(parent)
    , m_logic(properties)
    , m_customers(customers)
    , m_matchMode(new QComboBox)
    , m_add(new QToolButton)
    , m_remove(new QToolButton)
    , m_rowsArea(new QWidget)
    , m_rowsLayout(new QVBoxLayout(m_rowsArea)) {
    m_matchMode->setObjectName(u"matchModePopUp"_s);
    m_matchMode->addItem(tr("all"), 0);
    m_matchMode->addItem(tr("any"), 1);
    auto *before = new QLabel(tr("&Match"));
    before->setBuddy(m_matchMode);
    m_matchMode->setAccessibleName(tr("Match"));
    connect(m_matchMode, &QComboBox::activated, this, [this](int index) {
        m_logic.query()->setMatchMode(m_matchMode->itemData(index).toInt());
    });
    SignButtons::makeAdd(m_add, u"addCriterionButton"_s, tr("Add condition"));
    connect(m_add, &QToolButton::clicked, this, &QueryEditor::addNewCriterion);
    SignButtons::makeRemove(m_remove, u"removeCriterionButton"_s, tr("Remove last condition"));
    connect(m_remove, &QToolButton::clicked, this, &QueryEditor::removeLastCriterion);
    // Keeps its place while hidden, so that "+" does not move under the pointer.
    QSizePolicy removePolicy = m_remove->sizePolicy();
    removePolicy.setRetainSizeWhenHidden(true);
    m_remove->setSizePolicy(removePolicy);

    auto *header = new QHBoxLayout;
    header->addWidget(before);
    header->addWidget(m_matchMode);
    header->addWidget(new QLabel(tr("of the following conditions")));
    header->addStretch();
    header->addWidget(m_remove);
    header->addWidget(m_add);
    m_rowsLayout->setContentsMargins(0, 0, 0, 0);
    m_rowsLayout->setSpacing(0);
    m_rowsLayout->setAlignment(Qt::AlignTop);
    // Wide enough for the widest row, so that the window keeps its width (and "+" its place) as
    // rows of other types come and go.
    setMinimumWidth(fontMetrics().averageCharWidth() * 100);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(header);
    layout->addWidget(m_rowsArea);
    setSearchQuery(nullptr);
}

void QueryEditor::setSearchQuery(const MPSearchQuery::Pointer &query) {
    qDeleteAll(m_rows);
    m_rows.clear();
    m_logic.setSearchQuery(query);
    for (int i = 0; i < m_logic.rowCount(); ++i) {
        CriterionRow *row = makeRow(m_logic.query()->criterionAtIndex(i));
        m_rowsLayout->addWidget(row);
        m_rows.append(row);
    }
    updateControls();
}

CriterionRow *QueryEditor::makeRow(const MPSearchCriterion::Pointer &criterion) {
    auto *row =
        new CriterionRow(m_logic.query(), criterion, m_logic.properties(), m_customers, m_rowsArea);
    connect(row, &CriterionRow::rebuildRequested, this,
            [this, row](const MPSearchCriterion::Pointer &made) { rebuildRow(row, made); });
    return row;
}

void QueryEditor::rebuildRow(CriterionRow *row, const MPSearchCriterion::Pointer &criterion) {
    const int index = int(m_rows.indexOf(row));
    CriterionRow *made = makeRow(criterion);
    m_rowsLayout->replaceWidget(row, made);
    m_rows[index] = made;
    // The row is still in its signal: it goes once that returns, out of the editor already.
    row->hide();
    row->setParent(nullptr);
    row->deleteLater();
    made->findChild<QComboBox *>(u"propertyPopUp"_s)->setFocus();
}

void QueryEditor::addNewCriterion() {
    const auto criterion = m_logic.addNewCriterion(CriterionRow::firstCustomerId(m_customers));
    if (!criterion)
        return;
    CriterionRow *row = makeRow(criterion);
    m_rowsLayout->addWidget(row);
    m_rows.append(row);
    updateControls();
}

void QueryEditor::removeLastCriterion() {
    if (!m_logic.removeLastCriterion())
        return;
    delete m_rows.takeLast();
    updateControls();
}

void QueryEditor::updateControls() {
    m_matchMode->setEnabled(m_logic.isMatchModeEnabled());
    m_matchMode->setCurrentIndex(m_logic.query()->matchMode() == 1 ? 1 : 0);
    m_remove->setVisible(m_logic.isRemoveVisible());
    m_rowsArea->setFixedHeight(m_logic.rowsHeight());
}

QLineEdit *QueryEditor::firstInvalidField() const {
    for (CriterionRow *row : m_rows) {
        if (QLineEdit *field = row->firstInvalidField())
            return field;
    }
    return nullptr;
}
