#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>

// The arguments of one command: words in order, and options written "--name value",
// "--name=value" or, for switches, "--name". An option that the command does not take, one given
// twice and a missing value are refused with a message naming them.
class CliOptions {
public:
    CliOptions(const QStringList &valued, const QStringList &switches = {});

    // False, with error() saying why, when the arguments do not fit.
    bool parse(const QStringList &arguments);
    QString error() const { return m_error; }

    const QStringList &words() const { return m_words; }
    bool has(const QString &option) const { return m_values.contains(option); }
    QString value(const QString &option) const { return m_values.value(option); }
    bool isOn(const QString &option) const { return m_on.contains(option); }

private:
    QSet<QString> m_valued;
    QSet<QString> m_switches;
    QStringList m_words;
    QHash<QString, QString> m_values;
    QSet<QString> m_on;
    QString m_error;
};
