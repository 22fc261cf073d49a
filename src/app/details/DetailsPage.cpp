#include "details/DetailsPage.h"

#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Folders.h"
#include "stores/CustomerStorage.h"

using namespace Qt::StringLiterals;

namespace {

QString heading(const QString &text) {
    return u"<h2>"_s + text.toHtmlEscaped() + u"</h2>"_s;
}

QString rule() {
    return u"<hr style=\"height: 1px; border-style: none; border-color: black; color: black; "
           "background: black; width: 95%;\">"_s;
}

QString tableStart() {
    return u"<table style=\"border-collapse: separate; border-spacing: 4px 0px;\">"_s;
}

QString tableEnd() {
    return u"</table>"_s;
}

QString iconUrl(const QString &name) {
    return u"file://"_s + Folders::imagePath(name).toHtmlEscaped();
}

// A row start and the icon's cell, as many rows high as given.
QString iconCell(const QString &name, int rows) {
    return u"<tr><td colspan=\"1\" rowspan=\"%1\" style=\"vertical-align: top;\">"
           "<img src=\"%2\" width=\"32\" height=\"32\"></td>"_s.arg(QString::number(rows),
                                                                    iconUrl(name));
}

// A row start and the icon's cell, one row high.
QString iconCell(const QString &name) {
    return u"<tr><td style=\"vertical-align: top;\"><img src=\"%1\" width=\"32\" "
           "height=\"32\"></td>"_s.arg(iconUrl(name));
}

// A label with its colon and a value in bold, ending the row.
QString labelledValue(const QString &label, const QString &value) {
    return u"<td style=\"text-align: right;\">"_s + label + u":</td><td><strong>"_s +
           value.toHtmlEscaped() + u"</strong></td></tr>"_s;
}

// A further row of a block whose icon spans several rows.
QString labelledRow(const QString &label, const QString &value) {
    return u"<tr>"_s + labelledValue(label, value);
}

// Plain text as HTML: escaped, line feeds as line breaks.
QString htmlText(const QString &text) {
    QString html = text.toHtmlEscaped();
    html.replace(u'\n', u"<br/>"_s);
    return html;
}

QString lastPathComponent(const QString &path) {
    QString trimmed = path;
    while (trimmed.size() > 1 && trimmed.endsWith(u'/'))
        trimmed.chop(1);
    return trimmed.section(u'/', -1);
}

} // namespace

DetailsPage::DetailsPage(const ProjectCollection &collection, const CustomerStorage &customers,
                         const CurrencyFormatter &currency)
    : m_collection(collection)
    , m_customers(customers)
    , m_currency(currency) {}

QUrl DetailsPage::customerImageUrl(int customerID) {
    return QUrl(u"customer-image:"_s + QString::number(customerID));
}

QString DetailsPage::notesBlocks(const QString &text, const QString &tags,
                                 const QStringList &attachments) {
    QString html;
    if (!text.isEmpty()) {
        html += tableStart() + iconCell(u"Edit"_s) + u"<td>"_s + htmlText(text) + u"</td></tr>"_s +
                tableEnd() + rule();
    }
    if (!tags.isEmpty()) {
        QString spaced = tags;
        spaced.replace(u","_s, u", "_s);
        html += tableStart() + iconCell(u"tags"_s) + u"<td>"_s + spaced.toHtmlEscaped() +
                u"</td></tr>"_s + tableEnd() + rule();
    }
    if (!attachments.isEmpty()) {
        html += tableStart() + iconCell(u"attachments"_s, int(attachments.size()));
        for (qsizetype i = 0; i < attachments.size(); ++i) {
            html += (i == 0 ? u"<td>"_s : u"<tr><td>"_s) +
                    lastPathComponent(attachments[i]).toHtmlEscaped() + u"</td></tr>"_s;
        }
        html += tableEnd();
    }
    return html;
}

QString DetailsPage::printProjectDetails(const Project &project) const {
    const Customer::Pointer customer = m_customers.customerWithID(project.customer());
    const QString customerName = customer ? customer->name() : tr("none");

    QString html = heading(project.name()) + rule() + tableStart();
    html += iconCell(u"customer"_s, 3) + labelledValue(tr("Customer"), customerName);
    html += labelledRow(tr("Total duration"), project.formattedTotalTime(true));
    html += u"<tr><td>&nbsp;</td><td></td></tr>"_s;
    html += iconCell(u"dollarsign"_s, 2) +
            labelledValue(tr("Hourly wages"), m_currency.format(project.hourlyWage()));
    html += labelledRow(tr("Total wages"), m_currency.format(project.totalWages()));
    html += tableEnd() + rule();
    return html + notesBlocks(project.description(), project.tags(), project.attachments());
}

QString DetailsPage::printEntryDetails(const Entry &entry) const {
    QString html = tableStart();
    if (entry.hasPeriod()) {
        const QString from = u"%1 %2"_s.arg(entry.formattedFromTime(), entry.formattedFromDate());
        const QString to = entry.isWorking()
                               ? u"--:--"_s
                               : u"%1 %2"_s.arg(entry.formattedToTime(), entry.formattedToDate());
        html += iconCell(u"Clock"_s, 3) + labelledValue(tr("From"), from);
        html += labelledRow(tr("To"), to);
        html += u"<tr><td>&nbsp;</td></tr>"_s;
        html += iconCell(u"pause_details"_s, 2) +
                labelledValue(tr("Pause time"), entry.formattedPauseDuration());
        if (entry.isPaused()) {
            html += u"<tr><td style=\"text-align: right;\">%1</td><td> <strong>%2</strong></td>"
                    "</tr>"_s.arg(tr("Paused at:"), entry.localizedPauseDate().toHtmlEscaped());
        }
    } else {
        html += iconCell(u"Clock"_s, 3) + labelledValue(tr("Day"), entry.formattedDay());
        html += labelledRow(tr("Duration"), entry.formattedEffectiveTime());
    }
    html += tableEnd() + rule();
    return html + notesBlocks(entry.comment(), entry.tags(), entry.attachments());
}

QString DetailsPage::printFlatFeeEntryDetails(const FlatFeeEntry &fee) const {
    QString html = tableStart();
    html += iconCell(u"dollarsign"_s, 3) + labelledValue(tr("Day"), fee.formattedDay());
    html += labelledRow(tr("Amount"), m_currency.format(fee.amount()));
    html += tableEnd() + rule();
    return html + notesBlocks(fee.comment(), fee.tags(), fee.attachments());
}

DetailsPage::Page DetailsPage::printCustomerDetails(const Customer &customer) const {
    int minutes = 0;
    float wages = 0;
    for (const auto &project : m_collection.projectArray()) {
        if (project->customer() != customer.customerID())
            continue;
        minutes += project->totalTime(true);
        wages += project->totalWages();
    }

    Page page;
    page.html = heading(customer.name());
    if (!customer.customerImage().isNull()) {
        page.imageUrl = customerImageUrl(customer.customerID());
        page.image = customer.customerImage();
        page.html += u"<center><img src=\"%1\" height=\"64\"></center>"_s.arg(
            page.imageUrl.toString().toHtmlEscaped());
    }
    page.html += rule() + tableStart();
    page.html += iconCell(u"Clock"_s) +
                 labelledValue(tr("Time spent"), ProjectCollection::makeStringFromMinutes(minutes));
    page.html += iconCell(u"dollarsign"_s) + labelledValue(tr("Money"), m_currency.format(wages));
    page.html += tableEnd();
    return page;
}
