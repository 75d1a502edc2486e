#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <stdexcept>

#include "ledgix_application.h"
#include "message_recorder.h"

using ledgix::shell::LedgixApplication;
using ledgix::test::MessageRecorder;
using namespace ledgix::runtime;

namespace {

void Fail() {
    RaiseError(ErrorNumber::kTypeMismatch, "Type mismatch");
}

}  // namespace

class tst_EventLoopTrap : public QObject {
    Q_OBJECT

private slots:
    void nothingIsShownWithoutAnError();
    void anErrorOfTheProgramIsShownUnderItsTitle();
    void anyOtherErrorIsShownWithItsText();
    void theProgramGoesOn();
    void errorsDoNotPileUpOverAnOpenBox();
    void theProgramIsNamed();
    void windowsBearTheIcon();
};

void tst_EventLoopTrap::nothingIsShownWithoutAnError() {
    const MessageRecorder messages;
    QPushButton button;
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(messages.messages().empty());
}

void tst_EventLoopTrap::anErrorOfTheProgramIsShownUnderItsTitle() {
    const MessageRecorder messages;
    QPushButton button;
    connect(&button, &QPushButton::clicked, &button, Fail);
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(messages.messages().size(), 1U);
    QVERIFY((messages.messages()[0] == MessageRecorder::Message{"13 - Type mismatch", 0, "Vantreo Ledgix"}));
}

void tst_EventLoopTrap::anyOtherErrorIsShownWithItsText() {
    const MessageRecorder messages;
    QTimer::singleShot(0, this, [] { throw std::runtime_error("something else"); });
    QTest::qWait(20);
    QCOMPARE(messages.messages().size(), 1U);
    QVERIFY((messages.messages()[0] == MessageRecorder::Message{"something else", 0, "Vantreo Ledgix"}));
}

void tst_EventLoopTrap::theProgramGoesOn() {
    const MessageRecorder messages;
    int after = 0;
    QTimer::singleShot(0, this, Fail);
    QTimer::singleShot(1, this, Fail);
    QTimer::singleShot(2, this, [&after] { ++after; });
    QTest::qWait(50);
    QCOMPARE(messages.messages().size(), 2U);
    QCOMPARE(after, 1);
}

void tst_EventLoopTrap::errorsDoNotPileUpOverAnOpenBox() {
    class Waiting : public MessageBox {
    public:
        int shown = 0;
        MessageAnswer Show(std::string_view, int, std::string_view) override {
            ++shown;
            QTest::qWait(50);
            return MessageAnswer::kOk;
        }
    } box;
    InstallMessageBox(&box);
    QTimer::singleShot(0, this, Fail);
    QTimer::singleShot(10, this, Fail);
    QTimer::singleShot(100, this, Fail);
    QTest::qWait(200);
    InstallMessageBox(nullptr);
    QCOMPARE(box.shown, 2);
}

void tst_EventLoopTrap::theProgramIsNamed() {
    QCOMPARE(QCoreApplication::organizationName(), "Vantreo");
    QCOMPARE(QCoreApplication::applicationName(), "Ledgix");
    QCOMPARE(QGuiApplication::desktopFileName(), "ledgix");
    QCOMPARE(QCoreApplication::applicationVersion(),
             QString("%1.%2.%3").arg(LEDGIX_VERSION_MAJOR).arg(LEDGIX_VERSION_MINOR).arg(LEDGIX_VERSION_REVISION));
}

void tst_EventLoopTrap::windowsBearTheIcon() {
    const QWidget window;
    QVERIFY(!window.windowIcon().isNull());
}

int main(int argc, char** argv) {
    LedgixApplication application(argc, argv);
    tst_EventLoopTrap test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_event_loop_trap.moc"
