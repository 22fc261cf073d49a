#include "CliHelp.h"
#include "support/RunProgram.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// Builds the Debian package from the build tree as `make package` does, and checks what a user who
// installs it gets: everything under /usr, libraries found by dpkg-shlibdeps, binaries that do not
// look into the build tree, programs that start from the unpacked package, manual pages and the
// software centres' entry.
class TestPackage : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QVERIFY(m_work.isValid());
        const Run cpack = run(QStringLiteral(HOURFOLD_CPACK_COMMAND),
                              {u"-G"_s, u"DEB"_s, u"--config"_s,
                               QStringLiteral(HOURFOLD_BUILD_DIR "/CPackConfig.cmake"), u"-B"_s,
                               m_work.filePath(u"out"_s)});
        QVERIFY2(cpack.exitCode == 0, qPrintable(cpack.output));
        const QStringList packages =
            QDir(m_work.filePath(u"out"_s)).entryList({u"*.deb"_s}, QDir::Files);
        QCOMPARE(packages.size(), 1);
        m_package = m_work.filePath(u"out/"_s + packages.first());
        const Run listing = run(u"dpkg-deb"_s, {u"--contents"_s, m_package});
        QVERIFY2(listing.exitCode == 0, qPrintable(listing.output));
        for (const QString &line : listing.output.split(u'\n', Qt::SkipEmptyParts))
            m_files.append(line.section(u' ', -1).section(u" -> "_s, 0, 0));
        const Run extract = run(u"dpkg-deb"_s, {u"--extract"_s, m_package, root()});
        QVERIFY2(extract.exitCode == 0, qPrintable(extract.output));
    }

    void contents_data() {
        QTest::addColumn<QString>("file");
        for (const char *file :
             {"usr/bin/hourfold", "usr/bin/hourfold-cli", "usr/share/hourfold/quickfilters.plist",
              "usr/share/hourfold/Styles/Simple.hfstyle/report.html",
              "usr/share/hourfold/images/hourfold.svg", "usr/share/applications/hourfold.desktop",
              "usr/share/mime/packages/hourfold.xml",
              "usr/share/icons/hicolor/48x48/apps/hourfold.png",
              "usr/share/icons/hicolor/scalable/apps/hourfold.svg",
              "usr/share/metainfo/org.hourfold.Hourfold.metainfo.xml",
              "usr/share/bash-completion/completions/hourfold-cli",
              "usr/share/man/man1/hourfold.1.gz", "usr/share/man/man1/hourfold-cli.1.gz",
              "usr/share/doc/hourfold/copyright", "usr/share/doc/hourfold/changelog.gz"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }
    void contents() {
        QFETCH(QString, file);
        QVERIFY2(m_files.contains(u"./"_s + file), qPrintable(m_files.join(u'\n')));
    }

    void everythingUnderUsr() {
        for (const QString &file : std::as_const(m_files))
            QVERIFY2(file == u"./" || file.startsWith(u"./usr/"), qPrintable(file));
    }

    // The Qt, ICU, XML and property-list libraries come from the binaries, not from a list.
    void librariesFound() {
        const Run depends = run(u"dpkg-deb"_s, {u"--field"_s, m_package, u"Depends"_s});
        QCOMPARE(depends.exitCode, 0);
        for (const QString &library :
             {u"libqt6widgets6"_s, u"libicu"_s, u"libxml2"_s, u"libplist"_s})
            QVERIFY2(depends.output.contains(library), qPrintable(depends.output));
    }

    void programs_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("version");
        QTest::newRow("desktop program") << u"hourfold"_s << u"Hourfold " HOURFOLD_VERSION "\n"_s;
        QTest::newRow("command line")
            << u"hourfold-cli"_s << u"hourfold-cli " HOURFOLD_VERSION "\n"_s;
    }
    // The unpacked programs look for no library in the build tree, and tell their version without
    // a display and without touching the home folder.
    void programs() {
        QFETCH(QString, program);
        const QString path = root() + u"/usr/bin/"_s + program;
        const Run dynamic = run(u"readelf"_s, {u"--dynamic"_s, path});
        QCOMPARE(dynamic.exitCode, 0);
        QVERIFY2(!dynamic.output.contains(QStringLiteral(HOURFOLD_BUILD_DIR)),
                 qPrintable(dynamic.output));
        QTemporaryDir home;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(name);
        environment.insert(u"HOME"_s, home.path());
        const Run version = run(path, {u"--version"_s}, environment);
        QCOMPARE(version.exitCode, 0);
        QTEST(version.output, "version");
        QCOMPARE(
            QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
            QStringList());
    }

    // The command line's page has a section for every command.
    void manualPage() {
        const Run page =
            run(u"man"_s, {u"-l"_s, root() + u"/usr/share/man/man1/hourfold-cli.1.gz"_s});
        QCOMPARE(page.exitCode, 0);
        for (const QString &command : CliHelp::commands()) {
            const QRegularExpression heading(u"\n   %1\n"_s.arg(command));
            QVERIFY2(page.output.contains(heading), qPrintable(command));
        }
    }

    void metainfoValid() {
        const Run validate =
            run(u"appstreamcli"_s,
                {u"validate"_s, u"--no-net"_s,
                 root() + u"/usr/share/metainfo/org.hourfold.Hourfold.metainfo.xml"_s});
        QVERIFY2(validate.exitCode == 0, qPrintable(validate.output));
    }

private:
    QString root() const { return m_work.filePath(u"root"_s); }

    QTemporaryDir m_work;
    QString m_package;
    QStringList m_files;
};

QTEST_GUILESS_MAIN(TestPackage)
#include "tst_package.moc"
