#include "CliFileCommands.h"

#include "CliConsole.h"
#include "CliFileAccess.h"
#include "CliOptions.h"
#include "TextTable.h"
#include "model/ProjectBackups.h"
#include "model/StoredForms.h"
#include "platform/ProjectFileLock.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;

CliFileCommands::CliFileCommands(CliConsole &console, const CurrencyFormatter &currency,
                                 CliFileAccess &file)
    : m_console(console)
    , m_currency(currency)
    , m_file(file) {}

int CliFileCommands::check(const QStringList &args) {
    if (!m_console.takesNothing(u"check"_s, args))
        return CliConsole::BadArguments;
    if (!m_file.hasPath())
        return m_file.failWithoutPath();
    CliDocument document(m_file.path());
    const ProjectFile::LoadResult result = document.load(m_currency, m_file.order());
    if (!result.ok)
        return m_console.fail(u"Cannot read \"%1\": %2"_s.arg(document.path(), result.error),
                              CliConsole::Unreadable);
    int timed = 0, flatFees = 0, running = 0, paused = 0;
    for (const auto &project : document.projects()) {
        for (const auto &item : project->entries()) {
            if (item->isFlatFee()) {
                ++flatFees;
                continue;
            }
            ++timed;
            if (item->isPaused())
                ++paused;
            else if (item->isWorking())
                ++running;
        }
    }
    m_console.out() << u"%1: %2 projects, %3 timed entries, %4 flat fees, %5 running, %6 paused"_s
                           .arg(document.path())
                           .arg(document.projects().size())
                           .arg(timed)
                           .arg(flatFees)
                           .arg(running)
                           .arg(paused)
                    << '\n';
    if (result.recovered)
        return m_console.fail(u"Only the forgiving parse could read the file (%1); the original "
                              u"is kept as \"%2\""_s.arg(result.damage, result.backupPath),
                              CliConsole::Recovered);
    if (!result.unreadable.isEmpty())
        return m_console.fail(
            u"Values could not be read and are left empty (%1); the original is "
            u"kept as \"%2\""_s.arg(result.unreadable.join(u' '), result.backupPath),
            CliConsole::Recovered);
    return CliConsole::Success;
}

int CliFileCommands::convert(const QStringList &args) {
    CliOptions options({u"--output"_s});
    if (!options.parse(args))
        return m_console.fail(options.error());
    if (!options.words().isEmpty() || options.value(u"--output"_s).isEmpty())
        return m_console.fail(u"convert needs --output PATH and nothing else"_s);
    if (!m_file.hasPath())
        return m_file.failWithoutPath();
    const QString target = QFileInfo(options.value(u"--output"_s)).absoluteFilePath();
    const QString written = u"Wrote \"%1\" in the current layout"_s.arg(target);
    if (target == CliDocument(m_file.path()).path()) {
        return m_file.change([&](CliDocument &document, QStringList &done) {
            document.setChanged();
            done << written;
            return int(CliConsole::Success);
        });
    }
    return m_file.read([&](CliDocument &document) {
        ProjectFileLock lock(target);
        if (!m_file.lock(lock))
            return int(CliConsole::Unreadable);
        const ProjectFile::SaveResult saved = ProjectFile::save(target, document.projects());
        if (!saved.ok)
            return m_console.fail(u"Cannot write \"%1\": %2"_s.arg(target, saved.error),
                                  CliConsole::Unreadable);
        m_console.out() << written << '\n';
        return int(CliConsole::Success);
    });
}

int CliFileCommands::backups(const QStringList &args) {
    if (!m_console.takesNothing(u"backups"_s, args))
        return CliConsole::BadArguments;
    QJsonArray array;
    TextTable table;
    table.addRow({u"Date"_s, u"Document"_s, u"Projects"_s, u"Entries"_s, u"Hours"_s, u"Path"_s});
    const QList<ProjectBackups::Copy> copies =
        ProjectBackups(ProjectBackups::sharedFolder()).copies();
    for (const auto &copy : copies) {
        const ProjectBackups::Summary summary = ProjectBackups::summarize(copy.path);
        if (!summary.ok)
            m_console.warn(u"Cannot read \"%1\": %2"_s.arg(copy.path, summary.error));
        if (m_console.json()) {
            QJsonObject object{{u"made"_s, copy.made.toString(Qt::ISODate)},
                               {u"document"_s, copy.documentName},
                               {u"path"_s, copy.path},
                               {u"readable"_s, summary.ok}};
            if (summary.ok) {
                object.insert(u"projects"_s, summary.projects);
                object.insert(u"entries"_s, summary.entries);
                object.insert(u"minutes"_s, summary.minutes);
            }
            array.append(object);
            continue;
        }
        const auto count = [&summary](int value) {
            return summary.ok ? QString::number(value) : u"-"_s;
        };
        table.addRow({copy.made.toLocalTime().toString(u"yyyy-MM-dd HH:mm"_s), copy.documentName,
                      count(summary.projects), count(summary.entries),
                      summary.ok ? StoredForms::durationText(summary.minutes) : u"-"_s, copy.path});
    }
    if (m_console.json())
        m_console.printJson(array);
    else if (copies.isEmpty())
        m_console.out() << u"No backups in %1\n"_s.arg(ProjectBackups::sharedFolder());
    else
        table.print(m_console.out());
    return CliConsole::Success;
}
