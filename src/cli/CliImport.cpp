#include "CliImport.h"

#include "CliConsole.h"
#include "CliFileAccess.h"
#include "CliOptions.h"
#include "TextTable.h"
#include "import/DocumentImport.h"
#include "import/ImportSources.h"
#include "model/StoredForms.h"
#include "platform/ProjectFileLock.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

CliImport::CliImport(CliConsole &console, Preferences &preferences, CliFileAccess &file,
                     const QString &supportFolder)
    : m_console(console)
    , m_preferences(preferences)
    , m_file(file)
    , m_supportFolder(supportFolder) {}

int CliImport::run(const QStringList &args) {
    CliOptions options({u"--from"_s, u"--into"_s, u"--tag-pattern"_s},
                       {u"--dry-run"_s, u"--skip-problems"_s});
    if (!options.parse(args))
        return m_console.fail(options.error());
    if (options.words().size() != 1 || !options.has(u"--from"_s))
        return m_console.fail(u"import needs --from SOURCE and exactly one PATH"_s);
    const auto source = ImportSources::fromKey(options.value(u"--from"_s));
    if (!source)
        return m_console.fail(u"Unknown source \"%1\"; one of timewarrior, watson, hamster, "
                              u"ktimetracker, toggl, clockify"_s.arg(options.value(u"--from"_s)));
    if (options.has(u"--into"_s))
        m_file.setPath(options.value(u"--into"_s));
    const bool dryRun = options.isOn(u"--dry-run"_s);
    if (!dryRun && !m_file.hasPath())
        return m_file.failWithoutPath();
    const QString path = options.words().constFirst();
    const ImportResult result =
        ImportSources::reader(*source, options.value(u"--tag-pattern"_s))->read(path);
    if (!result.error.isEmpty())
        return m_console.fail(u"Cannot import: %1"_s.arg(result.error), CliConsole::Unreadable);
    printPreview(result, ImportSources::title(*source), path, m_file.path());
    if (dryRun)
        return CliConsole::Success;
    if (!result.problems.isEmpty() && !options.isOn(u"--skip-problems"_s))
        return m_console.fail(u"Nothing was imported: the source has %1 problem(s); give "
                              u"--skip-problems to import the rest"_s.arg(result.problems.size()));
    return write(result, m_file.path());
}

void CliImport::printPreview(const ImportResult &result, const QString &source, const QString &path,
                             const QString &target) {
    const QList<ImportResult::ProjectSummary> projects = result.projects();
    if (m_console.json()) {
        QJsonArray projectArray;
        for (const auto &project : projects)
            projectArray.append(QJsonObject{{u"name"_s, project.name},
                                            {u"customer"_s, project.customer},
                                            {u"entries"_s, project.entries},
                                            {u"minutes"_s, project.minutes},
                                            {u"running"_s, project.running}});
        QJsonArray problemArray;
        for (const ImportProblem &problem : result.problems)
            problemArray.append(
                QJsonObject{{u"where"_s, problem.where}, {u"problem"_s, problem.text}});
        m_console.out() << QString::fromUtf8(
            QJsonDocument(QJsonObject{{u"source"_s, source},
                                      {u"path"_s, path},
                                      {u"projects"_s, projectArray},
                                      {u"problems"_s, problemArray}})
                .toJson(QJsonDocument::Indented));
        return;
    }
    QTextStream &out = m_console.out();
    out << "Import from " << source << ": " << path;
    if (!target.isEmpty())
        out << " into " << target;
    out << '\n';
    TextTable table;
    table.addRow({u"Project"_s, u"Customer"_s, u"Entries"_s, u"Hours"_s, u"Running"_s});
    for (const auto &project : projects)
        table.addRow({project.name, project.customer, QString::number(project.entries),
                      StoredForms::durationText(project.minutes),
                      QString::number(project.running)});
    table.print(out);
    if (result.problems.isEmpty())
        return;
    out << "Problems (left out):\n";
    for (const ImportProblem &problem : result.problems)
        out << "  " << problem.where << ": " << problem.text << '\n';
}

int CliImport::write(const ImportResult &result, const QString &target) {
    if (!QFileInfo::exists(target)) {
        ProjectFileLock lock(target);
        if (!m_file.lock(lock))
            return CliConsole::Unreadable;
        const ProjectFile::SaveResult made = ProjectFile::save(target, {});
        if (!made.ok)
            return m_console.fail(u"Cannot write \"%1\": %2"_s.arg(target, made.error),
                                  CliConsole::Unreadable);
    }
    return m_file.change([&](CliDocument &document, QStringList &done) {
        const QString customersPath = m_supportFolder + u"/customers.plist"_s;
        std::unique_ptr<ProjectFileLock> customersLock;
        std::unique_ptr<CustomerStorage> customers;
        bool customersFailed = false;
        const auto customerId = [&](const QString &name) {
            if (!customers && !customersFailed) {
                QDir().mkpath(m_supportFolder);
                customersLock = std::make_unique<ProjectFileLock>(customersPath);
                customers =
                    std::make_unique<CustomerStorage>(customersPath, document, m_preferences);
                customersFailed = !m_file.lock(*customersLock) || !customers->loadCustomers().ok;
            }
            return customersFailed ? -1 : DocumentImport::customerNamed(*customers, name);
        };
        const ImportPlan plan = ImportPlan::make(result, document.projects(), customerId);
        if (customersFailed)
            return m_console.fail(u"Cannot read or lock \"%1\""_s.arg(customersPath),
                                  CliConsole::Unreadable);
        for (const auto &project : plan.newProjects) {
            document.addProject(project);
            document.sortEntriesOfProject(*project);
        }
        for (const auto &[project, items] : plan.additions) {
            for (const auto &item : items)
                project->addEntry(item);
            document.sortEntriesOfProject(*project);
        }
        document.setChanged();
        if (!plan.tags.isEmpty()) {
            QDir().mkpath(m_supportFolder);
            TagStorage tags(m_supportFolder + u"/tags.plist"_s);
            tags.loadTags();
            tags.addTagsFromArray(plan.tags);
        }
        if (!m_console.json())
            done << u"Imported %1 entries into \"%2\""_s.arg(result.entries.size()).arg(target);
        return int(CliConsole::Success);
    });
}
