#include "app/SheetFixture.h"

#include "common/TokenField.h"
#include "details/TagEditorPanel.h"
#include "editors/EntrySheet.h"
#include "editors/FlatFeeSheet.h"
#include "editors/ProjectSheet.h"

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

// The tag editor, and the tag fields of the sheets: the completion of tag names and what the end
// of editing does to the tag list, on the fixture's tags "Work", "work", "Web".
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
        m_sheet.reset();
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

    // However editing ends, the first panel shown decides: the tag editor's own field makes the
    // list exactly its names, in the file too; a sheet in front adds its field's names.
    void endOfEditing_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("ending");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("a name deleted")
            << u"Work,Web"_s << u"return"_s << QStringList{u"Work"_s, u"Web"_s};
        QTest::newRow("repeats once, blanks kept")
            << u"b,x,b, b"_s << u"return"_s << QStringList{u"b"_s, u"x"_s, u" b"_s};
        QTest::newRow("a comma taken back")
            << u"Work,x\b\bWeb"_s << u"return"_s << QStringList{u"WorkWeb"_s};
        QTest::newRow("window closed")
            << u"work,new"_s << u"close"_s << QStringList{u"work"_s, u"new"_s};
        QTest::newRow("main window activated") << u"new"_s << u"leave"_s << QStringList{u"new"_s};
        QTest::newRow("a sheet opened over it: the sheet's empty field decides")
            << u"new"_s << u"sheet"_s << QStringList{u"Work"_s, u"work"_s, u"Web"_s, QString()};
    }
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

    // The name being typed is completed from the known names that start with it, upper and lower
    // case apart, in every tag field.
    void completion_data() {
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("offers");
        QTest::addColumn<QString>("chosen");
        const QStringList both{u"Work"_s, u"Web"_s};
        QTest::newRow("prefix, upper case") << u"flat fee"_s << u"W"_s << both << u"Web"_s;
        QTest::newRow("prefix, lower case")
            << u"flat fee"_s << u"w"_s << QStringList{u"work"_s} << u"work"_s;
        QTest::newRow("no such prefix") << u"flat fee"_s << u"Wx"_s << QStringList() << QString();
        QTest::newRow("a whole name") << u"flat fee"_s << u"Work"_s << QStringList() << QString();
        QTest::newRow("entry sheet, the name after the comma")
            << u"entry"_s << u"x,Wo"_s << QStringList{u"Work"_s} << u"x,Work"_s;
        QTest::newRow("project sheet") << u"project"_s << u"Web,W"_s << both << u"Web,Work"_s;
        QTest::newRow("tag editor")
            << u"editor"_s << u"Web,wo"_s << QStringList{u"work"_s} << u"Web,work"_s;
    }
    void completion() {
        QFETCH(QString, window);
        QFETCH(QString, typed);
        QFETCH(QStringList, offers);
        QFETCH(QString, chosen);
        QWidget *tags = tagField(window);
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

    // A sheet's tag field adds its new names to the list when the field is left.
    void sheetsAddTheirNames_data() {
        QTest::addColumn<QString>("window");
        QTest::newRow("flat fee") << u"flat fee"_s;
        QTest::newRow("entry") << u"entry"_s;
        QTest::newRow("project") << u"project"_s;
    }
    void sheetsAddTheirNames() {
        QFETCH(QString, window);
        QWidget *tags = tagField(window);
        SheetFixture::type(tags, u"x,Web,new"_s);
        QTest::keyClick(tags, Qt::Key_Tab);
        QCOMPARE(m_fixture->tags.tags(),
                 (QStringList{u"Work"_s, u"work"_s, u"Web"_s, u"x"_s, u"new"_s}));
    }

private:
    // The tag field of the window, opened over the main window.
    QWidget *tagField(const QString &window) {
        if (window == u"editor")
            return m_field;
        m_panel->close();
        SheetFixture &f = *m_fixture;
        QString name;
        if (window == u"flat fee") {
            auto *sheet = new FlatFeeSheet(f.collection, f.tags, f.currency, &f.window);
            sheet->newFlatFee(f.alpha);
            m_sheet.reset(sheet);
            name = u"flatFeeTokenField"_s;
        } else if (window == u"entry") {
            auto *sheet = new EntrySheet(f.collection, f.preferences, f.user, &f.tags, &f.window);
            sheet->newEntry(f.alpha);
            m_sheet.reset(sheet);
            name = u"timerTokenField"_s;
        } else {
            auto *sheet = new ProjectSheet(f.collection, f.customers, f.tags, f.preferences,
                                           f.currency, f.user, &f.window);
            sheet->newProject(-1);
            m_sheet.reset(sheet);
            name = u"projectTokenField"_s;
        }
        if (!QTest::qWaitForWindowActive(m_sheet.get()))
            qFatal("the sheet did not come up");
        return SheetFixture::control<QLineEdit>(*m_sheet, name);
    }

    std::unique_ptr<SheetFixture> m_fixture;
    std::unique_ptr<TagEditorPanel> m_panel;
    std::unique_ptr<QDialog> m_sheet;
    TokenField *m_field = nullptr;
};

QTEST_MAIN(TestTagEditorPanel)
#include "tst_tageditorpanel.moc"
