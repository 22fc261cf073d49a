#include "editors/FlatFeeSheet.h"

#include "common/TagCompleter.h"
#include "editors/SheetTextEdit.h"
#include "model/FlatFeeEntry.h"
#include "platform/CurrencyFormatter.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// The locale's short date with the year in four digits, so that no century is guessed.
QString dayFormat() {
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(u"yyyy"_s))
        format.replace(u"yy"_s, u"yyyy"_s);
    return format;
}

} // namespace

FlatFeeSheet::FlatFeeSheet(ProjectCollection &collection, TagStorage &tags,
                           const CurrencyFormatter &currency, QWidget *parent)
    : QDialog(parent)
    , m_logic(collection)
    , m_day(new QDateEdit)
    , m_amount(new QLineEdit)
    , m_comment(new SheetTextEdit)
    , m_tags(new QLineEdit)
    , m_acceptButton(new QPushButton) {
    setWindowModality(Qt::WindowModal);

    m_day->setObjectName(u"flatFeeDayDatePicker"_s);
    m_day->setCalendarPopup(true);
    m_day->setDisplayFormat(dayFormat());
    m_amount->setObjectName(u"flatFeeAmountTextField"_s);
    m_amount->setAlignment(Qt::AlignRight);
    m_amount->setMaximumWidth(m_amount->fontMetrics().horizontalAdvance(u"0000000000.00"_s) + 16);
    m_comment->setObjectName(u"flatFeeDescriptionTextBox"_s);
    m_tags->setObjectName(u"flatFeeTokenField"_s);
    new TagCompleter(m_tags, tags, TagStorage::Panel::FlatFee);
    m_acceptButton->setObjectName(u"flatFeeEntryAcceptButton"_s);

    auto *form = new QFormLayout;
    auto *dayRow = new QHBoxLayout;
    dayRow->addWidget(m_day);
    dayRow->addStretch();
    form->addRow(tr("Day:"), dayRow);
    auto *amountRow = new QHBoxLayout;
    amountRow->addWidget(m_amount);
    auto *symbol = new QLabel(QLocale(currency.localeName()).currencySymbol());
    symbol->setObjectName(u"flatFeeAmountCurrency"_s);
    amountRow->addWidget(symbol);
    amountRow->addStretch();
    form->addRow(tr("Amount:"), amountRow);
    form->addRow(tr("Comment:"), m_comment);
    form->addRow(tr("Tags:"), m_tags);

    auto *buttons = new QDialogButtonBox;
    auto *cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(u"cancelButton"_s);
    buttons->addButton(m_acceptButton, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &FlatFeeSheet::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &FlatFeeSheet::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    // Only a button inside the dialog can be its default one.
    m_acceptButton->setDefault(true);
}

void FlatFeeSheet::newFlatFee(const std::shared_ptr<Project> &project) {
    if (!m_logic.newFlatFeeEntry(project))
        return;
    openSheet(m_amount);
    m_amount->selectAll();
}

void FlatFeeSheet::editFlatFee(const std::shared_ptr<FlatFeeEntry> &fee) {
    if (!m_logic.editFlatFeeEntry(fee))
        return;
    openSheet(m_day);
}

void FlatFeeSheet::openSheet(QWidget *focus) {
    setWindowTitle(m_logic.title());
    m_acceptButton->setText(m_logic.acceptButtonTitle());
    m_day->setDate(m_logic.day());
    m_amount->setText(m_logic.amountText());
    m_comment->setPlainText(m_logic.comment());
    m_tags->setText(m_logic.tags());
    focus->setFocus();
    open();
}

void FlatFeeSheet::accept() {
    m_logic.setDay(m_day->date());
    m_logic.setAmountText(m_amount->text());
    m_logic.setComment(m_comment->toPlainText());
    m_logic.setTags(m_tags->text());
    QDialog::accept();
    emit flatFeeSaved(m_logic.sheetDidEnd(), m_logic.mode() == FlatFeeSheetLogic::Mode::NewEntry);
}
