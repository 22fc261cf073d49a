#pragma once

#include <QProcess>
#include <QString>

// Runs a few lines of Python over a keyed-archive file with Python's plistlib, which knows
// nothing of this program: an independent check of what was written. The script sees `a` (the
// whole property list), `ref(uid)` (the object a reference points at), `cls(obj)` (its class
// name) and `root` (the root object). Returns what it printed, or its error output on failure.
inline QString runPlistScript(const QString &script, const QString &path) {
    const QString prelude = QStringLiteral(
        "import plistlib, sys\n"
        "a = plistlib.load(open(sys.argv[1], 'rb'))\n"
        "ref = lambda u: a['$objects'][u['CF$UID'] if isinstance(u, dict) else u.data]\n"
        "cls = lambda d: ref(d['$class'])['$classname']\n"
        "root = ref(a['$top']['root'])\n");
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), prelude + script, path});
    if (!python.waitForFinished(30000) || python.exitCode() != 0)
        return QString::fromUtf8(python.readAllStandardError());
    return QString::fromUtf8(python.readAllStandardOutput());
}
