#pragma once

#include "filters/QueryEditorLogic.h"

#include <QWidget>

class CriterionRow;
class CustomerStorage;
class QComboBox;
class QLineEdit;
class QToolButton;
class QVBoxLayout;

// The query editor: "Match all/any of the following", one row per criterion (CriterionRow), and
// buttons that add a row and remove the last one. Its height follows the rows (32 points each),
// so the window around it grows and shrinks by a row. The rules are QueryEditorLogic's.
//
// Object names: matchModePopUp, addCriterionButton, removeCriterionButton.
class QueryEditor : public QWidget {
    Q_OBJECT

public:
    QueryEditor(const FilterDelegate &properties, const CustomerStorage &customers,
                QWidget *parent = nullptr);

    const QueryEditorLogic &logic() const { return m_logic; }
    MPSearchQuery::Pointer query() const { return m_logic.query(); }
    // Shows the query (a fresh one for none) and edits it in place from now on.
    void setSearchQuery(const MPSearchQuery::Pointer &query);
    QList<CriterionRow *> rows() const { return m_rows; }
    // The first value field holding no number where one is wanted; nullptr when all are fine.
    QLineEdit *firstInvalidField() const;

    void addNewCriterion();
    void removeLastCriterion();

private:
    CriterionRow *makeRow(const MPSearchCriterion::Pointer &criterion);
    void rebuildRow(CriterionRow *row, const MPSearchCriterion::Pointer &criterion);
    void updateControls();

    QueryEditorLogic m_logic;
    const CustomerStorage &m_customers;
    QComboBox *m_matchMode;
    QToolButton *m_add;
    QToolButton *m_remove;
    QWidget *m_rowsArea;
    QVBoxLayout *m_rowsLayout;
    QList<CriterionRow *> m_rows;
};
