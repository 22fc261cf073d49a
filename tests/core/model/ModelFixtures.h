#pragma once

#include "model/Clock.h"
#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "model/StoredForms.h"
#include "platform/Preferences.h"

#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

// A local moment written "dd.MM.yyyy HH:mm" or "dd.MM.yyyy HH:mm:ss".
inline QDateTime at(const QString &text) {
    return QDateTime::fromString(text, text.size() > 16 ? u"dd.MM.yyyy HH:mm:ss"_s
                                                        : u"dd.MM.yyyy HH:mm"_s);
}

// A period entry from one moment to another; without an end it is running.
inline std::shared_ptr<Entry> periodEntry(const QDateTime &from, const QDateTime &to = {}) {
    auto entry = std::make_shared<Entry>();
    entry->setHasPeriod(true);
    entry->setFromDate(StoredForms::dateText(from.date()));
    entry->setFromTime(StoredForms::timeText(from.time()));
    entry->setIsWorking(!to.isValid());
    if (to.isValid()) {
        entry->setToDate(StoredForms::dateText(to.date()));
        entry->setToTime(StoredForms::timeText(to.time()));
        entry->setTime(int(from.secsTo(to) / 60));
    }
    return entry;
}

// The same with the moments written "dd.MM.yyyy HH:mm".
inline std::shared_ptr<Entry> periodEntry(const QString &from, const QString &to = {}) {
    return periodEntry(at(from), to.isEmpty() ? QDateTime() : at(to));
}

inline std::shared_ptr<Entry> dayEntry(const QString &day, int minutes) {
    auto entry = std::make_shared<Entry>();
    entry->setDate(day);
    entry->setTime(minutes);
    return entry;
}

inline std::shared_ptr<FlatFeeEntry> flatFee(const QString &day, float amount) {
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(day);
    fee->setAmount(amount);
    return fee;
}

// Preferences on a temporary file, standing in for the shared ones while the object lives.
class TemporaryPreferences {
public:
    TemporaryPreferences()
        : m_preferences(m_dir.filePath(u"Hourfold3.conf"_s)) {
        Preferences::setShared(&m_preferences);
    }
    ~TemporaryPreferences() { Preferences::setShared(nullptr); }
    Preferences *operator->() { return &m_preferences; }
    Preferences &operator*() { return m_preferences; }

private:
    QTemporaryDir m_dir;
    Preferences m_preferences;
};
