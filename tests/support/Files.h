#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

// The whole content of a file; empty when it cannot be read.
inline QByteArray readFile(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Writes the bytes as the whole file, creating its folder; false when that fails.
inline bool writeFile(const QString &path, const QByteArray &bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}
