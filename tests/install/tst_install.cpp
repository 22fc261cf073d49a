#include "support/Files.h"
#include "support/RunProgram.h"

#include <QImage>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

const QString projectsDocument = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--1.5-->\n"
                                 "<projects>\n\t<project>\n\t\t<name>Web</name>\n"
                                 "\t</project>\n</projects>\n"_s;

} // namespace

// Installs the build into a temporary prefix as `cmake --install` does for a user, and checks
// what a desktop finds there: the programs, their resources, the menu entry, the icon and the
// project file type.
class TestInstall : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(m_prefix.isValid());
        QVERIFY(m_dataHome.isValid());
        const Run install = run(
            QStringLiteral(HOURFOLD_CMAKE_COMMAND),
            {u"--install"_s, QStringLiteral(HOURFOLD_BUILD_DIR), u"--prefix"_s, m_prefix.path()});
        QVERIFY2(install.exitCode == 0, qPrintable(install.output));
        // File types as seen with only the installed package: Qt 6.4 lets the content rule of a
        // later data folder replace a better one of an earlier folder, so the system's generic
        // XML rule would hide this package's rule here (GLib's lookup, used by file managers,
        // ranks the two by priority).
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_dataHome.path()));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(path(u"share"_s)));
    }

    void installedFiles_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("executable");
        QTest::newRow("program") << u"bin/hourfold"_s << true;
        QTest::newRow("command line") << u"bin/hourfold-cli"_s << true;
        QTest::newRow("quick filters") << u"share/hourfold/quickfilters.plist"_s << false;
        QTest::newRow("Simple style")
            << u"share/hourfold/Styles/Simple.hfstyle/report.html"_s << false;
        QTest::newRow("Invoice style")
            << u"share/hourfold/Styles/Invoice.hfstyle/report.html"_s << false;
        QTest::newRow("menu entry") << u"share/applications/hourfold.desktop"_s << false;
        QTest::newRow("file type") << u"share/mime/packages/hourfold.xml"_s << false;
        QTest::newRow("scalable icon")
            << u"share/icons/hicolor/scalable/apps/hourfold.svg"_s << false;
    }
    void installedFiles() {
        QFETCH(QString, file);
        const QFileInfo info(path(file));
        QVERIFY2(info.isFile() && info.size() > 0, qPrintable(file));
        QTEST(info.isExecutable(), "executable");
    }

    // Every picture of the build's resource folder is installed where the program looks.
    void images() {
        const QStringList built = QDir(QStringLiteral(HOURFOLD_RESOURCE_DIR "/images"))
                                      .entryList(QDir::Files, QDir::Name);
        QVERIFY(built.contains(u"hourfold.svg"_s));
        QCOMPARE(QDir(path(u"share/hourfold/images"_s)).entryList(QDir::Files, QDir::Name), built);
    }

    void iconBitmaps_data() {
        QTest::addColumn<int>("size");
        for (int size : {16, 22, 24, 32, 48, 64, 128, 256})
            QTest::addRow("%d", size) << size;
    }

    // The bitmaps have their theme folder's size, a transparent rounded corner and a drawn
    // middle.
    void iconBitmaps() {
        QFETCH(int, size);
        const QImage icon(path(u"share/icons/hicolor/%1x%1/apps/hourfold.png"_s.arg(size)));
        QVERIFY(!icon.isNull());
        QCOMPARE(icon.size(), QSize(size, size));
        QCOMPARE(qAlpha(icon.pixel(0, size - 1)), 0);
        QCOMPARE(qAlpha(icon.pixel(size / 2, size / 2)), 255);
    }

    // The menu entry is valid, starts an installed program, shows the installed icon and offers
    // itself for the installed file type.
    void desktopFile() {
        const QString desktop = path(u"share/applications/hourfold.desktop"_s);
        const Run validate = run(u"desktop-file-validate"_s, {desktop});
        QVERIFY2(validate.exitCode == 0, qPrintable(validate.output));
        QCOMPARE(validate.output, QString());
        QHash<QString, QString> keys;
        for (const QString &line : QString::fromUtf8(readFile(desktop)).split(u'\n')) {
            const qsizetype equals = line.indexOf(u'=');
            if (equals > 0)
                keys.insert(line.left(equals), line.mid(equals + 1));
        }
        QVERIFY(QFileInfo(path(u"bin/"_s + keys.value(u"Exec"_s).section(u' ', 0, 0))).isFile());
        QVERIFY(QFileInfo::exists(
            path(u"share/icons/hicolor/scalable/apps/%1.svg"_s.arg(keys.value(u"Icon"_s)))));
        const QStringList offered = keys.value(u"MimeType"_s).split(u';', Qt::SkipEmptyParts);
        const QStringList declared = declaredTypes();
        QVERIFY(!declared.isEmpty());
        for (const QString &type : declared)
            QVERIFY2(offered.contains(type), qPrintable(type));
    }

    // The file type package is well-formed and the shared MIME database builds from it without a
    // message (update-mime-database reports a bad rule in a message but still exits with 0).
    void mimeDatabaseBuilds() {
        const Run lint =
            run(u"xmllint"_s, {u"--noout"_s, path(u"share/mime/packages/hourfold.xml"_s)});
        QVERIFY2(lint.exitCode == 0, qPrintable(lint.output));
        const Run update = run(u"update-mime-database"_s, {path(u"share/mime"_s)});
        QVERIFY2(update.exitCode == 0, qPrintable(update.output));
        QCOMPARE(update.output, QString());
        QVERIFY(QFileInfo::exists(path(u"share/mime/application/x-hourfold-projects.xml"_s)));
    }

    void detectsProjectFiles_data() {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("content");
        QTest::addColumn<bool>("projects");
        QTest::newRow("by name") << u"Work.projects"_s << u"notes"_s << true;
        QTest::newRow("by content") << u"backup"_s << projectsDocument << true;
        QTest::newRow("other XML")
            << u"invoice"_s << u"<?xml version=\"1.0\"?>\n<invoice><customer/></invoice>\n"_s
            << false;
    }
    void detectsProjectFiles() {
        QFETCH(QString, fileName);
        QFETCH(QString, content);
        QFETCH(bool, projects);
        const QString file = m_dataHome.filePath(fileName);
        QVERIFY(writeFile(file, content.toUtf8()));
        const QMimeType detected = QMimeDatabase().mimeTypeForFile(file);
        QCOMPARE(detected.name() == u"application/x-hourfold-projects", projects);
        if (projects) {
            QCOMPARE(detected.comment(), u"Hourfold projects"_s);
            QCOMPARE(detected.iconName(), u"hourfold"_s);
            QVERIFY(detected.inherits(u"application/xml"_s));
        }
    }

private:
    QString path(const QString &relative) const { return m_prefix.filePath(relative); }

    QStringList declaredTypes() const {
        QFile file(path(u"share/mime/packages/hourfold.xml"_s));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QStringList types;
        QXmlStreamReader xml(&file);
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"mime-type")
                types.append(xml.attributes().value(u"type"_s).toString());
        }
        return types;
    }

    QTemporaryDir m_prefix;
    QTemporaryDir m_dataHome;
};

QTEST_MAIN(TestInstall)
#include "tst_install.moc"
