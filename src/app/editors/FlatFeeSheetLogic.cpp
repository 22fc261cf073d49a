#include "editors/FlatFeeSheetLogic.h"

#include "editors/AmountText.h"
#include "model/Clock.h"
#include "model/ProjectCollection.h"
#include "model/StoredForms.h"

#include <QCoreApplication>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("FlatFeeSheet", text);
}

} // namespace

FlatFeeSheetLogic::FlatFeeSheetLogic(ProjectCollection &collection)
    : m_collection(collection) {}

bool FlatFeeSheetLogic::newFlatFeeEntry(const std::shared_ptr<Project> &project) {
    if (!project)
        return false;
    m_mode = Mode::NewEntry;
    m_project = project;
    m_fee.reset();
    m_day = Clock::now().date();
    m_comment.clear();
    m_amountText = AmountText::text(0.0f);
    m_tags.clear();
    return true;
}

bool FlatFeeSheetLogic::editFlatFeeEntry(const std::shared_ptr<FlatFeeEntry> &fee) {
    if (!fee)
        return false;
    m_mode = Mode::EditEntry;
    m_fee = fee;
    m_project = m_collection.sharedProject(fee->parent());
    // A day that does not read (a damaged file) shows today rather than nothing.
    m_day = StoredForms::parseDate(fee->date());
    if (!m_day.isValid())
        m_day = Clock::now().date();
    m_amountText = AmountText::text(fee->amount());
    m_comment = fee->comment();
    m_tags = fee->tags();
    return true;
}

QString FlatFeeSheetLogic::title() const {
    return m_mode == Mode::NewEntry ? tr("new entry") : tr("edit entry");
}

QString FlatFeeSheetLogic::acceptButtonTitle() const {
    return m_mode == Mode::NewEntry ? tr("Create") : tr("Accept");
}

float FlatFeeSheetLogic::amount() const {
    return AmountText::value(m_amountText);
}

std::shared_ptr<FlatFeeEntry> FlatFeeSheetLogic::valuesFromFields() const {
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(StoredForms::dateText(m_day));
    fee->setAmount(amount());
    fee->setComment(m_comment);
    fee->setTags(m_tags);
    return fee;
}

std::shared_ptr<FlatFeeEntry> FlatFeeSheetLogic::sheetDidEnd() {
    const std::shared_ptr<FlatFeeEntry> values = valuesFromFields();
    if (m_mode == Mode::NewEntry) {
        m_collection.addEntry(values, m_project, tr("Add Entry"));
        return values;
    }
    m_collection.editFlatFeeEntry(m_fee, *values);
    return m_fee;
}
