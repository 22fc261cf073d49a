#pragma once

#include <QColor>
#include <QDateTime>
#include <QSettings>
#include <QString>
#include <QVariantMap>
#include <memory>

// The user's preferences: a settings file with a table of registered defaults underneath. A
// registered default answers only while the user has no value of their own.
class Preferences : public QObject {
    Q_OBJECT

public:
    explicit Preferences(const QString &filePath, QObject *parent = nullptr);

    // The process-wide preferences (~/.config/Hourfold/Hourfold3.conf). setShared() puts another
    // instance in its place (not owned); nullptr goes back to the default one.
    static Preferences &shared();
    static void setShared(Preferences *preferences);
    static QString defaultFilePath();

    // The table of keys and their defaults.
    static QVariantMap registeredDefaults();
    void registerDefaults(const QVariantMap &defaults);

    QVariant objectForKey(QStringView key) const;
    bool boolForKey(QStringView key) const;
    int integerForKey(QStringView key) const;
    float floatForKey(QStringView key) const;
    QString stringForKey(QStringView key) const;
    QDateTime dateForKey(QStringView key) const;
    QTime timeForKey(QStringView key) const;
    // Colours are kept losslessly as four decimal numbers "r g b a" (0..1).
    QColor colorForKey(QStringView key) const;

    // Stores the value; valueChanged() follows only when it differs from what the key answered.
    void setObject(const QVariant &value, QStringView key);
    void setColor(const QColor &color, QStringView key);
    void removeObjectForKey(QStringView key);
    // Writes pending changes; false when the file could not be written.
    bool synchronize();

    QString filePath() const;

    static QString colorText(const QColor &color);
    static QColor colorFromText(const QString &text);

signals:
    // The value under the key changed (set to another value, or removed).
    void valueChanged(const QString &key);

private:
    std::unique_ptr<QSettings> m_settings;
    QVariantMap m_defaults;
};
