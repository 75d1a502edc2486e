#include <QGroupBox>
#include <QLabel>
#include <QSet>
#include <limits>

#include "property_boxes.h"
#include "property_fixture.h"

using ledgix::controls::zqTextBox;
using ledgix::test::BoxFacts;
using ledgix::test::BoxOf;
using ledgix::test::Click;
using ledgix::test::kBoxes;
using ledgix::test::PropertyEditor;
namespace editors = ledgix::editors;

namespace {

QStringList BuddyTexts(const QWidget* form, const QWidget* field) {
    QStringList texts;
    for (const QLabel* label : form->findChildren<QLabel*>())
        if (label->buddy() == field)
            texts << label->text();
    return texts;
}

}  // namespace

class tst_frmProperty : public QObject {
    Q_OBJECT

private slots:
    void boxesAreAsStated_data();
    void boxesAreAsStated();
    void otherControlsAreAsStated();
    void framesBearTheirNames();
    void mnemonicsAreUnique();
    void tabFollowsThePage();
    void formLoadShowsEveryField();
    void formLoadShowsASingleInItsOwnDigits();
    void formLoadTriggersNothing();
    void formActivateShowsTheName();
    void cmdHelpShowsItsTopic();
    void narrowWindowFoldsTheColumns();
    void smallWindowScrollsToTheFieldWithTheFocus();
    void figureThatIsNoNumberIsShownAsZero();
};

void tst_frmProperty::boxesAreAsStated_data() {
    QTest::addColumn<int>("index");
    for (int i = 0; i < static_cast<int>(std::size(kBoxes)); ++i)
        QTest::newRow(kBoxes[i].name) << i;
}

void tst_frmProperty::boxesAreAsStated() {
    QFETCH(int, index);
    const BoxFacts& facts = kBoxes[index];
    PropertyEditor editor;
    QVERIFY(editor.Open());
    zqTextBox* box = BoxOf(editor.form(), facts.name);
    QVERIFY(box);
    QVERIFY(box->IsNumeric());
    QVERIFY(!box->AllowNegative());
    QCOMPARE(box->DecimalPlaces(), facts.decimals);
    QCOMPARE(box->Alignment(), static_cast<int>(zqTextBox::kRight));
    QCOMPARE(box->ShowCalc(), facts.calculator);
    QCOMPARE(BuddyTexts(editor.form(), box), QStringList({facts.caption, facts.unit}));
    QVERIFY(box->accessibleName().startsWith(facts.caption));
    QCOMPARE(qobject_cast<QGroupBox*>(box->parentWidget())->title(), facts.frame);
}

void tst_frmProperty::otherControlsAreAsStated() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    const editors::frmProperty* form = editor.form();
    QCOMPARE(form->objectName(), "frmProperty");
    QVERIFY(form->isModal());
    QCOMPARE(form->txtName->maxLength(), 50);
    QCOMPARE(BuddyTexts(form, form->txtName), QStringList("Property Name"));
    QCOMPARE(form->txtMortgageRate->ToolTipText(), "Percentage mortgage rate - assumed to be fixed.");
    QCOMPARE(form->chkInterestOnly->text(), "Interest Only Mortgage");
    QStringList captions;
    for (const QPushButton* button :
         {form->cmdAnalyse, form->cmd10Year, form->cmdHelp, form->cmdCancel, form->cmdSave}) {
        captions << button->text();
        QVERIFY(!button->accessibleName().isEmpty());
        QCOMPARE(form->findChild<QPushButton*>(button->objectName()), button);
    }
    QCOMPARE(captions, QStringList({"Analysis", "Outlook", "&Help", "&Cancel", "&Save"}));
    QVERIFY(form->cmdSave->isDefault());
    QVERIFY(form->cmdHelp->x() < form->cmdCancel->x());
}

void tst_frmProperty::framesBearTheirNames() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    const std::pair<const char*, const char*> frames[]{{"Frame1", "Purchase Details"},
                                                       {"Frame2", "Income"},
                                                       {"Frame3", "Expenses (excl mortgage)"},
                                                       {"Frame4", "Inflation"},
                                                       {"Frame5", "Depreciation"}};
    for (const auto& [name, title] : frames)
        QCOMPARE(editor.form()->findChild<QGroupBox*>(name)->title(), title);
}

void tst_frmProperty::mnemonicsAreUnique() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    QSet<QString> used;
    for (const QPushButton* button : editor.form()->findChildren<QPushButton*>()) {
        const QKeySequence key = QKeySequence::mnemonic(button->text());
        QVERIFY2(key.isEmpty() || !used.contains(key.toString()), qPrintable(button->text()));
        used << key.toString();
    }
}

void tst_frmProperty::tabFollowsThePage() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    QVERIFY(editor.form()->txtName->hasFocus());
    QStringList order;
    for (int i = 0; i < 24; ++i) {
        QTest::keyClick(qApp->focusWidget(), Qt::Key_Tab);
        const QWidget* at = qApp->focusWidget();
        order << (at->objectName() == "TextBox" ? at->parentWidget() : at)->objectName();
    }
    const QStringList expected{"txtPurchasePrice", "txtPurchaseCosts",  "txtDepositValue", "txtMortgageRate",
                               "txtMortgageTerm",  "chkInterestOnly",   "txtHouse",        "txtChattel",
                               "txtHouseDepn",     "txtChattelDepn",    "txtIncRental",    "txtExpRates",
                               "txtExpInsurance",  "txtExpRepair",      "txtExpFee",       "txtExpOther",
                               "txtInflation",     "txtPriceIncreases", "cmdAnalyse",      "cmd10Year",
                               "cmdHelp",          "cmdCancel",         "cmdSave",         "txtName"};
    QCOMPARE(order, expected);
}

void tst_frmProperty::formLoadShowsEveryField() {
    PropertyEditor editor(2);
    QVERIFY(editor.Open());
    QCOMPARE(editor.form()->txtName->text(), "Unit 3, 88 Kowhai Road");
    QVERIFY(editor.form()->chkInterestOnly->isChecked());
    const QStringList expected{"189500", "1850.5", "20000", "6.85", "20",   "104225", "37900", "4",  "15",
                               "14560",  "1315",   "0",     "650",  "1092", "1040",   "2",     "3.5"};
    QStringList shown;
    for (const BoxFacts& facts : kBoxes)
        shown << editor.Text(facts.name);
    QCOMPARE(shown, expected);
}

void tst_frmProperty::formLoadShowsASingleInItsOwnDigits() {
    PropertyEditor editor;
    editor.property->MortgageRate = 8.1F;
    QVERIFY(editor.Open());
    QCOMPARE(editor.Text("txtMortgageRate"), "8.1");
}

void tst_frmProperty::formLoadTriggersNothing() {
    PropertyEditor editor;
    editor.property->PurchasePrice = 100000;
    editor.property->MortgageRate = 150;
    editor.property->MortgageTerm = 60;
    QVERIFY(editor.Open());
    QCOMPARE(editor.Text("txtMortgageRate"), "150");
    QCOMPARE(editor.Text("txtMortgageTerm"), "60");
    QCOMPARE(editor.Text("txtHouse"), "0");
    QCOMPARE(editor.property->HouseValue, 0.0);
    PropertyEditor fresh;
    QVERIFY(fresh.Open());
    QCOMPARE(fresh.Text("txtMortgageTerm"), "0");
}

void tst_frmProperty::formActivateShowsTheName() {
    PropertyEditor stored(1);
    QVERIFY(stored.Open());
    QCOMPARE(stored.form()->windowTitle(), "14 Harbour Terrace");
    stored.property->PropertyName = "Sea & Sand";
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(stored.form(), &activate);
    QCOMPARE(stored.form()->windowTitle(), "Sea & Sand");
    PropertyEditor fresh;
    QVERIFY(fresh.Open());
    QCOMPARE(fresh.form()->windowTitle(), "Property");
}

void tst_frmProperty::cmdHelpShowsItsTopic() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    QCOMPARE(editor.form()->cmdHelp->shortcut(), QKeySequence("Alt+H"));
    Click(editor.form()->cmdHelp);
    QCOMPARE(editor.desktop.help_contexts, QList<int>{40});
}

void tst_frmProperty::narrowWindowFoldsTheColumns() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    editors::frmProperty* form = editor.form();
    const auto place = [form](const char* name) {
        const QWidget* frame = form->findChild<QGroupBox*>(name);
        return QRect(frame->mapTo(form, QPoint()), frame->size());
    };
    form->resize(form->sizeHint());
    QTRY_COMPARE(place("Frame2").top(), place("Frame1").top());
    QCOMPARE(place("Frame4").bottom(), place("Frame5").bottom());
    form->resize(form->sizeHint() * 0.7);
    QTRY_VERIFY(place("Frame2").top() > place("Frame5").bottom());
    QCOMPARE(place("Frame2").left(), place("Frame1").left());
    for (const QLabel* label : form->findChildren<QLabel*>())
        QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
}

void tst_frmProperty::smallWindowScrollsToTheFieldWithTheFocus() {
    PropertyEditor editor;
    QVERIFY(editor.Open());
    editors::frmProperty* form = editor.form();
    form->resize(400, 220);
    editor.Line("txtPriceIncreases")->setFocus();
    QTRY_COMPARE(form->txtPriceIncreases->visibleRegion().boundingRect(), form->txtPriceIncreases->rect());
    QVERIFY(form->txtName->visibleRegion().isEmpty());
    Click(form->cmdSave);
    QTRY_VERIFY(!form->txtName->visibleRegion().isEmpty());
}

void tst_frmProperty::figureThatIsNoNumberIsShownAsZero() {
    PropertyEditor editor;
    editor.property->MortgageRate = std::numeric_limits<float>::infinity();
    editor.property->PurchasePrice = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(editor.Open());
    QCOMPARE(editor.Text("txtMortgageRate"), "0");
    QCOMPARE(editor.Text("txtPurchasePrice"), "0");
}

QTEST_MAIN(tst_frmProperty)
#include "tst_frm_property.moc"
