#include "CliGlobalOptions.h"

using namespace Qt::StringLiterals;

bool CliGlobalOptions::parse(const QStringList &arguments) {
    m_rest = arguments;
    while (!m_rest.isEmpty() && m_rest.constFirst().startsWith(u"--")) {
        const QString option = m_rest.takeFirst();
        if (option == u"--help") {
            m_help = true;
            return true;
        } else if (option == u"--json") {
            m_json = true;
        } else if (option == u"--file" || option.startsWith(u"--file=")) {
            if (option == u"--file")
                m_file = m_rest.isEmpty() ? QString() : m_rest.takeFirst();
            else
                m_file = option.mid(7);
            if (m_file.isEmpty()) {
                m_error = u"--file needs a path"_s;
                return false;
            }
        } else {
            m_error = u"Unknown option \"%1\""_s.arg(option);
            return false;
        }
    }
    return true;
}
