#pragma once

#include "model/Project.h"
#include "stores/Customer.h"

#include <QWidget>

class CustomerStorage;
class ProjectCollection;
class QMimeData;

// The well under the customer list that shows the selected project's customer: its picture, or
// a hint what can be dropped ("Drag Customer here" for a project without customer, "Drag Image
// here" for a customer without picture, "Nothing selected" without a project), in a dashed
// rounded frame that lights up while a drag it accepts hovers over it.
//
// While enabled it takes a customer dragged from the customer list (assigned to the project,
// "Assign customer"), address cards (added as customers and, with a project, the first one
// assigned to it, one undo step) and, while it shows a customer, a picture (the customer's new
// picture, "Customer image").
class CustomerDropBox : public QWidget {
    Q_OBJECT

public:
    CustomerDropBox(CustomerStorage &storage, ProjectCollection &collection,
                    QWidget *parent = nullptr);

    // The selected project, or none. The box follows changes of the project and its customer
    // by itself; a project that leaves the document counts as none.
    void showProject(const Project *project);

    std::shared_ptr<Project> project() const;
    // The customer shown; null when the project has none or nothing is selected.
    Customer::Pointer currentCustomer() const { return m_currentCustomer; }
    // The hint shown; empty while the customer's picture is shown.
    QString text() const { return m_text; }
    bool isHighlighted() const { return m_highlighted; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void refresh();
    bool accepts(const QMimeData &data) const;
    bool drop(const QMimeData &data);
    void setHighlighted(bool highlighted);

    CustomerStorage &m_storage;
    ProjectCollection &m_collection;
    std::weak_ptr<Project> m_project;
    Customer::Pointer m_currentCustomer;
    QString m_text;
    bool m_highlighted = false;
};
