#pragma once

#include <QDialog>

class CustomerStorage;
class ExportController;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QListWidget;

// The second sheet of the export dialogue: the customer list, the projects to export with their
// check boxes, Select All, Select None, Invert, the apply-filter check box and, for CSV and text,
// the project and entry fields. Export accepts the sheet once the controller agrees.
class ExportProjectSheet : public QDialog {
    Q_OBJECT

public:
    // The customers (for their pictures) may be null.
    ExportProjectSheet(ExportController &controller, const CustomerStorage *customers,
                       QWidget *parent);

    // Fills the customer list and lists every project, all checked, with the field choices
    // shown when the controller's format has them.
    void showChoices();

private:
    QGroupBox *fieldBox(const QString &title, const QStringList &names, QList<QCheckBox *> &boxes);
    void customerChosen(int index);
    void fillProjects();
    void exportChosen();

    ExportController &m_controller;
    const CustomerStorage *m_customers;
    QComboBox *m_customerList;
    QListWidget *m_projects;
    QCheckBox *m_applyFilter;
    QWidget *m_fields;
    QList<QCheckBox *> m_projectFields;
    QList<QCheckBox *> m_entryFields;
};
