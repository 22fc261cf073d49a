#pragma once

#include "details/DetailsPage.h"

#include <QDockWidget>

class ProjectItem;
class QTextBrowser;

// The dock beside the project list that shows the details page of the selected row or customer.
// The page is read-only rich text: no scripts, no context menu of its own, and no links are
// followed (the pages carry none, and what the user typed is shown as text). A customer's
// picture is handed to the text document as an in-memory image.
class DetailsPane : public QDockWidget {
    Q_OBJECT

public:
    explicit DetailsPane(const DetailsPage &pages, QWidget *parent = nullptr);

    // The selected row: an item shows its entry or flat-fee page, a project without an item its
    // project page, neither an empty page. The one call to make after anything that can change
    // what is shown (selection, edits, pause and resume, deletion, start-up). The status line,
    // the customer list's current customer and the attachment window are the main window's.
    void updateDetails(const Project *project, const ProjectItem *item);

    void showProject(const Project &project);
    void showEntry(const Entry &entry);
    void showFlatFee(const FlatFeeEntry &fee);
    void showCustomer(const Customer &customer);
    // An empty page.
    void clear();

    QTextBrowser *browser() const { return m_browser; }

private:
    void showPage(const DetailsPage::Page &page);

    const DetailsPage &m_pages;
    QTextBrowser *m_browser;
};
