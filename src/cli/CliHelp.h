#pragma once

#include <QString>
#include <QStringList>

// The texts of hourfold-cli --help and COMMAND --help.
class CliHelp {
public:
    // Every command, in the order of the general help.
    static const QStringList &commands();
    static QString general();
    // Empty for an unknown command.
    static QString command(const QString &name);
};
