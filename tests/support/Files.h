#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

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

// A data row "input" for every file kept under tests/data/fuzz-regressions/<reader>/: inputs that
// once crashed the reader, which must now read to a result or a clean error.
inline void addFuzzRegressionRows(const QString &reader) {
    QTest::addColumn<QByteArray>("input");
    const QDir folder(QStringLiteral(HOURFOLD_TEST_DATA "/fuzz-regressions/") + reader);
    for (const QFileInfo &file : folder.entryInfoList(QDir::Files, QDir::Name))
        QTest::newRow(qPrintable(file.fileName())) << readFile(file.filePath());
}
