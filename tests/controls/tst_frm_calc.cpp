#include <QAccessible>
#include <QApplication>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "case_list.h"
#include "frm_calc.h"
#include "regional_settings.h"
#include "zq_text_box.h"

using ledgix::controls::frmCalc;
using ledgix::controls::zqTextBox;

namespace {

zqTextBox* FieldOf(const frmCalc& calculator, const QString& name) {
    return calculator.findChild<zqTextBox*>(name);
}

// Fills a field with keys as a user does who has just come to it.
void Fill(zqTextBox* field, const QString& digits) {
    auto* line = field->findChild<QLineEdit*>("TextBox");
    line->selectAll();
    QTest::keyClicks(line, digits);
}

}  // namespace

class tst_frmCalc : public QObject {
    Q_OBJECT

private slots:
    void init() { ledgix::runtime::InstallRegion(ledgix::runtime::UnitedStates()); }

    void followsTheCases_data();
    void followsTheCases();
    void isOneInstance();
    void hasTheStatedParts();
    void fieldsTakeWholePositiveNumbers();
    void typingUpdatesTheOthersAndNotItself();
    void eachAssignmentSendsOneChange();
    void enterSaves();
    void escapeCancels();
    void closingCancels();
    void buttonsSaveAndCancel();
    void mnemonicsReachFieldsAndButtons();
    void opensOnTheWeek();
    void tabFollowsThePage();
    void fieldsAreNamedForAssistiveTools();
};

void tst_frmCalc::followsTheCases_data() {
    QTest::addColumn<QJsonObject>("given");
    const QJsonArray cases = ledgix::test::CasesOf("period_calculator.json").toArray();
    QVERIFY(!cases.isEmpty());
    for (const QJsonValue& given : cases)
        QTest::newRow(qPrintable(given["name"].toString())) << given.toObject();
}

void tst_frmCalc::followsTheCases() {
    QFETCH(QJsonObject, given);
    frmCalc calculator;
    calculator.show();
    for (const QJsonValue& step : given["steps"].toArray()) {
        const QJsonObject fields = step.toObject();
        for (const QString& name : fields.keys())
            FieldOf(calculator, name)->setText(fields[name].toString());
    }
    for (const char* name : {"txtWeek", "txtMonth", "txtYear"})
        QCOMPARE(FieldOf(calculator, name)->Text(), given[name].toString());
    QTest::mouseClick(calculator.cmdSave, Qt::LeftButton);
    QVERIFY(!calculator.bCancel);
    QVERIFY(!calculator.isVisible());
    QCOMPARE(calculator.txtYear->Text(), given["result"].toString());
}

void tst_frmCalc::isOneInstance() {
    QCOMPARE(&frmCalc::Instance(), &frmCalc::Instance());
}

void tst_frmCalc::hasTheStatedParts() {
    const frmCalc calculator;
    const QList<std::pair<const char*, const char*>> labels = {
        {"Label1", "Per &Week"}, {"Label2", "Per &Month"}, {"Label3", "Per &Year"}};
    const QList<zqTextBox*> fields = {calculator.txtWeek, calculator.txtMonth, calculator.txtYear};
    for (qsizetype i = 0; i < labels.size(); ++i) {
        const auto* label = calculator.findChild<QLabel*>(labels[i].first);
        QVERIFY(label);
        QCOMPARE(label->text(), labels[i].second);
        QCOMPARE(label->buddy(), fields[i]);
    }
    QCOMPARE(calculator.findChild<QPushButton*>("cmdSave")->text(), "&Save");
    QCOMPARE(calculator.findChild<QPushButton*>("cmdCancel")->text(), "&Cancel");
}

void tst_frmCalc::fieldsTakeWholePositiveNumbers() {
    frmCalc calculator;
    for (zqTextBox* field : {calculator.txtWeek, calculator.txtMonth, calculator.txtYear}) {
        QVERIFY(field->IsNumeric());
        QCOMPARE(field->Alignment(), 1);
        QCOMPARE(field->Text(), "0");
        QCOMPARE(field->DecimalPlaces(), 0);
        QVERIFY(!field->AllowNegative());
        QVERIFY(!field->ShowCalc());
    }
    Fill(calculator.txtWeek, "-12.5");
    QCOMPARE(calculator.txtWeek->Text(), "125");
}

void tst_frmCalc::typingUpdatesTheOthersAndNotItself() {
    frmCalc calculator;
    Fill(calculator.txtWeek, "100");
    QCOMPARE(calculator.txtYear->Text(), "5200");
    QCOMPARE(calculator.txtMonth->Text(), "433");
    Fill(calculator.txtYear, "1000");
    QCOMPARE(calculator.txtMonth->Text(), "83");
    QCOMPARE(calculator.txtWeek->Text(), "19");
    QCOMPARE(calculator.txtYear->Text(), "1000");
}

void tst_frmCalc::eachAssignmentSendsOneChange() {
    frmCalc calculator;
    const QSignalSpy week(calculator.txtWeek, &zqTextBox::Change);
    const QSignalSpy month(calculator.txtMonth, &zqTextBox::Change);
    const QSignalSpy year(calculator.txtYear, &zqTextBox::Change);
    calculator.txtWeek->setText("100");
    QCOMPARE(week.count(), 1);
    QCOMPARE(month.count(), 1);
    QCOMPARE(year.count(), 1);
}

void tst_frmCalc::enterSaves() {
    frmCalc calculator;
    calculator.show();
    QVERIFY(QTest::qWaitForWindowActive(&calculator));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
    QVERIFY(!calculator.isVisible());
    QVERIFY(!calculator.bCancel);
}

void tst_frmCalc::escapeCancels() {
    frmCalc calculator;
    calculator.bCancel = false;
    calculator.show();
    QVERIFY(QTest::qWaitForWindowActive(&calculator));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!calculator.isVisible());
    QVERIFY(calculator.bCancel);
}

void tst_frmCalc::closingCancels() {
    frmCalc calculator;
    calculator.bCancel = false;
    calculator.show();
    calculator.close();
    QVERIFY(calculator.bCancel);
}

void tst_frmCalc::buttonsSaveAndCancel() {
    frmCalc calculator;
    calculator.show();
    QTest::mouseClick(calculator.cmdSave, Qt::LeftButton);
    QVERIFY(!calculator.bCancel);
    calculator.show();
    QTest::mouseClick(calculator.cmdCancel, Qt::LeftButton);
    QVERIFY(calculator.bCancel);
    QVERIFY(!calculator.isVisible());
}

void tst_frmCalc::mnemonicsReachFieldsAndButtons() {
    frmCalc calculator;
    calculator.show();
    QVERIFY(QTest::qWaitForWindowActive(&calculator));
    const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key, Qt::AltModifier); };
    press(Qt::Key_M);
    QCOMPARE(QApplication::focusWidget(), calculator.txtMonth->focusProxy());
    press(Qt::Key_Y);
    QCOMPARE(QApplication::focusWidget(), calculator.txtYear->focusProxy());
    press(Qt::Key_W);
    QCOMPARE(QApplication::focusWidget(), calculator.txtWeek->focusProxy());
    press(Qt::Key_S);
    QTRY_VERIFY(!calculator.isVisible());
    QVERIFY(!calculator.bCancel);
    calculator.show();
    QVERIFY(QTest::qWaitForWindowActive(&calculator));
    press(Qt::Key_C);
    QTRY_VERIFY(!calculator.isVisible());
    QVERIFY(calculator.bCancel);
}

void tst_frmCalc::opensOnTheWeek() {
    frmCalc calculator;
    calculator.txtYear->setText("5200");
    calculator.show();
    QVERIFY(QTest::qWaitForWindowActive(&calculator));
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QCOMPARE(line, calculator.txtWeek->focusProxy());
    QCOMPARE(line->selectedText(), "100");
}

void tst_frmCalc::tabFollowsThePage() {
    frmCalc calculator;
    calculator.show();
    QVERIFY(QTest::qWaitForWindowActive(&calculator));
    const QList<const QWidget*> page = {calculator.txtWeek->focusProxy(), calculator.txtMonth->focusProxy(),
                                        calculator.txtYear->focusProxy(), calculator.cmdSave, calculator.cmdCancel};
    for (const QWidget* stop : page) {
        QCOMPARE(QApplication::focusWidget(), stop);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget(), page.first());
}

void tst_frmCalc::fieldsAreNamedForAssistiveTools() {
    frmCalc calculator;
    calculator.show();
    const auto name = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    QCOMPARE(name(calculator.txtWeek->focusProxy()), "Per Week");
    QCOMPARE(name(calculator.txtMonth->focusProxy()), "Per Month");
    QCOMPARE(name(calculator.txtYear->focusProxy()), "Per Year");
    QCOMPARE(name(calculator.cmdSave), "Save");
}

QTEST_MAIN(tst_frmCalc)
#include "tst_frm_calc.moc"
