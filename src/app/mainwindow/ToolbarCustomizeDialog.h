#pragma once

#include <QDialog>

class QListWidget;

// Arranging the toolbar: the items that may be added on the left, the toolbar's items in order
// on the right, and buttons to move them between and within the lists.
class ToolbarCustomizeDialog : public QDialog {
    Q_OBJECT

public:
    // available: the identifiers this window can show (an item whose command does not exist yet
    // is never offered); current: the toolbar as it is.
    ToolbarCustomizeDialog(const QStringList &available, const QStringList &current,
                           QWidget *parent = nullptr);

    QStringList items() const;
    QListWidget *availableList() const { return m_available; }
    QListWidget *toolbarList() const { return m_toolbar; }

    void addSelected();
    void removeSelected();
    void moveSelected(int step);
    void restoreDefaults();

private:
    void fill(const QStringList &current);
    QStringList m_offered;
    QListWidget *m_available;
    QListWidget *m_toolbar;
};
