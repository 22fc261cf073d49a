#pragma once

#include <QWidget>

class QButtonGroup;

// The bar of quick filters above the list: "Off", then "Today", "This week", "This month" and
// "This year" as one row of exclusive buttons.
class QuickFilterBar : public QWidget {
    Q_OBJECT

public:
    explicit QuickFilterBar(QWidget *parent = nullptr);

    static QStringList identifiers();
    QString selected() const;
    // Shows the item as chosen without announcing it; an unknown identifier chooses "off".
    void setSelected(const QString &identifier);

signals:
    void selectionChanged(const QString &identifier);

private:
    QButtonGroup *m_group;
};
