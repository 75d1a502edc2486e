#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "property_fixture.h"

using ledgix::test::BoxOf;
using ledgix::test::PropertyEditor;
using ledgix::test::TypeOver;

namespace {

QJsonArray Cases(const char* list) {
    QFile file(LEDGIX_TEST_DATA "/cases/property_editor.json");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll())["cases"][list].toArray();
}

void AddCases(const char* list) {
    QTest::addColumn<QJsonObject>("given");
    QTest::addColumn<bool>("typed");
    const QJsonArray cases = Cases(list);
    QVERIFY(!cases.isEmpty());
    for (const QJsonValue& given : cases) {
        const QString name = given["name"].toString(given["text"].toString());
        QTest::newRow(qPrintable(name + ", typed")) << given.toObject() << true;
        QTest::newRow(qPrintable(name + ", set")) << given.toObject() << false;
    }
}

// Enters a text by keys and leaves the field, or sets it.
void Enter(const PropertyEditor& editor, const char* name, const QString& text, bool typed) {
    if (!typed) {
        BoxOf(editor.form(), name)->setText(text);
        return;
    }
    editor.Type(name, text);
    editor.form()->txtName->setFocus();
}

}  // namespace

// What the property editor does while figures are entered: the split of the price, and the limits of the mortgage.
class tst_propertyEntry : public QObject {
    Q_OBJECT

private slots:
    void priceSplitFollowsTheCases_data() { AddCases("priceSplit"); }
    void priceSplitFollowsTheCases();
    void priceReachesThePropertyAtOnce();
    void everyKeyOfAPriceIsSplit();
    void laterPriceLeavesTheSplitAlone();
    void priceAfterAHandEnteredHouseValueIsNotSplit();
    void priceIsSplitAgainWhenBothValuesAreClearedByHand();
    void windowThatLosesTheFocusDoesNotEndTheEntry();
    void mortgageRateFollowsTheCases_data() { AddCases("mortgageRate"); }
    void mortgageRateFollowsTheCases();
    void mortgageTermFollowsTheCases_data() { AddCases("mortgageTerm"); }
    void mortgageTermFollowsTheCases();
    void limitIsSelectedSoThatTheNextKeyReplacesIt();
    void clearedTermBecomesTwenty();
};

void tst_propertyEntry::priceSplitFollowsTheCases() {
    QFETCH(QJsonObject, given);
    QFETCH(bool, typed);
    PropertyEditor editor;
    const QJsonObject before = given["before"].toObject();
    editor.property->HouseValue = before["HouseValue"].toDouble();
    editor.property->ChattelValue = before["ChattelValue"].toDouble();
    editor.property->HouseDepn = before["HouseDepn"].toDouble();
    editor.property->ChattelDepn = before["ChattelDepn"].toDouble();
    QVERIFY(editor.Open());
    for (const QJsonValue& price : given["prices"].toArray())
        Enter(editor, "txtPurchasePrice", QString::number(price.toDouble(), 'g', 15), typed);
    const QJsonObject after = given["after"].toObject();
    QCOMPARE(editor.Text("txtPurchasePrice"), after["PurchasePrice"].toString());
    QCOMPARE(editor.Text("txtHouse"), after["HouseValue"].toString());
    QCOMPARE(editor.Text("txtChattel"), after["ChattelValue"].toString());
    QCOMPARE(editor.Text("txtHouseDepn"), after["HouseDepn"].toString());
    QCOMPARE(editor.Text("txtChattelDepn"), after["ChattelDepn"].toString());
    QCOMPARE(ledgix::runtime::ToText(editor.property->HouseValue), after["HouseValue"].toString().toStdString());
}

void tst_propertyEntry::priceReachesThePropertyAtOnce() {
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    editor.Type("txtPurchasePrice", "12");
    QCOMPARE(editor.property->PurchasePrice, 12.0);
}

void tst_propertyEntry::everyKeyOfAPriceIsSplit() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    QLineEdit* price = editor.Line("txtPurchasePrice");
    price->setFocus();
    QTest::keyClick(price, Qt::Key_4);
    QCOMPARE(editor.Text("txtHouse"), "2.2");
    QTest::keyClick(price, Qt::Key_0);
    QCOMPARE(editor.Text("txtHouse"), "22");
    QTest::keyClick(price, Qt::Key_Backspace);
    QTest::keyClick(price, Qt::Key_Backspace);
    QCOMPARE(editor.Text("txtHouse"), "0");
    QTest::keyClick(price, Qt::Key_8);
    QCOMPARE(editor.Text("txtHouse"), "4.4");
    QCOMPARE(editor.Text("txtChattel"), "1.6");
    QCOMPARE(editor.Text("txtHouseDepn"), "4");
    QCOMPARE(editor.Text("txtChattelDepn"), "15");
}

void tst_propertyEntry::laterPriceLeavesTheSplitAlone() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    Enter(editor, "txtPurchasePrice", "100000", true);
    Enter(editor, "txtPurchasePrice", "300000", true);
    QCOMPARE(editor.Text("txtHouse"), "55000");
    QCOMPARE(editor.property->PurchasePrice, 300000.0);
}

void tst_propertyEntry::priceAfterAHandEnteredHouseValueIsNotSplit() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    Enter(editor, "txtHouse", "70000", true);
    Enter(editor, "txtPurchasePrice", "100000", true);
    QCOMPARE(editor.Text("txtHouse"), "70000");
    QCOMPARE(editor.Text("txtChattel"), "0");
    QCOMPARE(editor.Text("txtHouseDepn"), "0");
}

void tst_propertyEntry::priceIsSplitAgainWhenBothValuesAreClearedByHand() {
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    Enter(editor, "txtHouse", "0", true);
    Enter(editor, "txtChattel", "0", true);
    Enter(editor, "txtPurchasePrice", "100000", true);
    QCOMPARE(editor.Text("txtHouse"), "55000");
    QCOMPARE(editor.Text("txtChattel"), "20000");
}

void tst_propertyEntry::windowThatLosesTheFocusDoesNotEndTheEntry() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    QLineEdit* price = editor.Line("txtPurchasePrice");
    price->setFocus();
    QTest::keyClick(price, Qt::Key_1);
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(price, &out);
    QFocusEvent in(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(price, &in);
    QTest::keyClick(price, Qt::Key_0);
    QCOMPARE(editor.Text("txtHouse"), "5.5");
}

void tst_propertyEntry::mortgageRateFollowsTheCases() {
    QFETCH(QJsonObject, given);
    QFETCH(bool, typed);
    PropertyEditor editor;
    QVERIFY(editor.Open());
    Enter(editor, "txtMortgageRate", given["text"].toString(), typed);
    QCOMPARE(editor.Text("txtMortgageRate"), given["after"].toString());
}

void tst_propertyEntry::mortgageTermFollowsTheCases() {
    QFETCH(QJsonObject, given);
    QFETCH(bool, typed);
    PropertyEditor editor;
    // The box already shows 0 when it is set to that.
    editor.property->MortgageTerm = 7;
    QVERIFY(editor.Open());
    Enter(editor, "txtMortgageTerm", given["text"].toString(), typed);
    QCOMPARE(editor.Text("txtMortgageTerm"), given["after"].toString());
}

void tst_propertyEntry::limitIsSelectedSoThatTheNextKeyReplacesIt() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    QLineEdit* term = editor.Line("txtMortgageTerm");
    term->setFocus();
    TypeOver(term, "60");
    QCOMPARE(term->selectedText(), "50");
    QTest::keyClicks(term, "12");
    QCOMPARE(editor.Text("txtMortgageTerm"), "12");
    QLineEdit* rate = editor.Line("txtMortgageRate");
    rate->setFocus();
    TypeOver(rate, "101");
    QCOMPARE(rate->selectedText(), "100");
    QTest::keyClicks(rate, "6.5");
    QCOMPARE(editor.Text("txtMortgageRate"), "6.5");
}

void tst_propertyEntry::clearedTermBecomesTwenty() {
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    QLineEdit* term = editor.Line("txtMortgageTerm");
    term->setFocus();
    QTest::keyClick(term, Qt::Key_Delete);
    QCOMPARE(editor.Text("txtMortgageTerm"), "20");
    QCOMPARE(term->selectedText(), "20");
    QTest::keyClicks(term, "5");
    QCOMPARE(editor.Text("txtMortgageTerm"), "5");
}

QTEST_MAIN(tst_propertyEntry)
#include "tst_property_entry.moc"
