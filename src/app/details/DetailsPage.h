#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QUrl>

class Customer;
class CustomerStorage;
class CurrencyFormatter;
class Entry;
class FlatFeeEntry;
class Project;
class ProjectCollection;

// The HTML pages of the details pane: one for a project, a timed entry, a flat fee and a customer,
// each built from the same few table fragments. Dates follow the "listDateFormat" preference
// through the model's formatting, money the shared currency formatter. Texts the user typed
// (names, comments, tags, file names) are escaped, so a page never carries markup of its own
// making.
class DetailsPage {
    Q_DECLARE_TR_FUNCTIONS(DetailsPage)

public:
    // A page and the one picture it may show by a resource address instead of a file: the
    // viewer registers the image under imageUrl before it shows the HTML.
    struct Page {
        QString html;
        QUrl imageUrl;
        QImage image;
    };

    // Customer names come from the customer store, the customer sums from the document.
    DetailsPage(const ProjectCollection &collection, const CustomerStorage &customers,
                const CurrencyFormatter &currency);

    QString printProjectDetails(const Project &project) const;
    QString printEntryDetails(const Entry &entry) const;
    QString printFlatFeeEntryDetails(const FlatFeeEntry &fee) const;
    // The customer's time and money over every project of the document assigned to it, and its
    // picture, if it has one, as "customer-image:<id>".
    Page printCustomerDetails(const Customer &customer) const;

    // The address a page uses for a customer's picture.
    static QUrl customerImageUrl(int customerID);

private:
    // The comment or description, tags and attachments blocks that close every item page.
    static QString notesBlocks(const QString &text, const QString &tags,
                               const QStringList &attachments);

    const ProjectCollection &m_collection;
    const CustomerStorage &m_customers;
    const CurrencyFormatter &m_currency;
};
