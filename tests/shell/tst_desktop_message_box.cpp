#include <QAccessible>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "desktop_message_box.h"

using namespace ledgix::runtime;
using ledgix::shell::DesktopMessageBox;

Q_DECLARE_METATYPE(MessageAnswer)

namespace {

constexpr int kDeleteQuestion = kYesNo | kQuestion | kSecondButtonIsDefault;

// Shows a box, lets `user` act on it, and gives its answer.
MessageAnswer Answer(const std::string& text, int style, const std::function<void(QMessageBox&)>& user,
                     const std::string& title = "Title") {
    DesktopMessageBox box;
    bool seen = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* window = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        seen = window != nullptr;
        if (window)
            user(*window);
    });
    const MessageAnswer answer = box.Show(text, style, title);
    if (!seen)
        qFatal("no box was shown");
    return answer;
}

MessageAnswer AnswerToKey(int style, Qt::Key key) {
    return Answer("Text", style, [key](QMessageBox& box) { QTest::keyClick(&box, key); });
}

}  // namespace

class tst_DesktopMessageBox : public QObject {
    Q_OBJECT

private slots:
    void answersKeys_data();
    void answersKeys();
    void answersClicks();
    void closingIsEscape();
    void showsTextAndTitleAsTheyAre();
    void hasThePictureOfItsStyle_data();
    void hasThePictureOfItsStyle();
    void anEmptyTextStillShowsTheTitle();
    void isModalToTheProgramAboveTheWindowInUse();
    void survivesTheEndOfTheWindowUnderIt();
    void assistiveToolsReadTheText();
};

void tst_DesktopMessageBox::answersKeys_data() {
    QTest::addColumn<int>("style");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<MessageAnswer>("answer");
    QTest::newRow("Enter is OK") << int(kOkOnly) << Qt::Key_Return << MessageAnswer::kOk;
    QTest::newRow("Escape is OK") << int(kOkOnly) << Qt::Key_Escape << MessageAnswer::kOk;
    QTest::newRow("Enter is Yes") << int(kYesNo) << Qt::Key_Return << MessageAnswer::kYes;
    QTest::newRow("Enter is No where it is the default") << kDeleteQuestion << Qt::Key_Return << MessageAnswer::kNo;
    QTest::newRow("Escape is No") << int(kYesNo) << Qt::Key_Escape << MessageAnswer::kNo;
    QTest::newRow("Y is Yes") << kDeleteQuestion << Qt::Key_Y << MessageAnswer::kYes;
    QTest::newRow("N is No") << int(kYesNo) << Qt::Key_N << MessageAnswer::kNo;
}

void tst_DesktopMessageBox::answersKeys() {
    QFETCH(int, style);
    QFETCH(Qt::Key, key);
    QFETCH(MessageAnswer, answer);
    QCOMPARE(int(AnswerToKey(style, key)), int(answer));
}

void tst_DesktopMessageBox::answersClicks() {
    const auto click = [](QMessageBox::StandardButton button) {
        return [button](QMessageBox& box) { QTest::mouseClick(box.button(button), Qt::LeftButton); };
    };
    QCOMPARE(int(Answer("", kOkOnly, click(QMessageBox::Ok))), int(MessageAnswer::kOk));
    QCOMPARE(int(Answer("", kDeleteQuestion, click(QMessageBox::Yes))), int(MessageAnswer::kYes));
    QCOMPARE(int(Answer("", kDeleteQuestion, click(QMessageBox::No))), int(MessageAnswer::kNo));
}

void tst_DesktopMessageBox::closingIsEscape() {
    const auto close = [](QMessageBox& box) { box.close(); };
    QCOMPARE(int(Answer("", kOkOnly, close)), int(MessageAnswer::kOk));
    QCOMPARE(int(Answer("", kYesNo, close)), int(MessageAnswer::kNo));
}

void tst_DesktopMessageBox::showsTextAndTitleAsTheyAre() {
    const std::string text = "General Errors...\r\n\r\n13 - <b>Type</b> & mismatch – ä";
    Answer(
        text, kOkOnly,
        [](QMessageBox& box) {
            QCOMPARE(box.text(), "General Errors...\n\n13 - <b>Type</b> & mismatch – ä");
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.windowTitle(), "Sub Main");
            box.close();
        },
        "Sub Main");
}

void tst_DesktopMessageBox::hasThePictureOfItsStyle_data() {
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("icon");
    QTest::newRow("none") << int(kOkOnly) << int(QMessageBox::NoIcon);
    QTest::newRow("question") << kDeleteQuestion << int(QMessageBox::Question);
    QTest::newRow("exclamation") << int(kExclamation) << int(QMessageBox::Warning);
}

void tst_DesktopMessageBox::hasThePictureOfItsStyle() {
    QFETCH(int, style);
    QFETCH(int, icon);
    int shown = -1;
    Answer("", style, [&shown](QMessageBox& box) {
        shown = box.icon();
        box.close();
    });
    QCOMPARE(shown, icon);
}

void tst_DesktopMessageBox::anEmptyTextStillShowsTheTitle() {
    int width = 0;
    Answer("", kOkOnly, [&width](QMessageBox& box) {
        width = box.width();
        box.close();
    });
    QVERIFY(width >= 280);
}

void tst_DesktopMessageBox::isModalToTheProgramAboveTheWindowInUse() {
    QWidget window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QWidget* parent = nullptr;
    Qt::WindowModality modality = Qt::NonModal;
    Answer("", kOkOnly, [&](QMessageBox& box) {
        parent = box.parentWidget();
        modality = box.windowModality();
        box.close();
    });
    QCOMPARE(parent, &window);
    QCOMPARE(modality, Qt::ApplicationModal);
}

void tst_DesktopMessageBox::survivesTheEndOfTheWindowUnderIt() {
    auto* window = new QWidget;
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QCOMPARE(int(Answer("", kDeleteQuestion, [window](QMessageBox&) { delete window; })), int(MessageAnswer::kNo));
}

void tst_DesktopMessageBox::assistiveToolsReadTheText() {
    Answer("Delete profile 'Smith'?", kDeleteQuestion, [](QMessageBox& box) {
        QAccessibleInterface* shown = QAccessible::queryAccessibleInterface(&box);
        QCOMPARE(shown->role(), QAccessible::AlertMessage);
        bool found = false;
        for (const QLabel* label : box.findChildren<QLabel*>())
            found =
                found || QAccessible::queryAccessibleInterface(const_cast<QLabel*>(label))->text(QAccessible::Name) ==
                             "Delete profile 'Smith'?";
        QVERIFY(found);
        box.close();
    });
}

QTEST_MAIN(tst_DesktopMessageBox)
#include "tst_desktop_message_box.moc"
