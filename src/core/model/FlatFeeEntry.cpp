#include "FlatFeeEntry.h"

#include "HelpFunctions.h"
#include "StoredForms.h"

FlatFeeEntry::FlatFeeEntry() {
    comment_ = QStringLiteral("");
}

QDateTime FlatFeeEntry::fromDateAsDate() const {
    return HelpFunctions::makeDateFromDateString(date_, u"00:00");
}

QDateTime FlatFeeEntry::toDateAsDate() const {
    return fromDateAsDate();
}

std::shared_ptr<FlatFeeEntry> FlatFeeEntry::copy() const {
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->date_ = date_;
    fee->comment_ = comment_;
    fee->tags_ = tags_;
    fee->amount_ = amount_;
    return fee;
}

const QStringList &FlatFeeEntry::copyKeys() {
    static const QStringList keys{QStringLiteral("date"), QStringLiteral("amount"),
                                  QStringLiteral("comment"), QStringLiteral("tags")};
    return keys;
}

QVariantMap FlatFeeEntry::dictionaryRepresentation() const {
    QVariantMap map;
    for (const QString &key : copyKeys())
        map.insert(key, valueForKey(key));
    return map;
}

QString FlatFeeEntry::stringDescription() const {
    return described(date_) + u';' + StoredForms::fixedText(double(amount_)) + u';' +
           described(comment_) + u';' + described(tags_);
}

QVariant FlatFeeEntry::valueForKey(QStringView key) const {
    if (key == u"amount")
        return amount_;
    return ProjectItem::valueForKey(key);
}
