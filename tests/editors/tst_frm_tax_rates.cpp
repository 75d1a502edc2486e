#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "conversions.h"
#include "frm_tax_rates.h"
#include "household_builder.h"
#include "household_file.h"
#include "scoped_region.h"
#include "tax_module.h"
#include "zq_text_box.h"

using ledgix::controls::zqTextBox;
using ledgix::editors::frmTaxRates;
using ledgix::editors::TaxRateRows;
using ledgix::test::HouseholdBuilder;
using ledgix::test::Json;
namespace model = ledgix::model;
namespace runtime = ledgix::runtime;

namespace {

const char* const kDefaults =
    R"([{"upper": 38000, "rate": 19.5}, {"upper": 60000, "rate": 33}, {"upper": 0, "rate": 39}])";

std::vector<std::uint8_t> Content(const Json& brackets) {
    HouseholdBuilder builder;
    builder.AddTaxRates(brackets);
    return builder.Finish();
}

QLineEdit* LineOf(const zqTextBox* box) {
    return box->findChild<QLineEdit*>("TextBox");
}

void Type(const zqTextBox* box, const QString& text) {
    LineOf(box)->setFocus();
    LineOf(box)->selectAll();
    if (text.isEmpty())
        QTest::keyClick(LineOf(box), Qt::Key_Delete);
    QTest::keyClicks(LineOf(box), text);
}

void Click(QWidget* button) {
    QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace

// The editor on a table of brackets, and what it does to the table.
class TaxRates {
public:
    explicit TaxRates(const Json& brackets = Json::parse(kDefaults)) : file(Content(brackets)) {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, places.path());
        file.Open();
    }
    ~TaxRates() { model::TaxRatesSeeded = false; }
    TaxRates(const TaxRates&) = delete;
    TaxRates& operator=(const TaxRates&) = delete;

    bool Open() {
        form = std::make_unique<frmTaxRates>();
        form->show();
        return QTest::qWaitForWindowActive(form.get());
    }
    // "38000,19.5" for each row as another program sees it, in the order of the file.
    QStringList Table() const {
        QStringList rows;
        for (const auto& row : file.Rows("select upper, rate from Tax_Rates"))
            rows << QString::fromStdString(runtime::ToText(row[0]) + "," + runtime::ToText(row[1]));
        return rows;
    }
    QStringList Enabled() const {
        QStringList flags;
        for (std::size_t row = 0; row < TaxRateRows::kCount; ++row) {
            const bool enabled = form->txtUpper[row]->Enabled();
            flags << (enabled == form->txtRate[row]->Enabled() ? enabled ? "yes" : "no" : "not alike");
        }
        return flags;
    }

    ledgix::test::ScopedRegion region;
    QTemporaryDir places;
    ledgix::test::HouseholdFile file;
    ledgix::test::MessageRecorder messages;
    std::unique_ptr<frmTaxRates> form;
};

class tst_frmTaxRates : public QObject {
    Q_OBJECT

private slots:
    void followsTheCases_data();
    void followsTheCases();
    void controlsAreAsStated();
    void tabPassesTheEnabledRows();
    void formLoadShowsTheFirstTenOfMoreRows();
    void formLoadShowsAZeroForAMissingRate();
    void promptComesOnce();
    void promptDoesNotComeWithoutSeeding();
    void everyRowBelowANewTopBracketIsDisabled();
    void rowDisabledKeepsItsTexts();
    void labelFollowsItsOwnBound();
    void cmdSaveClosesTheForm();
    void cmdSaveWritesARateThatIsBeingTyped();
    void cmdSaveGoesOnAfterAnError();
    void cmdSaveTellsOfAReadOnlyDatabase();
    void enterSaves();
    void cmdCancelWritesNothing_data();
    void cmdCancelWritesNothing();
    void savedBracketsApplyToTheNextTax();
    void commaLocale();
};

void tst_frmTaxRates::followsTheCases_data() {
    QTest::addColumn<QJsonObject>("given");
    QTest::addColumn<bool>("typed");
    QFile file(LEDGIX_TEST_DATA "/cases/tax_rates_editor.json");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonArray cases = QJsonDocument::fromJson(file.readAll())["cases"].toArray();
    QVERIFY(!cases.isEmpty());
    for (const QJsonValue& given : cases) {
        QTest::newRow(qPrintable(given["name"].toString() + ", typed")) << given.toObject() << true;
        QTest::newRow(qPrintable(given["name"].toString() + ", set")) << given.toObject() << false;
    }
}

void tst_frmTaxRates::followsTheCases() {
    QFETCH(QJsonObject, given);
    QFETCH(bool, typed);
    TaxRates editor(Json::parse(QJsonDocument(given["TaxRates"].toArray()).toJson().toStdString()));
    QVERIFY(editor.Open());
    const frmTaxRates& form = *editor.form;
    for (const QJsonValue& step : given["steps"].toArray()) {
        const auto row = static_cast<std::size_t>(step["row"].toInt());
        zqTextBox* box = step["control"] == "txtUpper" ? form.txtUpper[row] : form.txtRate[row];
        typed ? Type(box, step["text"].toString()) : box->setText(step["text"].toString());
    }
    std::size_t row = 0;
    for (const QJsonValue& texts : given["rows"].toArray()) {
        QCOMPARE(form.txtUpper[row]->Text(), texts["txtUpper"].toString());
        QCOMPARE(form.txtRate[row++]->Text(), texts["txtRate"].toString());
    }
    QStringList enabled;
    for (const QJsonValue& flag : given["enabled"].toArray())
        enabled << (flag.toBool() ? "yes" : "no");
    QCOMPARE(editor.Enabled(), enabled);
    const QJsonObject labels = given["Label1"].toObject();
    for (const QString& number : labels.keys())
        QCOMPARE(form.Label1[number.toUInt()]->text(), labels[number].toString());
    QStringList statements;
    for (const std::string& statement : form.rows().SaveStatements())
        statements << QString::fromStdString(statement);
    QCOMPARE(statements, given["saveStatements"].toVariant().toStringList());
    Click(form.cmdSave);
    QStringList inserted;
    for (const QString& statement : statements.mid(1))
        inserted << statement.section('(', -1).chopped(1).replace(",.", ",0.");
    QCOMPARE(editor.Table(), inserted);
    QVERIFY(editor.messages.messages().empty());
}

void tst_frmTaxRates::controlsAreAsStated() {
    TaxRates editor;
    QVERIFY(editor.Open());
    const frmTaxRates& form = *editor.form;
    QCOMPARE(form.windowTitle(), "Tax Rates");
    QCOMPARE(form.objectName(), "frmTaxRates");
    for (std::size_t row = 0; row < TaxRateRows::kCount; ++row) {
        const QString number = "_" + QString::number(row);
        QCOMPARE(form.findChild<zqTextBox*>("txtUpper" + number), form.txtUpper[row]);
        QCOMPARE(form.findChild<zqTextBox*>("txtRate" + number), form.txtRate[row]);
        QCOMPARE(form.findChild<QLabel*>("Label1" + number), form.Label1[row]);
        QCOMPARE(form.findChild<QLabel*>("Label2" + number)->text(), "the income tax rate is");
        QCOMPARE(form.findChild<QLabel*>("Label3" + number)->text(), "percent.");
        QCOMPARE(form.Label1[row]->buddy(), form.txtUpper[row]);
        QCOMPARE(form.Label2[row]->buddy(), form.txtRate[row]);
        QCOMPARE(form.txtUpper[row]->DecimalPlaces(), 0);
        QCOMPARE(form.txtRate[row]->DecimalPlaces(), 4);
        for (const zqTextBox* box : {form.txtUpper[row], form.txtRate[row]}) {
            QVERIFY(box->IsNumeric() && !box->AllowNegative());
            QVERIFY(!box->accessibleName().isEmpty());
        }
    }
    QCOMPARE(form.cmdSave->text(), "&Save");
    QCOMPARE(form.cmdCancel->text(), "&Cancel");
    QVERIFY(form.cmdSave->isDefault());
}

void tst_frmTaxRates::tabPassesTheEnabledRows() {
    TaxRates editor;
    QVERIFY(editor.Open());
    QStringList order;
    for (int i = 0; i < 8; ++i) {
        const QWidget* at = qApp->focusWidget();
        order << (at->objectName() == "TextBox" ? at->parentWidget() : at)->objectName();
        QTest::keyClick(qApp->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({"txtUpper_0", "txtRate_0", "txtUpper_1", "txtRate_1", "txtUpper_2", "txtRate_2",
                                 "cmdCancel", "cmdSave"}));
}

void tst_frmTaxRates::formLoadShowsTheFirstTenOfMoreRows() {
    Json brackets = Json::array();
    for (int i = 1; i <= 12; ++i)
        brackets.push_back({{"upper", i * 1000}, {"rate", i}});
    brackets.push_back({{"upper", 0}, {"rate", 99}});
    TaxRates editor(brackets);
    QVERIFY(editor.Open());
    QCOMPARE(editor.form->txtUpper[0]->Text(), "1000");
    QCOMPARE(editor.form->txtUpper[9]->Text(), "10000");
    QCOMPARE(editor.form->txtRate[9]->Text(), "10");
}

void tst_frmTaxRates::formLoadShowsAZeroForAMissingRate() {
    TaxRates editor;
    editor.file.Execute("update Tax_Rates set rate = null where upper = 60000");
    QVERIFY(editor.Open());
    QCOMPARE(editor.form->txtRate[1]->Text(), "0");
    QCOMPARE(editor.form->txtRate[2]->Text(), "39");
}

void tst_frmTaxRates::promptComesOnce() {
    TaxRates editor;
    model::TaxRatesSeeded = true;
    QVERIFY(editor.Open());
    QTRY_COMPARE(editor.messages.messages().size(), 1U);
    QVERIFY(
        editor.messages.messages().front() ==
        (ledgix::test::MessageRecorder::Message{
            "Confirm or enter the income tax rates applicable for your situation.  You may enter these values later "
            "from the Maintenance menu if you wish.",
            0, "Vantreo Ledgix"}));
    QVERIFY(!model::TaxRatesSeeded);
    // The box took the activation, and gives it back.
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(editor.form.get(), &activate);
    QVERIFY(editor.Open());
    QTest::qWait(20);
    QCOMPARE(editor.messages.messages().size(), 1U);
}

void tst_frmTaxRates::promptDoesNotComeWithoutSeeding() {
    TaxRates editor;
    QVERIFY(editor.Open());
    QTest::qWait(20);
    QVERIFY(editor.messages.messages().empty());
}

void tst_frmTaxRates::everyRowBelowANewTopBracketIsDisabled() {
    TaxRates editor;
    QVERIFY(editor.Open());
    Type(editor.form->txtUpper[0], "0");
    QCOMPARE(editor.Enabled(), QStringList({"yes", "no", "no", "no", "no", "no", "no", "no", "no", "no"}));
    QVERIFY(!editor.form->Label1[1]->isEnabled());
    Type(editor.form->txtUpper[0], "5");
    QCOMPARE(editor.Enabled().mid(0, 4), QStringList({"yes", "yes", "yes", "no"}));
    QVERIFY(editor.form->Label1[1]->isEnabled());
}

void tst_frmTaxRates::rowDisabledKeepsItsTexts() {
    TaxRates editor;
    QVERIFY(editor.Open());
    Type(editor.form->txtUpper[0], "0");
    QCOMPARE(editor.form->txtUpper[1]->Text(), "60000");
    QCOMPARE(editor.form->txtRate[1]->Text(), "33");
    Click(editor.form->cmdSave);
    QCOMPARE(editor.Table(), QStringList("0,19.5"));
}

void tst_frmTaxRates::labelFollowsItsOwnBound() {
    TaxRates editor;
    QVERIFY(editor.Open());
    Type(editor.form->txtUpper[2], "9");
    QCOMPARE(editor.form->Label1[2]->text(), "Income from 60000 to ");
    QCOMPARE(editor.form->Label1[3]->text(), "Income from 9 and up ");
    QCOMPARE(editor.form->txtUpper[2]->accessibleName(), "Income from 60000 to");
}

void tst_frmTaxRates::cmdSaveClosesTheForm() {
    TaxRates editor;
    QVERIFY(editor.Open());
    Type(editor.form->txtRate[2], "40.1234");
    Click(editor.form->cmdSave);
    QVERIFY(!editor.form->isVisible());
    QCOMPARE(editor.form->result(), static_cast<int>(QDialog::Accepted));
    QCOMPARE(editor.Table(), QStringList({"38000,19.5", "60000,33", "0,40.1234"}));
}

void tst_frmTaxRates::cmdSaveWritesARateThatIsBeingTyped() {
    TaxRates editor;
    QVERIFY(editor.Open());
    Type(editor.form->txtRate[0], "0.");
    QCOMPARE(editor.form->txtRate[0]->Text(), ".");
    Type(editor.form->txtRate[1], "5.");
    Click(editor.form->cmdSave);
    QVERIFY(editor.messages.messages().empty());
    QCOMPARE(editor.Table(), QStringList({"38000,0", "60000,5", "0,39"}));
}

void tst_frmTaxRates::cmdSaveGoesOnAfterAnError() {
    TaxRates editor;
    ledgix::test::DiagnosisRecorder diagnoses;
    QVERIFY(editor.Open());
    Type(editor.form->txtRate[1], QString(45, u'9'));
    Click(editor.form->cmdSave);
    QCOMPARE(editor.messages.messages().size(), 1U);
    QVERIFY(!editor.form->isVisible());
    QCOMPARE(editor.Table(), QStringList({"38000,19.5", "0,39"}));
}

void tst_frmTaxRates::cmdSaveTellsOfAReadOnlyDatabase() {
    TaxRates editor;
    ledgix::test::DiagnosisRecorder diagnoses;
    QVERIFY(editor.Open());
    editor.file.OpenReadOnly();
    Click(editor.form->cmdSave);
    QCOMPARE(editor.messages.messages().size(), 4U);
    QVERIFY(!editor.form->isVisible());
    QCOMPARE(editor.Table(), QStringList({"38000,19.5", "60000,33", "0,39"}));
}

void tst_frmTaxRates::enterSaves() {
    TaxRates editor;
    QVERIFY(editor.Open());
    Type(editor.form->txtUpper[0], "7");
    QTest::keyClick(LineOf(editor.form->txtUpper[0]), Qt::Key_Return);
    QVERIFY(!editor.form->isVisible());
    QCOMPARE(editor.Table().first(), "7,19.5");
}

void tst_frmTaxRates::cmdCancelWritesNothing_data() {
    QTest::addColumn<QString>("by");
    for (const char* way : {"button", "Escape", "frame"})
        QTest::newRow(way) << way;
}

void tst_frmTaxRates::cmdCancelWritesNothing() {
    QFETCH(QString, by);
    TaxRates editor;
    QVERIFY(editor.Open());
    Type(editor.form->txtUpper[0], "7");
    if (by == "button")
        Click(editor.form->cmdCancel);
    else if (by == "frame")
        editor.form->close();
    else
        QTest::keyClick(LineOf(editor.form->txtUpper[0]), Qt::Key_Escape);
    QVERIFY(!editor.form->isVisible());
    QCOMPARE(editor.form->result(), static_cast<int>(QDialog::Rejected));
    QCOMPARE(editor.Table(), QStringList({"38000,19.5", "60000,33", "0,39"}));
}

void tst_frmTaxRates::savedBracketsApplyToTheNextTax() {
    TaxRates editor;
    QCOMPARE(model::CalculateIncomeTax(70000), 18570.0);
    QVERIFY(editor.Open());
    Type(editor.form->txtUpper[0], "0");
    Type(editor.form->txtRate[0], "10");
    Click(editor.form->cmdSave);
    QCOMPARE(model::CalculateIncomeTax(70000), 7000.0);
}

void tst_frmTaxRates::commaLocale() {
    TaxRates editor;
    runtime::RegionalSettings comma = runtime::UnitedStates();
    comma.decimal_separator = ",";
    comma.group_separator = ".";
    runtime::InstallRegion(comma);
    QVERIFY(editor.Open());
    QCOMPARE(LineOf(editor.form->txtRate[0])->text(), "19,5");
    Type(editor.form->txtRate[1], "30,25");
    Click(editor.form->cmdSave);
    QVERIFY(editor.messages.messages().empty());
    QCOMPARE(editor.Table(), QStringList({"38000,19.5", "60000,30.25", "0,39"}));
}

QTEST_MAIN(tst_frmTaxRates)
#include "tst_frm_tax_rates.moc"
