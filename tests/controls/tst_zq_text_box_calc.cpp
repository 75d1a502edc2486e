#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <functional>

#include "frm_calc.h"
#include "numeric_form.h"

using ledgix::controls::frmCalc;
using ledgix::test::Form;
using ledgix::test::Press;
namespace runtime = ledgix::runtime;

namespace {

// Answers the calculator once it is open, and closes it if the answer does not.
void WhenCalculatorOpens(const std::function<void(frmCalc&)>& answer) {
    QTimer::singleShot(0, [answer] {
        frmCalc& calculator = frmCalc::Instance();
        if (QTest::qWaitFor([&] { return calculator.isAncestorOf(QApplication::focusWidget()); }))
            answer(calculator);
        const bool left_open = calculator.isVisible();
        if (left_open)
            calculator.reject();
        QVERIFY(!left_open);
    });
}

}  // namespace

class tst_zqTextBoxCalc : public QObject {
    Q_OBJECT

private slots:
    void init() { runtime::InstallRegion(runtime::UnitedStates()); }

    void calculatorOpensByMouseDown();
    void calculatorOpensByKey_data();
    void calculatorOpensByKey();
    void calculatorKeysDoNothingWithoutShowCalc();
    void cancelledCalculatorChangesNothing();
    void calculatorOpensBelowInLine();
    void calculatorOpensAboveNearTheBottom();
    void lockedBoxDoesNotOpenTheCalculator();
};

void tst_zqTextBoxCalc::calculatorOpensByMouseDown() {
    Form form;
    form.box->setShowCalc(true);
    form.Start("5200");
    QVERIFY(form.ShowActive());
    WhenCalculatorOpens([](frmCalc& calculator) {
        QCOMPARE(calculator.txtWeek->Text(), "100");
        QVERIFY(calculator.isModal());
        calculator.txtMonth->setText("500");
        QTest::mouseClick(calculator.cmdSave, Qt::LeftButton);
    });
    QTest::mousePress(form.button(), Qt::LeftButton);
    QCOMPARE(form.box->Text(), "6000");
    QCOMPARE(form.changes.count(), 1);
    QVERIFY(!form.button()->isDown());
    QTRY_VERIFY(form.line()->hasFocus());
}

void tst_zqTextBoxCalc::calculatorOpensByKey_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("held");
    QTest::newRow("F4") << int(Qt::Key_F4) << int(Qt::NoModifier);
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << int(Qt::AltModifier);
}

void tst_zqTextBoxCalc::calculatorOpensByKey() {
    QFETCH(int, key);
    QFETCH(int, held);
    Form form;
    form.box->setShowCalc(true);
    QVERIFY(form.ShowActive());
    form.box->setFocus();
    WhenCalculatorOpens([](frmCalc& calculator) {
        Press(QApplication::focusWidget(), "100");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!calculator.isVisible());
    });
    QTest::keyClick(form.line(), Qt::Key(key), Qt::KeyboardModifiers(held));
    QCOMPARE(form.box->Text(), "5200");
    QTRY_VERIFY(form.line()->hasFocus());
    QCOMPARE(form.line()->cursorPosition(), 4);
}

void tst_zqTextBoxCalc::calculatorKeysDoNothingWithoutShowCalc() {
    Form form;
    QVERIFY(form.ShowActive());
    QTest::keyClick(form.line(), Qt::Key_F4);
    QTest::keyClick(form.line(), Qt::Key_Down, Qt::AltModifier);
    QVERIFY(!frmCalc::Instance().isVisible());
}

void tst_zqTextBoxCalc::cancelledCalculatorChangesNothing() {
    Form form;
    form.box->setShowCalc(true);
    form.Start("12.5");
    QVERIFY(form.ShowActive());
    WhenCalculatorOpens([](frmCalc& calculator) {
        QCOMPARE(calculator.txtYear->Text(), "12");
        calculator.txtWeek->setText("100");
        QTest::keyClick(&calculator, Qt::Key_Escape);
    });
    QTest::keyClick(form.line(), Qt::Key_F4);
    QVERIFY(frmCalc::Instance().bCancel);
    QCOMPARE(form.box->Text(), "12.5");
    QCOMPARE(form.changes.count(), 0);
}

void tst_zqTextBoxCalc::calculatorOpensBelowInLine() {
    Form form;
    form.box->setShowCalc(true);
    form.move(20, 20);
    QVERIFY(form.ShowActive());
    QPoint corner;
    WhenCalculatorOpens([&corner](frmCalc& calculator) {
        corner = calculator.frameGeometry().topLeft();
        calculator.cmdCancel->click();
    });
    QTest::keyClick(form.line(), Qt::Key_F4);
    QCOMPARE(corner, form.box->mapToGlobal(QPoint(0, form.box->height())));
}

void tst_zqTextBoxCalc::calculatorOpensAboveNearTheBottom() {
    Form form;
    form.box->setShowCalc(true);
    form.adjustSize();
    form.move(20, form.screen()->availableGeometry().bottom() - form.height());
    QVERIFY(form.ShowActive());
    QRect place;
    WhenCalculatorOpens([&place](frmCalc& calculator) {
        place = calculator.frameGeometry();
        calculator.cmdCancel->click();
    });
    QTest::keyClick(form.line(), Qt::Key_F4);
    QCOMPARE(place.bottom() + 1, form.box->mapToGlobal(QPoint(0, 0)).y());
    QVERIFY(form.screen()->availableGeometry().contains(place));
}

void tst_zqTextBoxCalc::lockedBoxDoesNotOpenTheCalculator() {
    Form form;
    form.box->setShowCalc(true);
    form.box->setLocked(true);
    QVERIFY(form.ShowActive());
    QTest::mousePress(form.button(), Qt::LeftButton);
    QVERIFY(!frmCalc::Instance().isVisible());
}

QTEST_MAIN(tst_zqTextBoxCalc)
#include "tst_zq_text_box_calc.moc"
