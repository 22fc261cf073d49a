#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QImage picture(const QString &name) {
    return QImage(QStringLiteral(HOURFOLD_RESOURCE_DIR "/images/") + name + u".svg"_s);
}

int visiblePixels(const QImage &image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 0;
    return count;
}

} // namespace

class TestImages : public QObject {
    Q_OBJECT

private slots:
    // Every picture the program asks for by name is there, readable through Qt's image reader
    // at its drawn size, and draws something.
    void loads_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("size");
        const int toolbar = 24, details = 32;
        for (const QString &name :
             {u"NewProject"_s,   u"NewEntry"_s,        u"NewFlatFeeEntry"_s, u"Trash"_s,
              u"Edit"_s,         u"details"_s,         u"pause"_s,           u"play"_s,
              u"Stop"_s,         u"ico_mini_window"_s, u"attachments"_s,     u"clip"_s,
              u"btn_clock"_s,    u"btn_play"_s,        u"btn_pause"_s,       u"btn_stop"_s,
              u"btn_play_dis"_s, u"btn_pause_dis"_s,   u"menubar"_s,         u"menubar_alt"_s})
            QTest::newRow(qPrintable(name)) << name << toolbar;
        for (const QString &name :
             {u"customer"_s, u"Clock"_s, u"pause_details"_s, u"dollarsign"_s, u"tags"_s})
            QTest::newRow(qPrintable(name)) << name << details;
        for (const QString &name :
             {u"conflict"_s, u"folder"_s, u"url"_s, u"file"_s, u"follow_link"_s,
              u"follow_link_pressed"_s, u"follow_link_inv"_s, u"follow_link_pressed_inv"_s})
            QTest::newRow(qPrintable(name)) << name << 16;
        QTest::newRow("hourfold") << u"hourfold"_s << 64;
    }
    void loads() {
        QFETCH(QString, name);
        QFETCH(int, size);
        const QImage image = picture(name);
        QVERIFY2(!image.isNull(), qPrintable(name + u": missing or unreadable"_s));
        QCOMPARE(image.size(), QSize(size, size));
        QVERIFY(visiblePixels(image) > size * size / 20);
    }

    // The blank stands in for the paper clip where an item has no attachments: same size, and
    // nothing shows.
    void clipBlankIsEmpty() {
        const QImage blank = picture(u"clip_blank"_s);
        QVERIFY(!blank.isNull());
        QCOMPARE(blank.size(), picture(u"clip"_s).size());
        QCOMPARE(visiblePixels(blank), 0);
    }

    // A disabled button picture has the shape of the enabled one, grey and faded.
    void disabledButtons() {
        for (const QString &name : {u"btn_play"_s, u"btn_pause"_s}) {
            const QImage enabled = picture(name);
            const QImage disabled = picture(name + u"_dis"_s);
            QCOMPARE(disabled.size(), enabled.size());
            for (int y = 0; y < disabled.height(); ++y) {
                for (int x = 0; x < disabled.width(); ++x) {
                    const QString where = name + u" %1,%2"_s.arg(x).arg(y);
                    const QColor shown = disabled.pixelColor(x, y);
                    const int enabledAlpha = qAlpha(enabled.pixel(x, y));
                    // Nothing outside the enabled shape, and all of it but the faintest edge.
                    QVERIFY2(shown.alpha() == 0 || enabledAlpha > 0, qPrintable(where));
                    QVERIFY2(shown.alpha() > 0 || enabledAlpha < 8, qPrintable(where));
                    QVERIFY2(shown.alpha() <= enabledAlpha * 6 / 10, qPrintable(where));
                    if (shown.alpha() > 32)
                        QVERIFY2(shown.hsvSaturation() < 80, qPrintable(where));
                }
            }
        }
    }

    // The tray pictures use one grey only, as system trays expect.
    void trayIsMonochrome() {
        for (const QString &name : {u"menubar"_s, u"menubar_alt"_s}) {
            const QImage image = picture(name);
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const QColor shown = image.pixelColor(x, y);
                    if (shown.alpha() > 128)
                        QVERIFY2(shown.hsvSaturation() == 0,
                                 qPrintable(name + u" %1,%2"_s.arg(x).arg(y)));
                }
            }
        }
    }
};

QTEST_MAIN(TestImages)
#include "tst_images.moc"
