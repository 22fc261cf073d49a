#pragma once

#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

// What a program run to its end said and how it ended.
struct Run {
    int exitCode = -1;
    QString output;
};

// Runs a program (a path, or a name looked up on the PATH) with its standard output and error
// joined.
inline Run run(const QString &program, const QStringList &arguments,
               const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment()) {
    const QString path = program.contains(u'/') ? program : QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return {-1, program + QStringLiteral(" is not installed (scripts/bootstrap installs it)")};
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(path, arguments);
    process.waitForFinished(-1);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromLocal8Bit(process.readAll())};
}
