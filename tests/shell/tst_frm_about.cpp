#include <QAccessible>
#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "frm_about.h"
#include "message_recorder.h"
#include "title_pictures.h"

using ledgix::shell::frmAbout;
using ledgix::test::MessageRecorder;
using namespace ledgix::test;

namespace {

const QString kAddress = "https://www.vantreo.example/ledgix";

// Opens web addresses in place of the browser as long as it lives.
class Browser : public QObject {
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler("https", this, "Open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler("https"); }

    QList<QUrl> opened;

public slots:
    void Open(const QUrl& address) { opened << address; }
};

// The part of the window's picture above its texts.
QImage BandOf(frmAbout& about) {
    const QImage picture = PictureOf(about);
    return picture.copy(0, 0, picture.width(), about.lblVersion->geometry().top());
}

}  // namespace

class tst_frmAbout : public QObject {
    Q_OBJECT

private slots:
    void showsTheVersionWithItsRevision();
    void namesLicenceAndAuthors();
    void drawsTheTitleAtItsPlaces();
    void theTitleIsNotCutOff();
    void theTitlePersists();
    void errorsFromTheThirdFontOnAreIgnored();
    void closeClosesIt();
    void enterAndEscapeCloseIt_data();
    void enterAndEscapeCloseIt();
    void aClickOpensTheWebSiteAndClosesIt();
    void keysOpenTheWebSite_data();
    void keysOpenTheWebSite();
    void otherButtonsDoNotOpenTheWebSite();
    void tabReachesTheWebSite();
    void theWebSiteIsALinkForAssistiveTools();
    void everyTextFits();
};

void tst_frmAbout::showsTheVersionWithItsRevision() {
    const frmAbout about;
    const QString version =
        QString("Version %1.%2.%3").arg(LEDGIX_VERSION_MAJOR).arg(LEDGIX_VERSION_MINOR).arg(LEDGIX_VERSION_REVISION);
    QCOMPARE(about.lblVersion->text(), version);
    QCOMPARE(about.lblVersion->objectName(), "lblVersion");
    QCOMPARE(about.lblWebSite->objectName(), "lblWebSite");
    QCOMPARE(about.cmdClose->objectName(), "cmdClose");
}

void tst_frmAbout::namesLicenceAndAuthors() {
    const frmAbout about;
    QVERIFY(about.findChild<QLabel*>("lblCopyright")->text().contains("the Vantreo Ledgix authors"));
    QVERIFY(about.findChild<QLabel*>("lblLicence")->text().contains("GPL-3.0-or-later"));
}

void tst_frmAbout::drawsTheTitleAtItsPlaces() {
    frmAbout about;
    const QImage picture = BandOf(about);
    const QRect red = InkOf(picture, kRed);
    const QRect black = InkOf(picture, kBlack);
    const QRect blue = InkOf(picture, kBlue);
    QVERIFY(red.left() >= 120 && red.left() < 130);
    QVERIFY(red.top() < 20);
    QVERIFY(black.left() > red.right() - 3 && black.left() < red.right() + 12);
    QVERIFY(qAbs(black.bottom() - red.bottom()) <= 2);
    QVERIFY(blue.left() >= 1900 / 15);
    QVERIFY(blue.top() > 600 / 15);
}

void tst_frmAbout::theTitleIsNotCutOff() {
    frmAbout about;
    const QImage picture = BandOf(about);
    const QRect inside = picture.rect().adjusted(8, 0, -8, -8);
    for (const QRgb colour : {kRed, kBlack, kBlue})
        QVERIFY(inside.contains(InkOf(picture, colour)));
}

void tst_frmAbout::theTitlePersists() {
    frmAbout about;
    about.show();
    const QImage before = PictureOf(about);
    about.hide();
    about.show();
    QCOMPARE(InkOf(PictureOf(about), kBlue), InkOf(before, kBlue));
    QVERIFY(!InkOf(before, kBlue).isEmpty());
}

void tst_frmAbout::errorsFromTheThirdFontOnAreIgnored() {
    const MessageRecorder messages;
    frmAbout failing(nullptr, [](const std::string&) -> bool {
        ledgix::runtime::RaiseError(ledgix::runtime::ErrorNumber::kOverflow);
    });
    frmAbout missing(nullptr, [](const std::string&) { return false; });
    QVERIFY(messages.messages().empty());
    QVERIFY(!failing.lblVersion->text().isEmpty());
    QCOMPARE(PictureOf(failing), PictureOf(missing));
}

void tst_frmAbout::closeClosesIt() {
    frmAbout about;
    about.show();
    QTest::mouseClick(about.cmdClose, Qt::LeftButton);
    QVERIFY(!about.isVisible());
}

void tst_frmAbout::enterAndEscapeCloseIt_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("Escape") << Qt::Key_Escape;
}

void tst_frmAbout::enterAndEscapeCloseIt() {
    QFETCH(Qt::Key, key);
    const Browser browser;
    frmAbout about;
    about.show();
    QTest::keyClick(&about, key);
    QVERIFY(!about.isVisible());
    QVERIFY(browser.opened.isEmpty());
}

void tst_frmAbout::aClickOpensTheWebSiteAndClosesIt() {
    const Browser browser;
    frmAbout about;
    QTimer::singleShot(0, &about, [&about] { QTest::mouseClick(about.lblWebSite, Qt::LeftButton); });
    about.exec();
    QCOMPARE(browser.opened, QList<QUrl>{QUrl(kAddress)});
    QVERIFY(!about.isVisible());
}

void tst_frmAbout::keysOpenTheWebSite_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void tst_frmAbout::keysOpenTheWebSite() {
    QFETCH(Qt::Key, key);
    const Browser browser;
    frmAbout about;
    about.show();
    QTest::keyClick(about.lblWebSite, key);
    QCOMPARE(browser.opened, QList<QUrl>{QUrl(about.lblWebSite->text())});
    QVERIFY(!about.isVisible());
}

void tst_frmAbout::otherButtonsDoNotOpenTheWebSite() {
    const Browser browser;
    frmAbout about;
    about.show();
    QTest::mouseClick(about.lblWebSite, Qt::RightButton);
    QTest::mousePress(about.lblWebSite, Qt::LeftButton);
    QTest::mouseRelease(about.lblWebSite, Qt::LeftButton, {}, QPoint(-20, -20));
    QTest::keyClick(about.lblWebSite, Qt::Key_A);
    QVERIFY(browser.opened.isEmpty());
    QVERIFY(about.isVisible());
}

void tst_frmAbout::tabReachesTheWebSite() {
    frmAbout about;
    about.show();
    QVERIFY(QTest::qWaitForWindowActive(&about));
    QCOMPARE(about.focusWidget(), about.cmdClose);
    QTest::keyClick(about.focusWidget(), Qt::Key_Tab);
    QCOMPARE(about.focusWidget(), about.lblWebSite);
    QTest::keyClick(about.focusWidget(), Qt::Key_Tab);
    QCOMPARE(about.focusWidget(), about.cmdClose);
}

void tst_frmAbout::theWebSiteIsALinkForAssistiveTools() {
    const Browser browser;
    frmAbout about;
    about.show();
    QAccessibleInterface* link = QAccessible::queryAccessibleInterface(about.lblWebSite);
    QCOMPARE(link->role(), QAccessible::Link);
    QCOMPARE(link->text(QAccessible::Name), kAddress);
    QVERIFY(link->state().linked);
    QVERIFY(link->state().focusable);
    link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(browser.opened.size(), 1);
}

void tst_frmAbout::everyTextFits() {
    frmAbout about;
    QFont large = about.font();
    large.setPointSizeF(large.pointSizeF() * 2);
    about.setFont(large);
    about.adjustSize();
    about.show();
    for (const QLabel* label : about.findChildren<QLabel*>()) {
        QVERIFY2(label->height() >= label->heightForWidth(label->width()), qPrintable(label->objectName()));
        QVERIFY2(label->wordWrap() || label->width() >= label->sizeHint().width(), qPrintable(label->objectName()));
    }
}

QTEST_MAIN(tst_frmAbout)
#include "tst_frm_about.moc"
