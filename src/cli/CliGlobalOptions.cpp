#include "CliGlobalOptions.h"

#include "CliValues.h"

using namespace Qt::StringLiterals;

namespace {

// A day is as long as anyone would wait, and its milliseconds fit an int.
constexpr int longestWait = 86400;

} // namespace

bool CliGlobalOptions::takeValue(const QStringList &arguments, qsizetype &i, QString &value) {
    const qsizetype equals = arguments[i].indexOf(u'=');
    if (equals >= 0) {
        value = arguments[i].mid(equals + 1);
        return true;
    }
    if (i + 1 >= arguments.size())
        return false;
    value = arguments[++i];
    return true;
}

bool CliGlobalOptions::parse(const QStringList &arguments) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        const QString name = argument.section(u'=', 0, 0);
        if (argument == u"--help") {
            (m_rest.isEmpty() ? m_help : m_commandHelp) = true;
            return true;
        } else if (argument == u"--version") {
            m_version = true;
            return true;
        } else if (argument == u"--json") {
            m_json = true;
        } else if (name == u"--file") {
            if (!takeValue(arguments, i, m_file) || m_file.isEmpty()) {
                m_error = u"--file needs a path"_s;
                return false;
            }
        } else if (name == u"--wait") {
            QString seconds;
            const std::optional<int> value = takeValue(arguments, i, seconds)
                                                 ? CliValues::integer(seconds, 0, longestWait)
                                                 : std::nullopt;
            if (!value) {
                m_error = u"--wait takes a whole number of seconds from 0 to %1"_s.arg(longestWait);
                return false;
            }
            m_waitSeconds = *value;
        } else if (m_rest.isEmpty() && argument.startsWith(u"--")) {
            // Before the command only these options stand; after it, the command's own follow.
            m_error = u"Unknown option \"%1\""_s.arg(argument);
            return false;
        } else {
            m_rest.append(argument);
        }
    }
    return true;
}
