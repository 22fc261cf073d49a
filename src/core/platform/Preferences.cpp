#include "Preferences.h"

#include "../model/StoredForms.h"

#include "../Logging.h"
#include <QStandardPaths>

namespace {
Preferences *&sharedOverride() {
    static Preferences *instance = nullptr;
    return instance;
}

// Whether the value to store is the one there already. Values read back from the file are texts
// ("true", "42.5"), so a text is also compared with the new value's text.
bool sameValue(const QVariant &stored, const QVariant &value) {
    if (stored == value)
        return true;
    return stored.typeId() == QMetaType::QString && value.canConvert<QString>() &&
           stored.toString() == value.toString();
}
} // namespace

Preferences::Preferences(const QString &filePath, QObject *parent)
    : QObject(parent)
    , m_settings(std::make_unique<QSettings>(filePath, QSettings::IniFormat)) {
    registerDefaults(registeredDefaults());
}

Preferences &Preferences::shared() {
    if (sharedOverride())
        return *sharedOverride();
    static Preferences instance(defaultFilePath());
    return instance;
}

void Preferences::setShared(Preferences *preferences) {
    sharedOverride() = preferences;
}

QString Preferences::defaultFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Hourfold/Hourfold3.conf");
}

QVariantMap Preferences::registeredDefaults() {
    const auto yes = QVariant(true);
    const auto no = QVariant(false);
    return {
        {QStringLiteral("defaultTime"), QTime(8, 0)},
        {QStringLiteral("loadLastOpenFile"), yes},
        {QStringLiteral("StartingDirectory"), QString()},
        {QStringLiteral("DrawerState"), no},
        {QStringLiteral("saveOnExit"), no},
        {QStringLiteral("listDateFormat"), 3},
        {QStringLiteral("hourlyWage"), 0.0f},
        {QStringLiteral("useProjectColor"), yes},
        {QStringLiteral("useUnfinishedEntryColor"), yes},
        {QStringLiteral("useAlternateBackground"), yes},
        {QStringLiteral("useGridLines"), yes},
        {QStringLiteral("showDockBadge"), yes},
        {QStringLiteral("sortingColumn"), QStringLiteral("Day_Col")},
        {QStringLiteral("sortAscending"), yes},
        {QStringLiteral("showInfo"), yes},
        {QStringLiteral("hideFadedProjects"), no},
        {QStringLiteral("useRemote"), no},
        {QStringLiteral("drawerWidth"), 300.0f},
        {QStringLiteral("showDescriptionColumn"), yes},
        {QStringLiteral("showStateColumn"), yes},
        {QStringLiteral("showActionColumn"), yes},
        {QStringLiteral("showDurationColumn"), yes},
        {QStringLiteral("isDropBoxHidden"), no},
        {QStringLiteral("crashProtection"), yes},
        {QStringLiteral("showStatusMenuItem"), yes},
        {QStringLiteral("isQuickFiltersHidden"), no},
        {QStringLiteral("firstDayOfWeek"), 0},
        {QStringLiteral("useReminders"), no},
        {QStringLiteral("useRunningReminder"), no},
        {QStringLiteral("usePauseReminder"), yes},
        {QStringLiteral("runningReminderInterval"), 15},
        {QStringLiteral("pausedReminderInterval"), 5},
        {QStringLiteral("reminderType"), 0},
        {QStringLiteral("idleMinutes"), 10},
        {QStringLiteral("startedFirstTime"), yes},
        {QStringLiteral("projectColor"), colorText(QColor::fromRgbF(1.0f, 0.56f, 0.53f, 1.0f))},
        {QStringLiteral("unfinishedEntryColor"),
         colorText(QColor::fromRgbF(1.0f, 1.0f, 0.67f, 1.0f))},
        {QStringLiteral("selectedFilterName"), QString()},
    };
}

void Preferences::registerDefaults(const QVariantMap &defaults) {
    for (auto it = defaults.cbegin(); it != defaults.cend(); ++it)
        m_defaults.insert(it.key(), it.value());
}

QVariant Preferences::objectForKey(QStringView key) const {
    const QString k = key.toString();
    const QVariant value = m_settings->value(k);
    if (value.isValid())
        return value;
    return m_defaults.value(k);
}

bool Preferences::boolForKey(QStringView key) const {
    return objectForKey(key).toBool();
}

int Preferences::integerForKey(QStringView key) const {
    const QVariant value = objectForKey(key);
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? 1 : 0;
    // Values read back from the file are texts; "true"/"false" stand for 1 and 0.
    const QString text = value.toString();
    if (text == u"true")
        return 1;
    if (text == u"false")
        return 0;
    return value.toInt();
}

float Preferences::floatForKey(QStringView key) const {
    return objectForKey(key).toFloat();
}

QString Preferences::stringForKey(QStringView key) const {
    return objectForKey(key).toString();
}

QDateTime Preferences::dateForKey(QStringView key) const {
    return objectForKey(key).toDateTime();
}

QColor Preferences::colorForKey(QStringView key) const {
    return colorFromText(stringForKey(key));
}

QTime Preferences::timeForKey(QStringView key) const {
    const QVariant value = objectForKey(key);
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().time();
    return value.toTime();
}

void Preferences::setObject(const QVariant &value, QStringView key) {
    const QString name = key.toString();
    const bool changed = !sameValue(objectForKey(name), value);
    m_settings->setValue(name, value);
    // Storing what is there already announces nothing: a listener that stores the value it was
    // told about is not told again.
    if (changed)
        emit valueChanged(name);
}

void Preferences::setColor(const QColor &color, QStringView key) {
    setObject(colorText(color), key);
}

void Preferences::removeObjectForKey(QStringView key) {
    const QString name = key.toString();
    m_settings->remove(name);
    emit valueChanged(name);
}

bool Preferences::synchronize() {
    m_settings->sync();
    if (m_settings->status() != QSettings::NoError) {
        qCWarning(lcPreferences) << "could not write" << m_settings->fileName();
        return false;
    }
    return true;
}

QString Preferences::filePath() const {
    return m_settings->fileName();
}

QString Preferences::colorText(const QColor &color) {
    float r = 0, g = 0, b = 0, a = 0;
    color.getRgbF(&r, &g, &b, &a);
    return StoredForms::floatText(r) + u' ' + StoredForms::floatText(g) + u' ' +
           StoredForms::floatText(b) + u' ' + StoredForms::floatText(a);
}

QColor Preferences::colorFromText(const QString &text) {
    const QStringList parts = text.split(u' ', Qt::SkipEmptyParts);
    if (parts.size() != 4)
        return {};
    float values[4];
    for (int i = 0; i < 4; ++i) {
        const auto v = StoredForms::parseFloat(parts[i]);
        if (!v || *v < 0 || *v > 1)
            return {};
        values[i] = *v;
    }
    return QColor::fromRgbF(values[0], values[1], values[2], values[3]);
}
