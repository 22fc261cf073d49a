#include "app/SheetFixture.h"

#include "common/TokenField.h"
#include "details/TagEditorPanel.h"
#include "editors/FlatFeeSheet.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QLineEdit>
#include <QTest>

namespace {

QStringList offered(QCompleter *completer) {
    QStringList names;
    if (!completer->popup()->isVisible())
        return names;
    for (int row = 0; row < completer->completionModel()->rowCount(); ++row)
        names << completer->completionModel()->index(row, 0).data().toString();
    return names;
}

// The text and cursor position of a line edit or a token field.
std::pair<QString, int> textAndCursor(QWidget *field) {
    if (auto *line = qobject_cast<QLineEdit *>(field))
        return {line->text(), line->cursorPosition()};
    auto *tokens = qobject_cast<TokenField *>(field);
    return {tokens->text(), tokens->cursorPosition()};
}

} // namespace

// The tag editor and the completion of tag names, on the fixture's tags "Work", "work", "Web".
class TestTagEditorPanel : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_panel = std::make_unique<TagEditorPanel>(m_fixture->tags, &m_fixture->window);
        m_panel->openTagsEditor();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
        m_field = SheetFixture::control<TokenField>(*m_panel, u"editorTokenField"_s);
    }
    void cleanup() {
        m_panel.reset();
        m_fixture.reset();
    }

    // The field shows the whole list, a token per name, and the names other fields add as they
    // come; more names than one line holds wrap onto further lines, between names, and the field
    // grows to show them all.
    void showsTheListAsTokens() {
        QCOMPARE(m_field->text(), u"Work,work,Web"_s);
        QCOMPARE(m_field->tokenRects().size(), 3);
        const int oneLine = m_field->height();
        QStringList names{u"Work"_s, u"work"_s, u"Web"_s};
        for (int i = 0; i < 30; ++i)
            names << u"client"_s + QString::number(i);
        m_fixture->tags.addTagsFromString(names.join(u','));
        QCOMPARE(m_field->text(), names.join(u','));
        QCoreApplication::processEvents();
        const QList<QRectF> tokens = m_field->tokenRects();
        QCOMPARE(tokens.size(), names.size());
        QVERIFY(tokens.constLast().top() > tokens.constFirst().bottom());
        QVERIFY(m_field->height() >= m_field->contentHeight());
        QVERIFY(m_field->height() > 2 * oneLine);
    }

    void endOfEditing_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("ending");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("a name deleted")
            << u"Work,Web"_s << u"return"_s << QStringList{u"Work"_s, u"Web"_s};
        QTest::newRow("repeats once, blanks kept")
            << u"b,x,b, b"_s << u"return"_s << QStringList{u"b"_s, u"x"_s, u" b"_s};
        QTest::newRow("emptied: one empty name") << QString() << u"return"_s << QStringList{{}};
        QTest::newRow("a comma taken back")
            << u"Work,x\b\bWeb"_s << u"return"_s << QStringList{u"WorkWeb"_s};
        QTest::newRow("window closed")
            << u"work,new"_s << u"close"_s << QStringList{u"work"_s, u"new"_s};
        QTest::newRow("main window activated") << u"new"_s << u"leave"_s << QStringList{u"new"_s};
        QTest::newRow("a sheet opened over it: the sheet's empty field decides")
            << u"new"_s << u"sheet"_s << QStringList{u"Work"_s, u"work"_s, u"Web"_s, QString()};
    }
    // However editing ends, the first panel shown decides: the tag editor's own field makes the
    // list exactly its names, in the file too; a sheet in front adds its field's names.
    void endOfEditing() {
        QFETCH(QString, typed);
        QFETCH(QString, ending);
        QFETCH(QStringList, expected);
        FlatFeeSheet sheet(m_fixture->collection, m_fixture->tags, m_fixture->currency,
                           &m_fixture->window);
        SheetFixture::type(m_field, typed);
        QCOMPARE(m_fixture->tags.tags(), (QStringList{u"Work"_s, u"work"_s, u"Web"_s}));
        if (ending == u"return") {
            QTest::keyClick(m_field, Qt::Key_Return);
        } else if (ending == u"close") {
            m_panel->close();
        } else if (ending == u"sheet") {
            sheet.newFlatFee(m_fixture->alpha);
            QTRY_VERIFY(QApplication::activeWindow() == &sheet);
        } else {
            QApplication::setActiveWindow(&m_fixture->window);
        }
        QCOMPARE(m_fixture->tags.tags(), expected);
        QCOMPARE(m_field->text(), expected.join(u','));
        TagStorage reloaded(m_fixture->tags.tagsPath());
        QVERIFY(reloaded.loadTags());
        QCOMPARE(reloaded.tags(), expected);
        // The records keep the names the list has lost.
        QCOMPARE(m_fixture->alpha->tags(), u"web"_s);
    }

    void completion_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("offers");
        QTest::addColumn<QString>("chosen");
        QTest::newRow("prefix, upper case")
            << u"sheet"_s << u"W"_s << QStringList{u"Work"_s, u"Web"_s} << u"Web"_s;
        QTest::newRow("prefix, lower case")
            << u"sheet"_s << u"w"_s << QStringList{u"work"_s} << u"work"_s;
        QTest::newRow("the name after the comma")
            << u"sheet"_s << u"x,Wo"_s << QStringList{u"Work"_s} << u"x,Work"_s;
        QTest::newRow("no such prefix") << u"sheet"_s << u"Wx"_s << QStringList() << QString();
        QTest::newRow("a whole name") << u"sheet"_s << u"Work"_s << QStringList() << QString();
        QTest::newRow("tag editor")
            << u"editor"_s << u"Web,wo"_s << QStringList{u"work"_s} << u"Web,work"_s;
    }
    // The name being typed is completed from the known names that start with it, upper and lower
    // case apart, in the flat-fee sheet as in the tag editor.
    void completion() {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QStringList, offers);
        QFETCH(QString, chosen);
        FlatFeeSheet sheet(m_fixture->collection, m_fixture->tags, m_fixture->currency,
                           &m_fixture->window);
        QWidget *tags = m_field;
        if (field == u"sheet") {
            m_panel->close();
            sheet.newFlatFee(m_fixture->alpha);
            QVERIFY(QTest::qWaitForWindowActive(&sheet));
            tags = SheetFixture::control<QLineEdit>(sheet, u"flatFeeTokenField"_s);
        }
        SheetFixture::type(tags, typed);
        QCompleter *completer = tags->findChild<QCompleter *>();
        QCOMPARE(offered(completer), offers);
        if (offers.isEmpty())
            return;
        QTest::keyClick(completer->popup(), Qt::Key_Down);
        for (qsizetype row = 0; row < offers.indexOf(chosen.section(u',', -1)); ++row)
            QTest::keyClick(completer->popup(), Qt::Key_Down);
        QTest::keyClick(completer->popup(), Qt::Key_Return);
        QCOMPARE(textAndCursor(tags), std::pair(chosen, int(chosen.size())));
    }

    // A name is completed as a whole, also when typed into its middle.
    void completionReplacesTheName() {
        SheetFixture::type(m_field, u"Work,Wxyz"_s);
        m_field->setCursorPosition(6);
        QTest::keyClicks(m_field, u"e"_s);
        QCompleter *completer = m_field->findChild<QCompleter *>();
        QCOMPARE(offered(completer), QStringList{u"Web"_s});
        QTest::keyClick(completer->popup(), Qt::Key_Down);
        QTest::keyClick(completer->popup(), Qt::Key_Return);
        QCOMPARE(m_field->text(), u"Work,Web"_s);
        // Choosing is no end of editing: the list is as it was until the field ends.
        QCOMPARE(m_fixture->tags.tags(), (QStringList{u"Work"_s, u"work"_s, u"Web"_s}));
    }

private:
    std::unique_ptr<SheetFixture> m_fixture;
    std::unique_ptr<TagEditorPanel> m_panel;
    TokenField *m_field = nullptr;
};

QTEST_MAIN(TestTagEditorPanel)
#include "tst_tageditorpanel.moc"
