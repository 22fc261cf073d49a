#include "CliFileAccess.h"

#include "CliConsole.h"
#include "platform/ProjectFileLock.h"

using namespace Qt::StringLiterals;

CliFileAccess::CliFileAccess(CliConsole &console, const CurrencyFormatter &currency,
                             const Preferences &preferences)
    : m_console(console)
    , m_currency(currency)
    , m_order(preferences) {}

int CliFileAccess::failWithoutPath() {
    return m_console.fail(u"No project file: give --file PATH"_s);
}

bool CliFileAccess::lock(ProjectFileLock &lock) {
    if (lock.lock(m_lockWaitSeconds * 1000))
        return true;
    m_console.warn(lock.errorString());
    return false;
}

bool CliFileAccess::load(CliDocument &document) {
    const ProjectFile::LoadResult result = document.load(m_currency, m_order);
    if (!result.ok) {
        m_console.warn(u"Cannot read \"%1\": %2"_s.arg(document.path(), result.error));
        return false;
    }
    if (result.recovered)
        m_console.warn(u"Warning: only the forgiving parse could read \"%1\"; the original is kept "
                       u"as \"%2\""_s.arg(document.path(), result.backupPath));
    if (!result.unreadable.isEmpty())
        m_console.warn(u"Warning: values in \"%1\" could not be read and are left empty (the "
                       u"original is kept as \"%2\"): %3"_s.arg(document.path(), result.backupPath,
                                                                result.unreadable.join(u' ')));
    return true;
}

int CliFileAccess::read(const Reader &reader) {
    if (!hasPath())
        return failWithoutPath();
    CliDocument document(m_path);
    if (!load(document))
        return CliConsole::Unreadable;
    return reader(document);
}

int CliFileAccess::change(const Change &apply) {
    if (!hasPath())
        return failWithoutPath();
    CliDocument document(m_path);
    ProjectFileLock fileLock(document.path());
    if (!lock(fileLock) || !load(document))
        return CliConsole::Unreadable;
    QStringList done;
    const int result = apply(document, done);
    if (result != CliConsole::Success)
        return result;
    if (document.isChanged()) {
        const ProjectFile::SaveResult saved = document.save();
        if (!saved.ok)
            return m_console.fail(u"Cannot write \"%1\": %2"_s.arg(document.path(), saved.error),
                                  CliConsole::Unreadable);
    }
    for (const QString &line : std::as_const(done))
        m_console.out() << line << '\n';
    return CliConsole::Success;
}

int CliFileAccess::changeProject(const QString &projectName, const ProjectChange &apply) {
    return change([&](CliDocument &document, QStringList &done) {
        const auto project = document.projectNamed(projectName);
        if (!project)
            return m_console.fail(u"Unknown project \"%1\""_s.arg(projectName));
        const int result = apply(document, *project, done);
        if (result == CliConsole::Success)
            document.setChanged();
        return result;
    });
}
