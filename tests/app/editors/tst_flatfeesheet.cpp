#include "app/SheetFixture.h"

#include "editors/FlatFeeSheet.h"

#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

// "day;amount;comment;tags" of a fee.
QString describe(const FlatFeeEntry &fee) {
    return u"%1;%2;%3;%4"_s.arg(fee.date()).arg(fee.amount()).arg(fee.comment(), fee.tags());
}

QStringList describeItems(const Project &project) {
    QStringList items;
    for (const auto &item : project.entries())
        items << (item->isFlatFee() ? describe(static_cast<const FlatFeeEntry &>(*item))
                                    : item->stringDescription());
    return items;
}

} // namespace

class TestFlatFeeSheet : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { Clock::setNow(at(u"22.11.2026 10:00"_s)); }

    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_sheet = std::make_unique<FlatFeeSheet>(m_fixture->collection, m_fixture->tags,
                                                 m_fixture->currency, &m_fixture->window);
        m_fee = flatFee(u"01.02.2008"_s, 10.0f);
        m_fee->setComment(u"old"_s);
        m_fee->setTags(u"web"_s);
        m_fixture->alpha->addEntry(m_fee);
    }

    void cleanup() {
        m_sheet.reset();
        m_fixture.reset();
        QLocale::setDefault(QLocale(u"en_US"_s));
    }

    void newFeeIsBooked_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("amount");
        QTest::addColumn<QString>("booked");
        QTest::newRow("amount") << u"en_US"_s << u"12.5"_s << u"20.11.2026;12.5;a\nb;Work"_s;
        QTest::newRow("grouped") << u"en_US"_s << u"1,234.5"_s << u"20.11.2026;1234.5;a\nb;Work"_s;
        QTest::newRow("decimal comma") << u"de_DE"_s << u"12,5"_s << u"20.11.2026;12.5;a\nb;Work"_s;
        QTest::newRow("decimal point under a comma locale")
            << u"de_DE"_s << u"12.5"_s << u"20.11.2026;12.5;a\nb;Work"_s;
        QTest::newRow("not a number: 0")
            << u"en_US"_s << u"twelve"_s << u"20.11.2026;0;a\nb;Work"_s;
        QTest::newRow("nan: 0") << u"en_US"_s << u"nan"_s << u"20.11.2026;0;a\nb;Work"_s;
        QTest::newRow("empty: 0") << u"en_US"_s << u""_s << u"20.11.2026;0;a\nb;Work"_s;
    }
    void newFeeIsBooked() {
        QFETCH(QString, locale);
        QFETCH(QString, amount);
        QFETCH(QString, booked);
        QLocale::setDefault(QLocale(locale));
        m_sheet->newFlatFee(m_fixture->beta);
        QCOMPARE(m_sheet->windowTitle(), u"new entry"_s);
        QCOMPARE(control<QPushButton>(u"flatFeeEntryAcceptButton"_s)->text(), u"Create"_s);
        QCOMPARE(control<QLabel>(u"flatFeeAmountCurrency"_s)->text(), u"$"_s);
        auto *day = control<QDateEdit>(u"flatFeeDayDatePicker"_s);
        QCOMPARE(day->date(), QDate(2026, 11, 22));
        auto *field = control<QLineEdit>(u"flatFeeAmountTextField"_s);
        QCOMPARE(field->text(), locale == u"de_DE" ? u"0,00"_s : u"0.00"_s);
        QCOMPARE(m_sheet->focusWidget(), field);
        day->setDate(QDate(2026, 11, 20));
        SheetFixture::type(field, amount);
        auto *comment = control<QPlainTextEdit>(u"flatFeeDescriptionTextBox"_s);
        comment->setFocus();
        QTest::keyClicks(comment, u"a"_s);
        QTest::keyClick(comment, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(comment, u"b"_s);
        control<QLineEdit>(u"flatFeeTokenField"_s)->setText(u"Work"_s);
        QTest::keyClick(comment, Qt::Key_Return);
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(describeItems(*m_fixture->beta), QStringList{booked});
        QUndoStack *undo = m_fixture->collection.undoStack();
        QCOMPARE(undo->undoText(), u"Add Entry"_s);
        undo->undo();
        QVERIFY(m_fixture->beta->entries().isEmpty());
        undo->redo();
        QCOMPARE(describeItems(*m_fixture->beta), QStringList{booked});
    }

    void feeIsEdited_data() {
        QTest::addColumn<float>("amountBefore");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("amount");
        QTest::addColumn<QString>("after");
        QTest::newRow("amount") << 10.0f << u"10.00"_s << u"25"_s << u"03.02.2008;25;new;web"_s;
        QTest::newRow("more decimals are shown")
            << 12.125f << u"12.125"_s << u"12.125"_s << u"03.02.2008;12.125;new;web"_s;
        QTest::newRow("not a number: 0")
            << 10.0f << u"10.00"_s << u"ten"_s << u"03.02.2008;0;new;web"_s;
    }
    void feeIsEdited() {
        QFETCH(float, amountBefore);
        QFETCH(QString, amount);
        QFETCH(QString, after);
        m_fee->setAmount(amountBefore);
        const QString before = describe(*m_fee);
        m_sheet->editFlatFee(m_fee);
        QCOMPARE(m_sheet->windowTitle(), u"edit entry"_s);
        QCOMPARE(control<QPushButton>(u"flatFeeEntryAcceptButton"_s)->text(), u"Accept"_s);
        auto *day = control<QDateEdit>(u"flatFeeDayDatePicker"_s);
        QCOMPARE(day->date(), QDate(2008, 2, 1));
        QTEST(control<QLineEdit>(u"flatFeeAmountTextField"_s)->text(), "shown");
        QCOMPARE(control<QPlainTextEdit>(u"flatFeeDescriptionTextBox"_s)->toPlainText(), u"old"_s);
        QCOMPARE(control<QLineEdit>(u"flatFeeTokenField"_s)->text(), u"web"_s);
        day->setDate(QDate(2008, 2, 3));
        SheetFixture::type(control<QLineEdit>(u"flatFeeAmountTextField"_s), amount);
        control<QPlainTextEdit>(u"flatFeeDescriptionTextBox"_s)->setPlainText(u"new"_s);
        control<QPushButton>(u"flatFeeEntryAcceptButton"_s)->click();
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(describe(*m_fee), after);
        QCOMPARE(m_fixture->alpha->entries(), ItemList{m_fee});
        QUndoStack *undo = m_fixture->collection.undoStack();
        QCOMPARE(undo->undoText(), u"Edit Entry"_s);
        undo->undo();
        QCOMPARE(describe(*m_fee), before);
        undo->redo();
        QCOMPARE(describe(*m_fee), after);
    }

    void escapeCancels() {
        m_sheet->newFlatFee(m_fixture->beta);
        SheetFixture::type(control<QLineEdit>(u"flatFeeAmountTextField"_s), u"5"_s);
        QTest::keyClick(control<QLineEdit>(u"flatFeeAmountTextField"_s), Qt::Key_Escape);
        QVERIFY(!m_sheet->isVisible());
        QVERIFY(m_fixture->beta->entries().isEmpty());
        QCOMPARE(m_fixture->collection.undoStack()->count(), 0);
    }

private:
    template <typename T> T *control(const QString &name) {
        return SheetFixture::control<T>(*m_sheet, name);
    }

    std::unique_ptr<SheetFixture> m_fixture;
    std::unique_ptr<FlatFeeSheet> m_sheet;
    std::shared_ptr<FlatFeeEntry> m_fee;
};

QTEST_MAIN(TestFlatFeeSheet)
#include "tst_flatfeesheet.moc"
