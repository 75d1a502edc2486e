#include <QTimer>

#include "property_boxes.h"
#include "property_fixture.h"

using ledgix::test::BoxFacts;
using ledgix::test::Click;
using ledgix::test::kBoxes;
using ledgix::test::PropertyEditor;
using ledgix::test::PropertyWindows;
using ledgix::test::TypeOver;
namespace editors = ledgix::editors;
namespace model = ledgix::model;

// How the property editor ends, and what it hands to the property and to the reports.
class tst_propertySaving : public QObject {
    Q_OBJECT

private slots:
    void cmdSaveAsksForAName();
    void cmdSaveWritesEveryFigure();
    void cmdSaveClosesAndReloadsTheList();
    void cmdSaveOfANewPropertyWritesARow();
    void cmdSaveOfANewPropertyTakesAFreeNumber();
    void cmdSaveThatFailsKeepsTheWindow_data();
    void cmdSaveThatFailsKeepsTheWindow();
    void enterSaves();
    void cmdCancelReadsAStoredPropertyBack();
    void cmdCancelLeavesANewPropertyUnsaved();
    void escapeAndTheFrameAreCancel_data();
    void escapeAndTheFrameAreCancel();
    void reportsRunOnTheScreenValues_data();
    void reportsRunOnTheScreenValues();
    void reportWithoutAProfileIsAnError();
    void commaLocale();
    void isModalUnderTheRealWindows();
};

void tst_propertySaving::cmdSaveAsksForAName() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    editor.Line("txtExpFee")->setFocus();
    Click(editor.form()->cmdSave);
    COMPARE_MESSAGES(editor, {"This profile requires a profile name.", 0, "Vantreo Ledgix"});
    QVERIFY(editor.form()->txtName->hasFocus());
    QVERIFY(!editor.Closed());
    QVERIFY(!editor.property->Saved);
    QCOMPARE(editor.Stored("PropertyName"), "no row");
}

void tst_propertySaving::cmdSaveWritesEveryFigure() {
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    TypeOver(editor.form()->txtName, "Mum's & Dad's");
    int value = 30;
    for (const BoxFacts& facts : kBoxes)
        editor.Type(facts.name, QString::number(value++) + (facts.decimals > 0 ? ".25" : ""));
    QTest::keyClick(editor.form()->chkInterestOnly, Qt::Key_Space);
    Click(editor.form()->cmdSave);
    QCOMPARE(editor.Stored("PropertyName"), "Mum's & Dad's");
    QCOMPARE(editor.Stored("InterestOnly"), "True");
    value = 30;
    for (const BoxFacts& facts : kBoxes)
        QCOMPARE(editor.Stored(facts.column), std::to_string(value++) + (facts.decimals > 0 ? ".25" : ""));
    COMPARE_MESSAGES(editor);
}

void tst_propertySaving::cmdSaveClosesAndReloadsTheList() {
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    editor.profile().IncSalary = 1;
    TypeOver(editor.form()->txtName, "Renamed");
    Click(editor.form()->cmdSave);
    QVERIFY(editor.Closed());
    QCOMPARE(editor.reloads, 1);
    QCOMPARE(editor.property->PropertyName, "Renamed");
    QCOMPARE(editor.profile().IncSalary, 1.0);
}

void tst_propertySaving::cmdSaveOfANewPropertyWritesARow() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    TypeOver(editor.form()->txtName, "New");
    editor.Type("txtPurchasePrice", "200000");
    Click(editor.form()->cmdSave);
    QVERIFY(editor.Closed());
    QVERIFY(editor.property->Saved);
    QCOMPARE(editor.property->PropertyNumber, 4);
    QCOMPARE(editor.Stored("PropertyName"), "New");
    QCOMPARE(editor.Stored("HouseValue"), "110000");
    QCOMPARE(editor.reloads, 1);
}

void tst_propertySaving::cmdSaveOfANewPropertyTakesAFreeNumber() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    editor.file.Execute(
        "insert into ProfileProperty (ProfileNumber, PropertyNumber, PropertyName) values (1, 4, 'Theirs')");
    TypeOver(editor.form()->txtName, "Ours");
    Click(editor.form()->cmdSave);
    QCOMPARE(editor.property->PropertyNumber, 5);
    QCOMPARE(editor.Stored("PropertyName"), "Ours");
    QCOMPARE(
        editor.Row("select PropertyName from ProfileProperty where ProfileNumber = 1 and PropertyNumber = 4").front(),
        "Theirs");
    QCOMPARE(&editor.profile().Property("P1-5"), editor.property);
}

void tst_propertySaving::cmdSaveThatFailsKeepsTheWindow_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("new") << PropertyEditor::kNew;
    QTest::newRow("stored") << 1;
}

void tst_propertySaving::cmdSaveThatFailsKeepsTheWindow() {
    QFETCH(int, number);
    PropertyEditor editor(number);
    const ledgix::test::DiagnosisRecorder diagnoses;
    QVERIFY(editor.Open());
    editor.file.OpenReadOnly();
    TypeOver(editor.form()->txtName, "Typed");
    Click(editor.form()->cmdSave);
    QVERIFY(!editor.messages.messages().empty());
    QVERIFY(!editor.Closed());
    QCOMPARE(editor.form()->txtName->text(), "Typed");
    QCOMPARE(editor.reloads, 0);
    QCOMPARE(editor.property->Saved, number != PropertyEditor::kNew);
    editor.file.Open();
    Click(editor.form()->cmdSave);
    QVERIFY(editor.Closed());
    QCOMPARE(editor.Stored("PropertyName"), "Typed");
}

void tst_propertySaving::enterSaves() {
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    editor.Type("txtInflation", "9");
    QTest::keyClick(editor.Line("txtInflation"), Qt::Key_Return);
    QVERIFY(editor.Closed());
    QCOMPARE(editor.Stored("InflationRate"), "9");
}

void tst_propertySaving::cmdCancelReadsAStoredPropertyBack() {
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    TypeOver(editor.form()->txtName, "Typed");
    editor.Type("txtPurchasePrice", "5");
    editor.Type("txtHouse", "6");
    Click(editor.form()->cmdAnalyse);
    Click(editor.form()->cmdCancel);
    QVERIFY(editor.Closed());
    QCOMPARE(editor.property->PropertyName, "14 Harbour Terrace");
    QCOMPARE(editor.property->PurchasePrice, 265000.0);
    QCOMPARE(editor.property->HouseValue, 145750.0);
    QCOMPARE(editor.Stored("PurchasePrice"), "265000");
    QCOMPARE(editor.reloads, 0);
    COMPARE_MESSAGES(editor);
}

void tst_propertySaving::cmdCancelLeavesANewPropertyUnsaved() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    TypeOver(editor.form()->txtName, "Typed");
    Click(editor.form()->cmdCancel);
    QVERIFY(editor.Closed());
    QVERIFY(!editor.property->Saved);
    QCOMPARE(editor.property->PropertyName, "");
    QCOMPARE(editor.Stored("PropertyName"), "no row");
}

void tst_propertySaving::escapeAndTheFrameAreCancel_data() {
    QTest::addColumn<bool>("by_frame");
    QTest::newRow("Escape") << false;
    QTest::newRow("frame") << true;
}

void tst_propertySaving::escapeAndTheFrameAreCancel() {
    QFETCH(bool, by_frame);
    PropertyEditor editor(1);
    QVERIFY(editor.Open());
    editor.Type("txtPurchasePrice", "5");
    if (by_frame)
        editor.form()->close();
    else
        QTest::keyClick(editor.Line("txtPurchasePrice"), Qt::Key_Escape);
    QVERIFY(editor.Closed());
    QCOMPARE(editor.property->PurchasePrice, 265000.0);
    // The editor can be opened again.
    QVERIFY(editor.Open());
    QCOMPARE(editor.Text("txtPurchasePrice"), "265000");
}

void tst_propertySaving::reportsRunOnTheScreenValues_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("kind");
    QTest::newRow("Analysis") << "cmdAnalyse" << 1;
    QTest::newRow("Outlook") << "cmd10Year" << 2;
}

void tst_propertySaving::reportsRunOnTheScreenValues() {
    QFETCH(QString, button);
    QFETCH(int, kind);
    PropertyEditor editor;
    QVERIFY(editor.Open());
    TypeOver(editor.form()->txtName, "Never saved");
    editor.Type("txtPurchasePrice", "123456.78");
    Click(editor.form()->findChild<QPushButton*>(button));
    QVERIFY(editor.property_windows.reports ==
            (std::vector<PropertyWindows::Report>{{kind, "Hannah and Tom Whitaker", "Never saved", 123456.78}}));
    QVERIFY(!editor.Closed());
    QVERIFY(!editor.property->Saved);
    QCOMPARE(editor.Stored("PropertyName"), "no row");
}

void tst_propertySaving::reportWithoutAProfileIsAnError() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    editor.property->ProfileNumber = 99;
    Click(editor.form()->cmdAnalyse);
    QCOMPARE(editor.messages.messages().size(), 1U);
    QVERIFY(editor.messages.messages().front().text.starts_with("5 - "));
    QVERIFY(editor.property_windows.reports.empty());
}

void tst_propertySaving::commaLocale() {
    ledgix::runtime::RegionalSettings comma = ledgix::runtime::UnitedStates();
    comma.decimal_separator = ",";
    comma.group_separator = ".";
    const ledgix::test::ScopedRegion region(comma);
    PropertyEditor editor(2);
    // The household brings the settings of its own.
    ledgix::runtime::InstallRegion(comma);
    QVERIFY(editor.Open());
    QCOMPARE(editor.Line("txtMortgageRate")->text(), "6,85");
    editor.Type("txtMortgageRate", "7,125");
    editor.Type("txtExpRates", "1234,56");
    Click(editor.form()->cmdSave);
    QCOMPARE(editor.Stored("MortgageRate"), "7.125");
    QCOMPARE(editor.Stored("Rates"), "1234.56");
    QCOMPARE(editor.Stored("PurchaseCosts"), "1850.5");
}

void tst_propertySaving::isModalUnderTheRealWindows() {
    PropertyEditor editor(1);
    editors::FormWindows windows(editor.desktop);
    model::InstallRecordWindows(&windows);
    QPointer<editors::frmProperty> form;
    QTimer::singleShot(0, qApp, [&] {
        form = qobject_cast<editors::frmProperty*>(QApplication::activeModalWidget());
        if (!form)
            return;
        TypeOver(form->txtName, "Modal");
        Click(form->cmdSave);
    });
    editor.property->Display();
    QVERIFY(form);
    QCOMPARE(editor.Stored("PropertyName"), "Modal");
    QCOMPARE(editor.reloads, 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!form);
}

QTEST_MAIN(tst_propertySaving)
#include "tst_property_saving.moc"
