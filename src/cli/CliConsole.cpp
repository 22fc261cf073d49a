#include "CliConsole.h"

#include <QJsonDocument>

int CliConsole::fail(const QString &message, int status) {
    warn(message);
    return status;
}

bool CliConsole::takesNothing(const QString &command, const QStringList &args) {
    if (args.isEmpty())
        return true;
    fail(QStringLiteral("%1 takes no arguments").arg(command));
    return false;
}

void CliConsole::warn(const QString &message) {
    m_err << message << '\n';
    m_err.flush();
}

void CliConsole::bell() {
    m_err << '\a';
    m_err.flush();
}

void CliConsole::printJson(const QJsonArray &array) {
    m_out << QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented));
}
