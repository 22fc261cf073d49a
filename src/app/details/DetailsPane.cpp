#include "details/DetailsPane.h"

#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "model/Project.h"

#include <QTextBrowser>

DetailsPane::DetailsPane(const DetailsPage &pages, QWidget *parent)
    : QDockWidget(tr("Details"), parent)
    , m_pages(pages)
    , m_browser(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("DetailsPane"));
    m_browser->setOpenLinks(false);
    m_browser->setOpenExternalLinks(false);
    m_browser->setContextMenuPolicy(Qt::NoContextMenu);
    m_browser->setFrameShape(QFrame::NoFrame);
    setWidget(m_browser);
}

void DetailsPane::updateDetails(const Project *project, const ProjectItem *item) {
    if (item && item->isEntry())
        showEntry(static_cast<const Entry &>(*item));
    else if (item && item->isFlatFee())
        showFlatFee(static_cast<const FlatFeeEntry &>(*item));
    else if (project)
        showProject(*project);
    else
        clear();
}

void DetailsPane::showProject(const Project &project) {
    showPage({m_pages.printProjectDetails(project), {}, {}});
}

void DetailsPane::showEntry(const Entry &entry) {
    showPage({m_pages.printEntryDetails(entry), {}, {}});
}

void DetailsPane::showFlatFee(const FlatFeeEntry &fee) {
    showPage({m_pages.printFlatFeeEntryDetails(fee), {}, {}});
}

void DetailsPane::showCustomer(const Customer &customer) {
    showPage(m_pages.printCustomerDetails(customer));
}

void DetailsPane::clear() {
    showPage({});
}

void DetailsPane::showPage(const DetailsPage::Page &page) {
    QTextDocument *document = m_browser->document();
    document->clear();
    if (!page.image.isNull())
        document->addResource(QTextDocument::ImageResource, page.imageUrl, page.image);
    m_browser->setHtml(page.html);
}
