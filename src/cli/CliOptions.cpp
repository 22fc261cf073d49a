#include "CliOptions.h"

using namespace Qt::StringLiterals;

CliOptions::CliOptions(const QStringList &valued, const QStringList &switches)
    : m_valued(valued.cbegin(), valued.cend())
    , m_switches(switches.cbegin(), switches.cend()) {}

bool CliOptions::parse(const QStringList &arguments) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (!argument.startsWith(u"--") || argument == u"--") {
            m_words.append(argument);
            continue;
        }
        const qsizetype equals = argument.indexOf(u'=');
        const QString name = equals < 0 ? argument : argument.left(equals);
        if (m_on.contains(name) || m_values.contains(name)) {
            m_error = u"%1 is given twice"_s.arg(name);
            return false;
        }
        if (m_switches.contains(name) && equals < 0) {
            m_on.insert(name);
            continue;
        }
        if (!m_valued.contains(name)) {
            m_error = u"Unknown option \"%1\""_s.arg(argument);
            return false;
        }
        if (equals >= 0) {
            m_values.insert(name, argument.mid(equals + 1));
        } else if (i + 1 < arguments.size()) {
            m_values.insert(name, arguments[++i]);
        } else {
            m_error = u"%1 needs a value"_s.arg(name);
            return false;
        }
    }
    return true;
}
