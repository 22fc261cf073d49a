#include "mainwindow/ToolbarItems.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QString label(const char *text) {
    return QCoreApplication::translate("ToolbarItems", text);
}

} // namespace

const QList<ToolbarItems::Item> &ToolbarItems::items() {
    static const QList<Item> all{
        {u"AddProject"_s, label("Add Project"), u"NewProject"_s, u"newProject:"_s},
        {u"AddEntry"_s, label("Add Entry"), u"NewEntry"_s, u"newTimerEntry:"_s},
        {u"AddFlatFeeEntry"_s, label("Add Flat Fee Entry"), u"NewFlatFeeEntry"_s,
         u"newFlatFeeEntry:"_s},
        {u"Delete"_s, label("Delete"), u"Trash"_s, u"delete:"_s},
        {u"Edit"_s, label("Edit"), u"Edit"_s, u"edit:"_s},
        {u"Details"_s, label("Details"), u"details"_s, u"toggleDrawer:"_s},
        {u"Pause"_s, label("Pause"), u"pause"_s, u"pause:"_s},
        {u"Resume"_s, label("Resume"), u"play"_s, u"resume:"_s},
        {u"Stop"_s, label("Stop"), u"Stop"_s, u"actionButtonClicked:"_s},
        {u"Filters"_s, label("Filters"), {}, {}},
        {u"Search"_s, label("Search"), {}, {}},
        {u"MiniWindow"_s, label("Mini Window"), u"ico_mini_window"_s, u"toggleMiniWindow:"_s},
        {u"Attachments"_s, label("Attachments"), u"attachments"_s, u"openAttachments:"_s},
    };
    return all;
}

const ToolbarItems::Item *ToolbarItems::item(const QString &identifier) {
    for (const Item &each : items()) {
        if (each.identifier == identifier)
            return &each;
    }
    return nullptr;
}

QStringList ToolbarItems::defaultItemIdentifiers() {
    return {u"AddProject"_s,  u"AddEntry"_s, u"AddFlatFeeEntry"_s, u"Delete"_s, u"Edit"_s,
            u"Attachments"_s, separator,     u"Filters"_s,         u"Search"_s, u"MiniWindow"_s,
            separator,        u"Details"_s};
}

QStringList ToolbarItems::allowedItemIdentifiers() {
    QStringList allowed{separator, space, flexibleSpace};
    for (const Item &each : items())
        allowed << each.identifier;
    return allowed;
}

int ToolbarItems::indexOfItem(const QString &identifier, const QStringList &items) {
    const qsizetype index = items.indexOf(identifier);
    return int(index < 0 ? items.size() : index);
}

bool ToolbarItems::isItemMissing(const QString &identifier, const QStringList &items) {
    return !items.contains(identifier);
}

int ToolbarItems::versionNumber(const QString &version) {
    if (version.isEmpty())
        return -1;
    QString digits = version;
    digits.remove(u'.');
    if (digits.size() == 2)
        digits += u'0';
    return digits.toInt();
}

QStringList ToolbarItems::migrate(const QStringList &saved, const QString &lastVersion) {
    const int version = versionNumber(lastVersion);
    if (version < 0)
        return saved;
    QStringList result = saved;
    // Both steps may apply: from 2.3 to 3.0.9 the inserted item is replaced by the reset.
    if (version > 229 && isItemMissing(u"Attachments"_s, result)) {
        const int edit = indexOfItem(u"Edit"_s, result);
        result.insert(qMin(edit + 1, int(result.size())), u"Attachments"_s);
    }
    if (version <= 309)
        result = defaultItemIdentifiers();
    return result;
}

QStringList ToolbarItems::validated(const QStringList &saved) {
    QStringList result;
    for (const QString &identifier : saved) {
        const bool platformItem =
            identifier == separator || identifier == space || identifier == flexibleSpace;
        if (platformItem || (item(identifier) && !result.contains(identifier)))
            result << identifier;
    }
    return result;
}
