#pragma once

// Runs the real hourfold-cli on temporary project files, with a temporary home for its
// preferences and customers: what the command-line tests share.

#include "model/ProjectFile.h"
#include "support/ExportSamples.h"
#include "support/Files.h"

#include <QProcess>
#include <QtTest>

struct Outcome {
    int exitCode = -1;
    QString out;
    QString err;
};

// Environment variables to set for one run; an empty value removes the variable.
using Environment = QHash<QString, QString>;

class CliRun {
protected:
    // Once per test program: the temporary home, also for this process.
    void setUpCase() {
        QVERIFY(m_home.isValid());
        // This process reads the same preferences path as the child processes.
        const QProcessEnvironment env = environment();
        for (const QString &key : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s})
            qputenv(key.toUtf8().constData(), env.value(key).toUtf8());
        m_file = m_home.filePath(u"work.hourfold"_s);
    }

    // Before each test: the customers, no preferences or filters, and the document of two
    // projects: Alpha (a day entry, a period entry, a flat fee) and Beta (empty).
    void setUp() {
        // Customer 2 is hidden; no project of this document has it.
        writeCustomers({customer(u"ACME"_s, 7), customer(u"Zed"_s, 2, false)});
        QFile::remove(Preferences::defaultFilePath());
        QFile::remove(m_home.filePath(u"data/Hourfold3/filters.plist"_s));
        auto day = commented(dayEntry(u"03.03.2025"_s, 90), u"first"_s, true);
        day->setTags(u"a,b"_s);
        auto alpha = project(u"Alpha"_s, 60.0f, 7);
        alpha->setDescription(u"Main work"_s);
        for (const auto &item :
             ItemList{day,
                      commented(periodEntry(u"04.03.2025 09:00"_s, u"04.03.2025 10:30"_s),
                                u"line1\nline2"_s),
                      flatFee(u"05.03.2025"_s, 25.0f)})
            alpha->addEntry(item);
        QFile::remove(m_file);
        QVERIFY(ProjectFile::save(m_file, {alpha, project(u"Beta"_s)}).ok);
    }

    // With a moment ("2026-11-22 10:07:30"), the program runs under faketime at that moment.
    Outcome run(const QStringList &arguments, const Environment &changes = {},
                const QString &moment = {}) const {
        QProcess process;
        process.setProcessEnvironment(environment(changes));
        if (moment.isEmpty())
            process.start(QStringLiteral(HOURFOLD_CLI_PATH), arguments);
        else
            process.start(u"faketime"_s,
                          QStringList{moment, QStringLiteral(HOURFOLD_CLI_PATH)} + arguments);
        Outcome outcome;
        if (!process.waitForFinished(30000))
            return outcome;
        outcome.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
        outcome.out = QString::fromUtf8(process.readAllStandardOutput());
        outcome.err = QString::fromUtf8(process.readAllStandardError());
        return outcome;
    }

    Outcome onFile(const QStringList &arguments, const Environment &changes = {},
                   const QString &moment = {}) const {
        return run(QStringList{u"--file"_s, m_file} + arguments, changes, moment);
    }

    QProcessEnvironment environment(const Environment &changes = {}) const {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"HOME"_s, m_home.path());
        env.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u"config"_s));
        env.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"data"_s));
        env.insert(u"LANG"_s, u"en_US.UTF-8"_s);
        for (const char *name : {"LC_ALL", "LC_MONETARY", "LC_TIME", "LANGUAGE"})
            env.remove(QString::fromLatin1(name));
        env.insert(u"PATH"_s, QFileInfo(QStringLiteral(HOURFOLD_CLI_PATH)).absolutePath() + u':' +
                                  env.value(u"PATH"_s));
        for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
            if (it.value().isEmpty())
                env.remove(it.key());
            else
                env.insert(it.key(), it.value());
        }
        return env;
    }

    ProjectList reload() const {
        const ProjectFile::LoadResult result = ProjectFile::load(m_file);
        return result.ok ? result.projects : ProjectList();
    }

    std::shared_ptr<Entry> firstOfBeta() const {
        return std::dynamic_pointer_cast<Entry>(reload().at(1)->entries().value(0));
    }

    // Beta rounds as given from now on.
    void roundBeta(int what, int to, int type) const {
        ProjectList projects = reload();
        projects[1]->setRoundWhat(what);
        projects[1]->setRoundTo(to);
        projects[1]->setRoundType(type);
        QVERIFY(ProjectFile::save(m_file, projects).ok);
    }

    void writeCustomers(const QList<Customer::Pointer> &customers) const {
        QVERIFY(writeFile(customersPath(), Customer::archiveList(customers)));
    }

    void writePreferences(const QVariantMap &values) const {
        Preferences preferences(Preferences::defaultFilePath());
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            preferences.setObject(it.value(), it.key());
        QVERIFY(preferences.synchronize());
    }

    QString customersPath() const { return m_home.filePath(u"data/Hourfold3/customers.plist"_s); }

    QTemporaryDir m_home;
    QString m_file;
};
