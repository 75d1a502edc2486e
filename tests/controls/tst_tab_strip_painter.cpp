#include <QImage>
#include <QTest>

#include "tab_form.h"

using ledgix::controls::zqTabDialog;
using ledgix::test::Form;
using ledgix::test::ShowActive;

namespace {

QImage Picture(zqTabDialog& tabs, double scale = 1) {
    QImage image((QSizeF(tabs.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::magenta);
    tabs.render(&image);
    return image;
}

}  // namespace

class tst_TabStripPainter : public QObject {
    Q_OBJECT

private slots:
    void theSelectedTabJoinsTheBody_data();
    void theSelectedTabJoinsTheBody();
    void aDisabledTabLooksDisabled();
    void theFocusIsSeen();
    void aLargeFontStaysWithinTheStrip();
};

void tst_TabStripPainter::theSelectedTabJoinsTheBody_data() {
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        QTest::addRow("at %g", scale) << scale;
    }
}

// Down the middle of a tab's left half, where no caption is: colours of the rows around the body's top line.
void tst_TabStripPainter::theSelectedTabJoinsTheBody() {
    QFETCH(double, scale);
    Form form;
    form.tabs->setCurrentTab(2);
    const QImage image = Picture(*form.tabs, scale);
    const QRgb body = form.palette().color(QPalette::Window).rgb();
    const QRgb lit = form.palette().color(QPalette::Light).rgb();
    const int line = qRound(20 * scale);
    QCOMPARE(image.pixel(qRound(110 * scale), line), body);
    QCOMPARE(image.pixel(qRound(110 * scale), line - 2), body);
    QCOMPARE(image.pixel(qRound(10 * scale), line), lit);
    QCOMPARE(image.pixel(qRound(210 * scale), line), lit);
    QVERIFY(image.pixel(qRound(10 * scale), line - 2) != body);
    QCOMPARE(image.pixel(qRound(110 * scale), 1), form.palette().color(QPalette::Highlight).rgb());
}

void tst_TabStripPainter::aDisabledTabLooksDisabled() {
    Form form;
    const QImage enabled = Picture(*form.tabs);
    form.tabs->setTabEnabled(2, false);
    const QImage disabled = Picture(*form.tabs);
    QVERIFY(enabled.copy(form.tabs->TabRect(2)) != disabled.copy(form.tabs->TabRect(2)));
    QCOMPARE(enabled.copy(form.tabs->TabRect(3)), disabled.copy(form.tabs->TabRect(3)));
}

void tst_TabStripPainter::theFocusIsSeen() {
    Form form;
    ShowActive(form);
    form.other->setFocus();
    const QImage without = Picture(*form.tabs);
    form.tabs->setFocus();
    const QImage with = Picture(*form.tabs);
    QVERIFY(without.copy(form.tabs->TabRect(1)) != with.copy(form.tabs->TabRect(1)));
    QCOMPARE(without.copy(form.tabs->TabRect(2)), with.copy(form.tabs->TabRect(2)));
}

void tst_TabStripPainter::aLargeFontStaysWithinTheStrip() {
    Form form;
    QFont large = form.font();
    large.setPixelSize(40);
    form.tabs->setFont(large);
    form.tabs->setTabs("ÅÄgjy|B|C|");
    const QImage image = Picture(*form.tabs);
    const QRgb body = form.palette().color(QPalette::Window).rgb();
    for (int x = 10; x < 90; ++x) {
        QCOMPARE(image.pixel(x, 1), form.palette().color(QPalette::Highlight).rgb());
        QCOMPARE(image.pixel(x, 20), body);
    }
}

QTEST_MAIN(tst_TabStripPainter)
#include "tst_tab_strip_painter.moc"
