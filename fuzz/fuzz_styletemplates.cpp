// A style's templates filled with the projects of tests/data/current-layout.xml. The input is split
// at NUL bytes into report.html, project.template, entry.template and flatfeeentry.template of the
// style, then a text that becomes every project's description and every entry's comment, so that
// placeholders also arrive inside values.

#include "FuzzSetup.h"
#include "export/HTMLExporter.h"
#include "model/ProjectCollection.h"
#include "model/ProjectFile.h"
#include "platform/AtomicFile.h"
#include "platform/Preferences.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

struct Scene {
    // On tmpfs where there is one: every input writes the templates and the report.
    QTemporaryDir folder{QDir(QStringLiteral("/dev/shm")).exists()
                             ? QStringLiteral("/dev/shm/hourfold-fuzz-XXXXXX")
                             : QDir::tempPath() + QStringLiteral("/hourfold-fuzz-XXXXXX")};
    Preferences preferences{folder.filePath(QStringLiteral("Hourfold3.conf"))};
    ProjectCollection collection{preferences};
    QStringList names;
};

Scene *scene = nullptr;

QByteArray readAll(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    FuzzSetup::prepare();
    scene = new Scene;
    Preferences::setShared(&scene->preferences);
    QDir(scene->folder.path()).mkpath(QStringLiteral("style.hfstyle"));
    const auto read =
        ProjectFile::read(readAll(QStringLiteral(HOURFOLD_TEST_DATA "/current-layout.xml")));
    for (const auto &project : read.projects) {
        scene->collection.addProject(project);
        scene->names.append(project->name());
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QList<QByteArray> parts =
        QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)).split('\0');
    const QString style = scene->folder.filePath(QStringLiteral("style.hfstyle"));
    const char *const templates[] = {"report.html", "project.template", "entry.template",
                                     "flatfeeentry.template"};
    for (qsizetype i = 0; i < 4; ++i) {
        const QString path = style + u'/' + QLatin1StringView(templates[i]);
        if (i < parts.size())
            AtomicFile::write(path, parts[i]);
        else
            QFile::remove(path);
    }
    const QString text = parts.size() > 4 ? QString::fromUtf8(parts[4]) : QString();
    for (const auto &project : scene->collection.projectArray()) {
        project->setDescription(text);
        for (const auto &item : project->entries())
            item->setComment(text);
    }
    HTMLExporter exporter(style, nullptr);
    exporter.setProjectCollection(&scene->collection);
    exporter.exportProjects(scene->names, {}, {}, scene->folder.path(), false, {});
    return 0;
}
