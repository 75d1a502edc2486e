#include <QAccessible>
#include <QJsonArray>
#include <QLabel>

#include "case_list.h"
#include "numeric_form.h"

using ledgix::controls::zqTextBox;
using ledgix::test::Form;
using ledgix::test::Germany;
using ledgix::test::Press;
namespace runtime = ledgix::runtime;

class tst_zqTextBox : public QObject {
    Q_OBJECT

private slots:
    void init() { runtime::InstallRegion(runtime::UnitedStates()); }

    void followsTheCases_data();
    void followsTheCases();
    void hasThePropertiesOfAFormFile();
    void startsWithTheDefaults();
    void numericModeAlignsRight();
    void handlerThatSetsTextHearsItAgain();
    void sameTextFromCodeIsNoChange();
    void commaLocale_data();
    void commaLocale();
    void showsTheCommaAndKeepsThePoint();
    void turningNumericKeepsTheText();
    void numberPadTypesTheDecimalSeparator();
    void commaIsRefusedWhereThePointIsDecimal();
    void focusByTabSelectsAll();
    void focusByClickSelectsAll();
    void focusByShortcutSelectsAll();
    void firstFieldOfAWindowIsSelected();
    void windowThatComesBackKeepsTheCaret();
    void secondClickSetsTheCaret();
    void drawingTheMouseSelectsAPart();
    void buttonIsThereExactlyWithShowCalc();
    void partsFillTheControl();
    void accessibleNameComesFromTheLabel();
};

void tst_zqTextBox::followsTheCases_data() {
    QTest::addColumn<QJsonObject>("given");
    const QJsonArray cases = ledgix::test::CasesOf("numeric_text_box.json").toArray();
    QVERIFY(!cases.isEmpty());
    for (const QJsonValue& given : cases)
        QTest::newRow(qPrintable(given["name"].toString())) << given.toObject();
}

void tst_zqTextBox::followsTheCases() {
    QFETCH(QJsonObject, given);
    Form form;
    QVERIFY(form.ShowActive());
    for (const char* name : {"IsNumeric", "DecimalPlaces", "AllowNegative", "Text"})
        QVERIFY(form.box->setProperty(name, given[name].toVariant()));
    form.Start(given["Text"].toString());
    QJsonArray texts;
    for (const QJsonValue& step : given["steps"].toArray()) {
        if (step["focus"].toBool())
            form.box->setFocus();
        Press(form.line(), step["type"].toString());
        if (!step["set"].isUndefined())
            form.box->setText(step["set"].toString());
        texts.append(form.box->Text());
        QCOMPARE(form.line()->text(), form.box->Text());
    }
    QCOMPARE(texts, given["TextAfterEachStep"].toArray());
    QCOMPARE(form.box->Value(), given["Value"].toDouble());
    QCOMPARE(form.changes.count(), given["ChangeEvents"].toInt());
}

void tst_zqTextBox::hasThePropertiesOfAFormFile() {
    zqTextBox box;
    const QList<std::pair<const char*, QVariant>> values = {
        {"Enabled", false}, {"Alignment", 1},      {"Locked", true},     {"MaxLength", 50},
        {"Text", "Smith"},  {"IsNumeric", false},  {"DecimalPlaces", 4}, {"AllowNegative", true},
        {"ShowCalc", true}, {"ToolTipText", "tip"}};
    for (const auto& [name, value] : values) {
        QVERIFY2(box.setProperty(name, value), name);
        QCOMPARE(box.property(name), value);
    }
    const auto* line = box.findChild<QLineEdit*>("TextBox");
    QVERIFY(!line->isEnabled());
    QVERIFY(line->isReadOnly());
    QCOMPARE(line->maxLength(), 50);
    QCOMPARE(line->text(), "Smith");
    QCOMPARE(line->toolTip(), "tip");
    QVERIFY(line->alignment() & Qt::AlignRight);
}

void tst_zqTextBox::startsWithTheDefaults() {
    const zqTextBox box;
    QVERIFY(box.Enabled());
    QCOMPARE(box.Alignment(), 0);
    QVERIFY(!box.Locked());
    QCOMPARE(box.MaxLength(), 0);
    QCOMPARE(box.Text(), "Text1");
    QVERIFY(!box.IsNumeric());
    QCOMPARE(box.DecimalPlaces(), 0);
    QVERIFY(!box.AllowNegative());
    QVERIFY(!box.ShowCalc());
    QCOMPARE(box.ToolTipText(), "");
    QCOMPARE(box.Value(), 0.0);
}

void tst_zqTextBox::numericModeAlignsRight() {
    zqTextBox box;
    box.setIsNumeric(true);
    QCOMPARE(box.Alignment(), 1);
    box.setIsNumeric(false);
    QCOMPARE(box.Alignment(), 1);
}

void tst_zqTextBox::handlerThatSetsTextHearsItAgain() {
    Form form;
    connect(form.box, &zqTextBox::Change, form.box, [&form] {
        if (form.box->Value() > 100)
            form.box->setText("100");
    });
    form.box->setText("250");
    QCOMPARE(form.box->Text(), "100");
    QCOMPARE(form.changes.count(), 2);
}

void tst_zqTextBox::sameTextFromCodeIsNoChange() {
    Form form;
    form.Start("12");
    form.box->setText("12");
    QCOMPARE(form.changes.count(), 0);
}

void tst_zqTextBox::commaLocale_data() {
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("comma") << "12,5"
                           << "12.5"
                           << "12,5";
    QTest::newRow("point") << "12.5"
                           << "12.5"
                           << "12,5";
    QTest::newRow("only one of both") << "1,2.3"
                                      << "1.23"
                                      << "1,23";
    QTest::newRow("fraction") << ",5"
                              << ".5"
                              << ",5";
    QTest::newRow("third decimal") << "12,345"
                                   << "12.34"
                                   << "12,34";
    QTest::newRow("erased point") << "12,\b5"
                                  << "125"
                                  << "125";
}

void tst_zqTextBox::commaLocale() {
    QFETCH(QString, keys);
    QFETCH(QString, text);
    QFETCH(QString, shown);
    runtime::InstallRegion(Germany());
    Form form;
    Press(form.line(), keys);
    QCOMPARE(form.box->Text(), text);
    QCOMPARE(form.line()->text(), shown);
    QCOMPARE(form.box->Value(), text.toDouble());
}

void tst_zqTextBox::showsTheCommaAndKeepsThePoint() {
    runtime::InstallRegion(Germany());
    Form form;
    form.box->setText("1234.5");
    QCOMPARE(form.line()->text(), "1234,5");
    form.box->setText("12,34");
    QCOMPARE(form.box->Text(), "12.34");
    form.line()->clear();
    QCOMPARE(form.box->Text(), "0");
}

void tst_zqTextBox::turningNumericKeepsTheText() {
    runtime::InstallRegion(Germany());
    zqTextBox box;
    const QSignalSpy changes(&box, &zqTextBox::Change);
    box.setText("12.5");
    box.setIsNumeric(true);
    QCOMPARE(box.Text(), "12.5");
    QCOMPARE(box.findChild<QLineEdit*>()->text(), "12,5");
    box.setIsNumeric(false);
    QCOMPARE(box.Text(), "12.5");
    QCOMPARE(changes.count(), 1);
}

void tst_zqTextBox::numberPadTypesTheDecimalSeparator() {
    Form form;
    form.Start("12");
    QKeyEvent pad(QEvent::KeyPress, Qt::Key_Comma, Qt::KeypadModifier, ",");
    QApplication::sendEvent(form.line(), &pad);
    Press(form.line(), "5");
    QCOMPARE(form.box->Text(), "12.5");
}

void tst_zqTextBox::commaIsRefusedWhereThePointIsDecimal() {
    Form form;
    Press(form.line(), "1,234");
    QCOMPARE(form.box->Text(), "1234");
    QCOMPARE(form.changes.count(), 4);
}

void tst_zqTextBox::focusByTabSelectsAll() {
    Form form;
    form.Start("1234");
    QVERIFY(form.ShowActive());
    QTest::keyClick(form.before, Qt::Key_Tab);
    QVERIFY(form.line()->hasFocus());
    QCOMPARE(form.line()->selectedText(), "1234");
}

void tst_zqTextBox::focusByClickSelectsAll() {
    Form form;
    form.Start("1234");
    QVERIFY(form.ShowActive());
    QTest::mouseClick(form.line(), Qt::LeftButton);
    QVERIFY(form.line()->hasFocus());
    QCOMPARE(form.line()->selectedText(), "1234");
}

void tst_zqTextBox::focusByShortcutSelectsAll() {
    Form form;
    form.Start("1234");
    auto* label = new QLabel("&Rent", &form);
    label->setBuddy(form.box);
    QVERIFY(form.ShowActive());
    QTest::keyClick(form.before, Qt::Key_R, Qt::AltModifier);
    QVERIFY(form.line()->hasFocus());
    QCOMPARE(form.line()->selectedText(), "1234");
}

void tst_zqTextBox::firstFieldOfAWindowIsSelected() {
    Form form;
    form.Start("1234");
    form.box->setFocus();
    form.show();
    QTRY_VERIFY(form.line()->hasFocus());
    QCOMPARE(form.line()->selectedText(), "1234");
}

void tst_zqTextBox::windowThatComesBackKeepsTheCaret() {
    Form form;
    form.Start("1234");
    QVERIFY(form.ShowActive());
    form.box->setFocus();
    form.line()->setCursorPosition(2);
    QLineEdit other;
    other.show();
    other.setFocus();
    other.activateWindow();
    QTRY_VERIFY(other.hasFocus());
    form.activateWindow();
    QTRY_VERIFY(form.line()->hasFocus());
    QVERIFY(!form.line()->hasSelectedText());
    QCOMPARE(form.line()->cursorPosition(), 2);
}

void tst_zqTextBox::secondClickSetsTheCaret() {
    Form form;
    form.Start("1234");
    QVERIFY(form.ShowActive());
    form.box->setFocus();
    QTest::mousePress(form.line(), Qt::LeftButton, {}, QPoint(form.line()->width() - 3, form.line()->height() / 2));
    QTest::mouseRelease(form.line(), Qt::LeftButton, {}, QPoint(form.line()->width() - 3, form.line()->height() / 2));
    QVERIFY(!form.line()->hasSelectedText());
    QCOMPARE(form.line()->cursorPosition(), 4);
}

void tst_zqTextBox::drawingTheMouseSelectsAPart() {
    Form form;
    form.Start("1234");
    QVERIFY(form.ShowActive());
    const QPoint right(form.line()->width() - 3, form.line()->height() / 2);
    const int two_digits = form.line()->fontMetrics().horizontalAdvance("34");
    QTest::mousePress(form.line(), Qt::LeftButton, {}, right);
    QTest::mouseMove(form.line(), right - QPoint(two_digits + 4, 0));
    QTest::mouseRelease(form.line(), Qt::LeftButton, {}, right - QPoint(two_digits + 4, 0));
    QCOMPARE(form.line()->selectedText(), "34");
}

void tst_zqTextBox::buttonIsThereExactlyWithShowCalc() {
    Form form;
    QVERIFY(form.ShowActive());
    QVERIFY(!form.button()->isVisible());
    form.box->setShowCalc(true);
    QVERIFY(form.button()->isVisible());
    QVERIFY(form.button()->isEnabled());
    form.box->setShowCalc(false);
    QVERIFY(!form.button()->isVisible());
    QVERIFY(!form.button()->isEnabled());
}

void tst_zqTextBox::partsFillTheControl() {
    Form form;
    QVERIFY(form.ShowActive());
    QCOMPARE(form.line()->width(), form.box->width());
    QCOMPARE(form.line()->height(), form.box->height() - 2);
    form.box->setShowCalc(true);
    QTRY_COMPARE(form.line()->width(), form.box->width() - form.button()->width());
    QCOMPARE(form.button()->height(), form.box->height() - 2);
    QCOMPARE(form.button()->geometry().top(), 1);
    QCOMPARE(form.button()->geometry().right(), form.box->rect().right());
}

void tst_zqTextBox::accessibleNameComesFromTheLabel() {
    Form form;
    form.Start("1234");
    auto* label = new QLabel("&Rent && rates", &form);
    label->setBuddy(form.box);
    QVERIFY(form.ShowActive());
    QAccessibleInterface* line = QAccessible::queryAccessibleInterface(form.line());
    QVERIFY(line);
    QCOMPARE(line->role(), QAccessible::EditableText);
    QCOMPARE(line->text(QAccessible::Name), "Rent & rates");
    QCOMPARE(line->text(QAccessible::Value), "1234");
    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(form.button());
    QCOMPARE(button->text(QAccessible::Name), "Period calculator");
}

QTEST_MAIN(tst_zqTextBox)
#include "tst_zq_text_box.moc"
