#include <QAbstractButton>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include "frm_splash.h"
#include "message_recorder.h"
#include "title_pictures.h"

using ledgix::shell::frmSplash;
using ledgix::test::MessageRecorder;
using namespace ledgix::test;

class tst_frmSplash : public QObject {
    Q_OBJECT

private slots:
    void showsTheVersionWithoutItsRevision();
    void hasNoFrameAndNoButtons();
    void standsInTheMiddleOfTheScreen();
    void drawsTheTitleInThreeColours();
    void theFirstPartStandsAtItsPlace();
    void theSecondPartFollowsTheFirstOnOneLine();
    void theThirdPartStandsBelow();
    void theTitleIsNotCutOff_data();
    void theTitleIsNotCutOff();
    void theTitlePersists();
    void activationRepaintsAtOnce();
    void aMissingFontGivesWayToArial();
    void anErrorWhileLoadingIsShown();
    void aClickDismissesIt();
    void aKeyDismissesIt();
    void closingDismissesIt();
    void staysReadableWhateverThePalette();
};

void tst_frmSplash::showsTheVersionWithoutItsRevision() {
    const frmSplash splash;
    QCOMPARE(splash.lblVersion->text(), QString("Version %1.%2").arg(LEDGIX_VERSION_MAJOR).arg(LEDGIX_VERSION_MINOR));
    QCOMPARE(splash.lblVersion->objectName(), "lblVersion");
}

void tst_frmSplash::hasNoFrameAndNoButtons() {
    const frmSplash splash;
    QVERIFY(splash.windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(splash.findChildren<QAbstractButton*>().isEmpty());
    QVERIFY(!splash.isModal());
}

void tst_frmSplash::standsInTheMiddleOfTheScreen() {
    frmSplash splash;
    splash.show();
    const QPoint off = splash.geometry().center() - splash.screen()->availableGeometry().center();
    QVERIFY(off.manhattanLength() <= 2);
    QCOMPARE(splash.size(), splash.sizeHint());
}

void tst_frmSplash::drawsTheTitleInThreeColours() {
    frmSplash splash;
    const QImage picture = PictureOf(splash);
    QVERIFY(!InkOf(picture, kRed).isEmpty());
    QVERIFY(!InkOf(picture, kBlack).isEmpty());
    QVERIFY(!InkOf(picture, kBlue).isEmpty());
}

void tst_frmSplash::theFirstPartStandsAtItsPlace() {
    frmSplash splash;
    const QRect red = InkOf(PictureOf(splash), kRed);
    QVERIFY2(red.left() >= 120 && red.left() < 130, qPrintable(QString::number(red.left())));
    QVERIFY2(red.top() >= 200 / 15 && red.top() < 200 / 15 + 24, qPrintable(QString::number(red.top())));
}

void tst_frmSplash::theSecondPartFollowsTheFirstOnOneLine() {
    frmSplash splash;
    const QImage picture = PictureOf(splash);
    const QRect red = InkOf(picture, kRed);
    const QRect black = InkOf(picture, kBlack);
    QVERIFY(black.left() > red.right() - 3);
    QVERIFY(black.left() < red.right() + 12);
    QVERIFY(qAbs(black.bottom() - red.bottom()) <= 2);
}

void tst_frmSplash::theThirdPartStandsBelow() {
    frmSplash splash;
    const QImage picture = PictureOf(splash);
    const QRect blue = InkOf(picture, kBlue);
    QVERIFY(blue.left() >= 120);
    QVERIFY(blue.top() > 1000 / 15);
    QVERIFY(blue.top() > InkOf(picture, kBlack).center().y());
}

void tst_frmSplash::theTitleIsNotCutOff_data() {
    QTest::addColumn<bool>("installed");
    QTest::newRow("with the font") << true;
    QTest::newRow("without the font") << false;
}

void tst_frmSplash::theTitleIsNotCutOff() {
    QFETCH(bool, installed);
    frmSplash splash([installed](const std::string&) { return installed; });
    const QImage picture = PictureOf(splash);
    const QRect inside = picture.rect().adjusted(8, 8, -8, -8);
    for (const QRgb colour : {kRed, kBlack, kBlue})
        QVERIFY(inside.contains(InkOf(picture, colour)));
    QVERIFY(InkOf(picture, kBlue).bottom() < splash.lblVersion->geometry().top());
    QVERIFY(splash.rect().contains(splash.lblVersion->geometry()));
    QVERIFY(splash.lblVersion->width() >= splash.lblVersion->sizeHint().width());
}

void tst_frmSplash::theTitlePersists() {
    frmSplash splash;
    splash.show();
    const QImage before = PictureOf(splash);
    splash.hide();
    splash.show();
    QCOMPARE(PictureOf(splash), before);
}

void tst_frmSplash::activationRepaintsAtOnce() {
    class Counter : public QObject {
    public:
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } counter;
    frmSplash splash;
    splash.show();
    QVERIFY(QTest::qWaitForWindowExposed(&splash));
    splash.installEventFilter(&counter);
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&splash, &activation);
    QCOMPARE(counter.paints, 1);
}

void tst_frmSplash::aMissingFontGivesWayToArial() {
    frmSplash with_arial([](const std::string&) { return false; });
    frmSplash with_courier([](const std::string&) { return true; });
    const QRect arial = InkOf(PictureOf(with_arial), kBlue);
    const QRect courier = InkOf(PictureOf(with_courier), kBlue);
    QVERIFY(!arial.isEmpty());
    QVERIFY(arial != courier);
}

void tst_frmSplash::anErrorWhileLoadingIsShown() {
    MessageRecorder messages;
    frmSplash splash([](const std::string&) -> bool {
        ledgix::runtime::RaiseError(ledgix::runtime::ErrorNumber::kOverflow, "Overflow");
    });
    QCOMPARE(messages.messages().size(), 1U);
    QVERIFY((messages.messages()[0] == MessageRecorder::Message{"6 - Overflow", 0, "frmSplash-Form_Load"}));
    QCOMPARE(splash.lblVersion->text(), QString());
    QVERIFY(InkOf(PictureOf(splash), kBlue).isEmpty());
}

void tst_frmSplash::aClickDismissesIt() {
    frmSplash splash;
    const QSignalSpy dismissed(&splash, &frmSplash::Dismissed);
    splash.show();
    QVERIFY(!splash.dismissed());
    QTest::mouseClick(&splash, Qt::LeftButton);
    QVERIFY(splash.dismissed());
    QCOMPARE(dismissed.count(), 1);
    QVERIFY(splash.isVisible());
}

void tst_frmSplash::aKeyDismissesIt() {
    frmSplash splash;
    splash.show();
    QTest::keyClick(&splash, Qt::Key_Space);
    QVERIFY(splash.dismissed());
}

void tst_frmSplash::closingDismissesIt() {
    frmSplash splash;
    splash.show();
    splash.close();
    QVERIFY(splash.dismissed());
}

void tst_frmSplash::staysReadableWhateverThePalette() {
    const QPalette before = QGuiApplication::palette();
    frmSplash light;
    const QImage expected = PictureOf(light);
    QPalette dark(Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    QGuiApplication::setPalette(dark);
    frmSplash splash;
    const QImage picture = PictureOf(splash);
    QGuiApplication::setPalette(before);
    QCOMPARE(picture, expected);
}

QTEST_MAIN(tst_frmSplash)
#include "tst_frm_splash.moc"
