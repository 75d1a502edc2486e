#include "amount_form.h"

#include <QGridLayout>
#include <QLabel>
#include <QTest>
#include <limits>
#include <memory>

#include "scoped_region.h"
#include "zq_text_box.h"

using namespace ledgix::editors;
using ledgix::controls::zqTextBox;
using ledgix::test::ScopedRegion;

class tst_AmountForm : public QObject {
    Q_OBJECT

private slots:
    void init() { region_ = std::make_unique<ScopedRegion>(); }
    void cleanup() { region_.reset(); }

    void rowFollowsItsUnit_data();
    void rowFollowsItsUnit();
    void unitsBearTheRegionsCurrency();
    void rowsFollowEachOther();
    void boxesShareOneWidthWithAndWithoutCalculator();
    void spareWidthGoesToTheRight();
    void captionsOfSeveralGridsAreEquallyWide();
    void amountsAreShownAsPlainNumbers_data();
    void amountsAreShownAsPlainNumbers();
    void labelNamesItsBuddy();

private:
    std::unique_ptr<ScopedRegion> region_;
};

void tst_AmountForm::rowFollowsItsUnit_data() {
    QTest::addColumn<Unit>("unit");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<bool>("calculator");
    QTest::newRow("money a year") << Unit::kMoneyAYear << "$ a year" << 2 << true;
    QTest::newRow("money") << Unit::kMoney << "$" << 2 << false;
    QTest::newRow("percent") << Unit::kPercent << "%" << 4 << false;
    QTest::newRow("percent a year") << Unit::kPercentAYear << "% a year" << 4 << false;
    QTest::newRow("years") << Unit::kYears << "years" << 0 << false;
}

void tst_AmountForm::rowFollowsItsUnit() {
    QFETCH(Unit, unit);
    QFETCH(QString, text);
    QWidget form;
    auto* grid = new QGridLayout(&form);
    const zqTextBox* box = AddAmountRow(*grid, {"txtName", "Caption & more", unit});
    QCOMPARE(box->objectName(), "txtName");
    QCOMPARE(box->accessibleName(), "Caption & more, " + text);
    QCOMPARE(box->Text(), "0");
    QVERIFY(box->IsNumeric());
    QVERIFY(!box->AllowNegative());
    QCOMPARE(box->Alignment(), int(zqTextBox::kRight));
    QTEST(box->DecimalPlaces(), "decimals");
    QTEST(box->ShowCalc(), "calculator");
    const auto* caption = qobject_cast<QLabel*>(grid->itemAtPosition(0, kCaptionColumn)->widget());
    const auto* behind = qobject_cast<QLabel*>(grid->itemAtPosition(0, kUnitColumn)->widget());
    QCOMPARE(caption->buddy(), box);
    QCOMPARE(behind->buddy(), box);
    QCOMPARE(behind->text(), text);
    QCOMPARE(grid->itemAtPosition(0, kBoxColumn)->widget(), box);
}

void tst_AmountForm::unitsBearTheRegionsCurrency() {
    ledgix::runtime::RegionalSettings settings = ledgix::runtime::UnitedStates();
    settings.currency_symbol = "€";
    const ScopedRegion region(settings);
    QCOMPARE(UnitText(Unit::kMoneyAYear), "€ a year");
    QCOMPARE(UnitText(Unit::kMoney), "€");
    QCOMPARE(UnitText(Unit::kPercentAYear), "% a year");
}

void tst_AmountForm::rowsFollowEachOther() {
    QWidget form;
    auto* grid = new QGridLayout(&form);
    const zqTextBox* first = AddAmountRow(*grid, {"a", "A", Unit::kMoney});
    const zqTextBox* second = AddAmountRow(*grid, {"b", "B", Unit::kYears});
    QCOMPARE(grid->itemAtPosition(0, kBoxColumn)->widget(), first);
    QCOMPARE(grid->itemAtPosition(1, kBoxColumn)->widget(), second);
    QCOMPARE(grid->rowCount(), 2);
}

void tst_AmountForm::boxesShareOneWidthWithAndWithoutCalculator() {
    QWidget forms[2];
    auto* yearly_grid = new QGridLayout(&forms[0]);
    auto* plain_grid = new QGridLayout(&forms[1]);
    const zqTextBox* yearly = AddAmountRow(*yearly_grid, {"a", "A", Unit::kMoneyAYear});
    const zqTextBox* plain = AddAmountRow(*plain_grid, {"b", "B", Unit::kYears});
    for (QWidget& form : forms)
        form.show();
    QCOMPARE(yearly->width(), plain->width());
    QVERIFY(plain->width() >= plain->fontMetrics().horizontalAdvance(QString(14, '0')));
}

void tst_AmountForm::spareWidthGoesToTheRight() {
    QWidget form;
    auto* grid = new QGridLayout(&form);
    const zqTextBox* box = AddAmountRow(*grid, {"a", "A", Unit::kMoney});
    form.show();
    const QRect narrow = box->geometry();
    form.resize(form.width() + 500, form.height());
    QCoreApplication::processEvents();
    QCOMPARE(box->geometry(), narrow);
}

void tst_AmountForm::captionsOfSeveralGridsAreEquallyWide() {
    QWidget forms[2];
    auto* first = new QGridLayout(&forms[0]);
    auto* second = new QGridLayout(&forms[1]);
    const zqTextBox* upper = AddAmountRow(*first, {"a", "A", Unit::kMoney});
    const zqTextBox* lower = AddAmountRow(*second, {"b", "A caption that is much longer", Unit::kMoney});
    AlignCaptions({first, second});
    for (QWidget& form : forms)
        form.show();
    QCOMPARE(upper->x(), lower->x());
}

void tst_AmountForm::amountsAreShownAsPlainNumbers_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 82500.0 << "82500";
    QTest::newRow("cents") << 2450.75 << "2450.75";
    QTest::newRow("surplus decimals are cut") << 1.239 << "1.23";
    QTest::newRow("below one") << 0.75 << ".75";
    QTest::newRow("huge") << 2e15 << "2000000000000000";
    QTest::newRow("tiny") << 0.00009 << "0";
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << "0";
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << "0";
}

void tst_AmountForm::amountsAreShownAsPlainNumbers() {
    QFETCH(double, value);
    QFETCH(QString, text);
    QWidget form;
    auto* grid = new QGridLayout(&form);
    zqTextBox* box = AddAmountRow(*grid, {"a", "A", Unit::kMoney});
    ShowAmount(*box, value);
    QCOMPARE(box->Text(), text);
    QCOMPARE(AmountOf(*box), text.toDouble());
}

void tst_AmountForm::labelNamesItsBuddy() {
    QWidget field;
    const std::unique_ptr<QLabel> label(NewLabel("Label5", "Profile Name", &field));
    QCOMPARE(label->objectName(), "Label5");
    QCOMPARE(label->text(), "Profile Name");
    QCOMPARE(label->buddy(), &field);
    QCOMPARE(field.accessibleName(), "Profile Name");
}

QTEST_MAIN(tst_AmountForm)
#include "tst_amount_form.moc"
