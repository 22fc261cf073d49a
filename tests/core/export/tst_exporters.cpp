#include "export/CSVExporter.h"
#include "model/ProjectCollection.h"
#include "platform/AtomicFile.h"
#include "support/ExportSamples.h"
#include "support/FakeCustomers.h"
#include "support/FileFailures.h"
#include "support/Files.h"

#include <QStringDecoder>
#include <QTest>
#include <clocale>

using Fields = QList<bool>;

namespace {

const Fields allOn{true, true, true, true, true};
const Fields allOff{false, false, false, false, false};

// All fields off but the one at the index, or all on but that one.
Fields only(int index, const Fields &others = allOff) {
    Fields fields = others;
    fields[index] = !others[index];
    return fields;
}

} // namespace

// A null line ending stands for the text report, any other for CSV with that line ending.
class TestExporters : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_collection = std::make_unique<ProjectCollection>(*m_settings);
        m_collection->setCurrencyFormatter(&m_settings.dollars);
        m_collection->setCustomerDirectory(&m_customers);
        m_customers.visible = {{2, false}};
        for (const auto &added : ExportSamples::textDocument())
            m_collection->addProject(added);
    }

    void matchesGolden_data() {
        QTest::addColumn<QString>("lineEnding");
        QTest::addColumn<Fields>("projectFields");
        QTest::addColumn<Fields>("entryFields");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<bool>("applyFilter"); // the row's name is the golden file's
        QList<std::tuple<QString, Fields, Fields>> combinations{
            {u"all-on"_s, allOn, allOn},
            {u"all-off"_s, allOff, allOff},
            {u"period-without-day"_s, allOn, only(Exporter::Day, allOn)},
            {u"day-without-period"_s, allOn, only(Exporter::Period, allOn)}};
        const QStringList projectFields{u"name"_s, u"description"_s, u"total-duration"_s,
                                        u"hourly-wages"_s, u"total-wages"_s};
        const QStringList entryFields{u"day"_s, u"period"_s, u"duration"_s, u"description"_s,
                                      u"state"_s};
        for (int i = 0; i < 5; ++i) {
            combinations.append({u"project-"_s + projectFields[i], only(i), allOff});
            combinations.append({u"entry-"_s + entryFields[i], allOff, only(i)});
        }
        const QStringList sample{u"Website"_s, u"Empty"_s};
        for (const auto &[name, projects, entries] : combinations) {
            for (const auto &[ending, suffix] : {std::pair(QString(), u".txt"_s),
                                                 {u"\n"_s, u"-lf.csv"_s},
                                                 {u"\r"_s, u"-cr.csv"_s},
                                                 {u"\r\n"_s, u"-crlf.csv"_s}})
                QTest::newRow(qPrintable(name + suffix))
                    << ending << projects << entries << sample << false;
        }
        // Only "Layout" matches the search text, and the customer of "Hidden" is hidden.
        const QStringList filtered{u"Website"_s, u"Hidden"_s};
        for (const auto &[ending, suffix] : {std::pair(QString(), u".txt"_s), {u"\n"_s, u".csv"_s}})
            for (const bool apply : {true, false}) {
                QTest::newRow(
                    qPrintable((apply ? u"filter-applied"_s : u"filter-ignored"_s) + suffix))
                    << ending << allOn << allOn << filtered << apply;
            }
    }
    void matchesGolden() {
        QFETCH(QString, lineEnding);
        QFETCH(Fields, projectFields);
        QFETCH(Fields, entryFields);
        QFETCH(QStringList, names);
        QFETCH(bool, applyFilter);
        const QString golden = QString::fromUtf8(QTest::currentDataTag());
        m_collection->setSearchText(names.contains(u"Hidden"_s) ? u"Layout"_s : QString());
        const QByteArray written =
            run(lineEnding, projectFields, entryFields, names, applyFilter, u"UTF-8"_s);
        if (qEnvironmentVariableIsSet("HOURFOLD_WRITE_GOLDEN"))
            QVERIFY(AtomicFile::write(ExportSamples::goldenPath(golden), written).ok);
        QCOMPARE(written, readFile(ExportSamples::goldenPath(golden)));
    }

    void writesExactly_data() {
        QTest::addColumn<QString>("lineEnding");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QByteArray>("expected"); // "old" when nothing is written
        const QString text;
        const QByteArray ruler = "\n\n\n\n\n" + QByteArray(73, '-') + "\n\n";
        const QStringList none{u"website"_s, u"Nothing"_s};
        const QStringList cafe{u"Café €"_s};
        QTest::newRow("no project, text") << text << none << u"UTF-8"_s << QByteArray();
        QTest::newRow("no project, LF") << u"\n"_s << none << u"UTF-8"_s << QByteArray("\n");
        QTest::newRow("no project, CR") << u"\r"_s << none << u"UTF-8"_s << QByteArray("\r");
        QTest::newRow("no project, CRLF") << u"\r\n"_s << none << u"UTF-8"_s << QByteArray("\r\n");
        // Both projects of the name; a line without fields eats only the "\n" before it.
        QTest::newRow("same names, CRLF")
            << u"\r\n"_s << QStringList{u"Internal"_s} << u"UTF-8"_s
            << QByteArray("Name\r\n\"Internal\"\r\n\r\n\r\r\n\r\nAmount\r\n\r\n\r"
                          "Name\r\n\"Internal\"\r\n\r\n\r\n\r\nAmount\r\n\r\n\r\r\n");
        QTest::newRow("text, Mac OS Roman")
            << text << cafe << u"macintosh"_s << QByteArray("Caf\x8E \xDB" + ruler);
        QTest::newRow("text, Latin-1 by an alias, euro replaced")
            << text << cafe << u"latin1"_s << QByteArray("Caf\xE9 \x1A" + ruler);
        QTest::newRow("CSV, Mac OS Roman by an alias")
            << u"\n"_s << cafe << u"mac"_s
            << QByteArray("Name\n\"Caf\x8E \xDB\"\n\n\n\nAmount\n\n\n");
        QTest::newRow("CSV, Latin-1 lacks the euro")
            << u"\n"_s << cafe << u"ISO-8859-1"_s << QByteArray("old");
        QTest::newRow("CSV, unknown encoding")
            << u"\n"_s << cafe << u"klingon"_s << QByteArray("old");
        QTest::newRow("text, unknown encoding")
            << text << cafe << u"klingon"_s << QByteArray("old");
    }
    void writesExactly() {
        QFETCH(QString, lineEnding);
        QFETCH(QStringList, names);
        QFETCH(QString, encoding);
        QFETCH(QByteArray, expected);
        const QString path = m_folder->filePath(u"out"_s);
        QVERIFY(AtomicFile::write(path, "old").ok);
        const auto result =
            exporter(lineEnding)
                ->exportProjects(names, only(Exporter::ProjectName), allOff, path, false, encoding);
        QCOMPARE(result.ok, expected != "old");
        QCOMPARE(result.error.isEmpty(), result.ok);
        QCOMPARE(readFile(path), expected);
    }

    void wagesAsPlainNumbers_data() {
        QTest::addColumn<float>("wage");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("one decimal") << 45.5f << QByteArray("45.5");
        QTest::newRow("whole") << 80.0f << QByteArray("80");
        QTest::newRow("seven digits at most") << 1.0f / 3.0f << QByteArray("0.3333333");
        QTest::newRow("rounded to seven digits") << 12345678.0f << QByteArray("12345680");
        QTest::newRow("no exponent") << 10000000.0f << QByteArray("10000000");
        QTest::newRow("small") << 0.000125f << QByteArray("0.000125");
        QTest::newRow("zero leaves the field empty") << 0.0f << QByteArray();
    }

    // Hourly wage and total wages (of one hour) are the same number.
    void wagesAsPlainNumbers() {
        QFETCH(float, wage);
        QFETCH(QByteArray, text);
        auto paid = project(u"Paid"_s, wage);
        paid->addEntry(dayEntry(u"10.11.2026"_s, 60));
        m_collection->addProject(paid);
        const Fields wages{false, false, false, true, true};
        QCOMPARE(run(u"\n"_s, wages, allOff, {u"Paid"_s}, false, u"UTF-8"_s).split('\n').value(1),
                 QByteArray(text + ',' + text));
    }

    // The C locale does not reach the numbers; UTF-16 holds the same text.
    void allOnInAnyLocaleAndEncoding_data() {
        QTest::addColumn<QByteArray>("cLocale");
        QTest::addColumn<QString>("encoding");
        QTest::newRow("German C locale") << QByteArray("de_DE.UTF-8") << u"UTF-8"_s;
        QTest::newRow("UTF-16") << QByteArray("C") << u"UTF-16"_s;
    }
    void allOnInAnyLocaleAndEncoding() {
        QFETCH(QByteArray, cLocale);
        QFETCH(QString, encoding);
        const QByteArray saved(std::setlocale(LC_ALL, nullptr));
        QVERIFY(std::setlocale(LC_ALL, cLocale.constData()));
        const QByteArray written =
            run(u"\n"_s, allOn, allOn, {u"Website"_s, u"Empty"_s}, false, encoding);
        std::setlocale(LC_ALL, saved.constData());
        QStringDecoder decoder(encoding.toLatin1().constData());
        QCOMPARE(QString(decoder.decode(written)),
                 QString::fromUtf8(readFile(ExportSamples::goldenPath(u"all-on-lf.csv"_s))));
        QVERIFY(!decoder.hasError());
    }

    void failedWriteKeepsTheOldFile() {
        const QString path = m_folder->filePath(u"out"_s);
        QVERIFY(AtomicFile::write(path, "old").ok);
        FileFailures::LimitFileSize limit(64);
        const auto result = exporter(QString())->exportProjects({u"Website"_s}, allOn, allOn, path,
                                                                false, u"UTF-8"_s);
        QVERIFY(!result.ok);
        QVERIFY(!result.error.isEmpty());
        QCOMPARE(readFile(path), "old");
    }

private:
    std::unique_ptr<Exporter> exporter(const QString &lineEnding) {
        std::unique_ptr<Exporter> made = std::make_unique<Exporter>();
        if (!lineEnding.isNull()) {
            auto csv = std::make_unique<CSVExporter>();
            csv->setLineEnding(lineEnding);
            made = std::move(csv);
        }
        made->setProjectCollection(m_collection.get());
        return made;
    }

    QByteArray run(const QString &lineEnding, const Fields &projectFields,
                   const Fields &entryFields, const QStringList &names, bool applyFilter,
                   const QString &encoding) {
        const QString path = m_folder->filePath(u"out"_s);
        const auto result =
            exporter(lineEnding)
                ->exportProjects(names, projectFields, entryFields, path, applyFilter, encoding);
        return result.ok ? readFile(path) : QByteArray("failed: ") + result.error.toUtf8();
    }

    ExportSamples::Settings m_settings;
    FakeCustomers m_customers;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ProjectCollection> m_collection;
};

QTEST_GUILESS_MAIN(TestExporters)
#include "tst_exporters.moc"
