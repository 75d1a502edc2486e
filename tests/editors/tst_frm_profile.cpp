#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRegularExpression>
#include <QScrollArea>
#include <limits>

#include "editor_fixture.h"

using namespace ledgix;
using namespace ledgix::test;
using editors::frmProfile;
using model::clsProfile;

namespace {

QString CaptionOf(const QWidget* form, const QWidget* box) {
    for (const QLabel* label : form->findChildren<QLabel*>())
        if (label->buddy() == box)
            return label->text();
    return {};
}

}  // namespace

class tst_frmProfile : public QObject {
    Q_OBJECT

private slots:
    void controlsBearTheirNamesAndCaptions();
    void eachFieldShowsAndStoresItsAmount_data();
    void eachFieldShowsAndStoresItsAmount();
    void boxesAreRightAlignedAmountsWithUnits();
    void yearlyAmountsHaveTheCalculator();
    void pagesLieInTheSamePlace();
    void tabsSwitchPages();
    void smallWindowScrollsToTheFieldInFocus();
    void fieldsFollowEachOtherByTab();

    void savedProfileOpensWithItsValues();
    void newProfileOpensWithoutPurchases();
    void titleIsTheNameOnceActive();
    void titleFollowsTheActivationOfItsFrame();
    void nameFollowsEveryKeystroke();
    void nameTakesFiftyCharacters();
    void amountsThatAreNoNumbersShowAsZero();
    void hugeAmountsKeepAllDigits();
    void commaOfTheRegionIsUnderstood();
};

void tst_frmProfile::controlsBearTheirNamesAndCaptions() {
    Household household;
    frmProfile form(household.profile(), household.desktop);
    QCOMPARE(form.objectName(), "frmProfile");
    QCOMPARE(form.windowTitle(), "Vantreo Profile");
    QCOMPARE(form.Label5->text(), "Profile Name");
    QCOMPARE(form.Label6->text(), "Last Updated");
    QCOMPARE(form.Label32->text(), "All values are yearly, before tax.");
    QCOMPARE(form.zqTabDialog1->Tabs(), "Income|Expenses|Assets|Liabilities|Purchases|");
    QCOMPARE(form.zqTabDialog1->Frames(), "frmIncome|frmExpense|frmAssets|frmLiabilities|frmPurchases|");
    QCOMPARE(form.zqTabDialog1->FrameTop(), 360);
    QCOMPARE(form.zqTabDialog1->FrameLeft(), 120);
    const std::pair<const char*, const char*> buttons[]{
        {"cmdAnalyse", "Analysis"}, {"cmdHelp", "&Help"},         {"cmdCancel", "&Cancel"},        {"cmdSave", "&Save"},
        {"cmdAdd", "Add Property"}, {"cmdEdit", "Edit Property"}, {"cmdDelete", "Delete Property"}};
    for (const auto& [name, caption] : buttons)
        QCOMPARE(form.findChild<QPushButton*>(name)->text(), caption);
    for (QWidget* field : form.findChildren<QWidget*>(QRegularExpression("^(txt|cmd|lst|zqTab).*")))
        QVERIFY2(!field->accessibleName().isEmpty() || field->objectName() == "cmdSave",
                 qPrintable(field->objectName()));
    QCOMPARE(form.lstProperty->accessibleName(), "Purchases");
    QCOMPARE(form.findChild<QFrame*>("frmPurchases")->accessibleName(), "Purchases");
}

void tst_frmProfile::eachFieldShowsAndStoresItsAmount_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("caption");
    const std::array<std::vector<std::string_view>, 4> columns{{
        {"IncSalary", "IncRentalIncome", "IncInterestReceived", "IncDividends", "IncOtherIncome"},
        {"ExpGeneral", "ExpPower", "ExpRates", "ExpInsurance", "ExpCreditCards", "ExpHP", "ExpOtherLoan", "ExpOther",
         "ExpMortgage", "ExpVehicle", "ExpRent"},
        {"AssFamilyHome", "AssRentalProperties", "AssShares", "AssVehicles", "AssCash", "AssOther"},
        {"LibHomeMortgage", "LibRentalMortgage", "LibLoans", "LibOther"},
    }};
    for (std::size_t page = 0; page < columns.size(); ++page)
        for (std::size_t i = 0; i < columns[page].size(); ++i) {
            const editors::ProfileField& field = editors::ProfilePages()[page].fields[i];
            QTest::newRow(field.name) << static_cast<int>(page + 1)
                                      << QString::fromStdString(std::string(columns[page][i])) << field.caption;
        }
}

// Every amount of the row is another one, so that no field can pass for its neighbour.
void tst_frmProfile::eachFieldShowsAndStoresItsAmount() {
    QFETCH(int, page);
    QFETCH(QString, column);
    QFETCH(QString, caption);
    Household household;
    double next = 1000;
    for (const editors::ProfilePage& each : editors::ProfilePages())
        for (const editors::ProfileField& field : each.fields)
            household.profile().*field.member = ++next;
    household.profile().Save();
    const QString stored = QString::fromStdString(
        household.Row("select " + column.toStdString() + " from Profiles where ProfileNumber = 1")[0]);

    frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    controls::zqTextBox* box = BoxOf(form, QTest::currentDataTag());
    QCOMPARE(box->Text(), stored);
    QCOMPARE(CaptionOf(form, box), caption);
    ChooseTab(form, page);
    QVERIFY(box->isVisible());
    TypeOver(LineOf(form, QTest::currentDataTag()), "77.25");
    Click(form->cmdSave);
    std::vector<double> expected;
    std::vector<double> amounts;
    household.profile().ReloadProfile();
    for (const editors::ProfilePage& each : editors::ProfilePages())
        for (const editors::ProfileField& field : each.fields) {
            const bool changed = QString(field.name) == QTest::currentDataTag();
            expected.push_back(changed ? 77.25 : 1001 + static_cast<double>(expected.size()));
            amounts.push_back(household.profile().*field.member);
        }
    QCOMPARE(amounts, expected);
    QCOMPARE(household.Row("select " + column.toStdString() + " from Profiles where ProfileNumber = 1"),
             std::vector<std::string>{"77.25"});
}

void tst_frmProfile::boxesAreRightAlignedAmountsWithUnits() {
    Household household;
    frmProfile form(household.profile(), household.desktop);
    int boxes = 0;
    for (const editors::ProfilePage& page : editors::ProfilePages())
        for (const editors::ProfileField& field : page.fields) {
            const controls::zqTextBox* box = BoxOf(&form, field.name);
            const QString unit = page.yearly ? "$ a year" : "$";
            QVERIFY(box->IsNumeric());
            QCOMPARE(box->Alignment(), int(controls::zqTextBox::kRight));
            QCOMPARE(box->DecimalPlaces(), 2);
            QVERIFY(!box->AllowNegative());
            QCOMPARE(box->accessibleName(), QString(field.caption) + ", " + unit);
            ++boxes;
        }
    QCOMPARE(boxes, 26);
}

void tst_frmProfile::yearlyAmountsHaveTheCalculator() {
    Household household;
    frmProfile form(household.profile(), household.desktop);
    QVERIFY(BoxOf(&form, "txtIncSalary")->ShowCalc());
    QVERIFY(BoxOf(&form, "txtExpRent")->ShowCalc());
    QVERIFY(!BoxOf(&form, "txtAssFamily")->ShowCalc());
    QVERIFY(!BoxOf(&form, "txtLibOther")->ShowCalc());
}

void tst_frmProfile::pagesLieInTheSamePlace() {
    Household household;
    frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    const QSize size = form->sizeHint();
    form->resize(size);
    std::vector<QRect> places;
    for (int tab = 1; tab <= editors::kProfilePageCount; ++tab) {
        ChooseTab(form, tab);
        QCoreApplication::processEvents();
        const char* name = editors::ProfilePages()[static_cast<std::size_t>(tab - 1)].frame;
        places.push_back(form->findChild<QFrame*>(name)->geometry());
        QCOMPARE(places.back(), places.front());
        QCOMPARE(places.back().topLeft(), QPoint(8, 24));
    }
    QCOMPARE(form->size(), size);
    QVERIFY(form->zqTabDialog1->rect().contains(places.front()));
    for (const QScrollArea* page : form->findChildren<QScrollArea*>())
        QVERIFY(page->widget()->sizeHint().boundedTo(page->viewport()->size()) == page->widget()->sizeHint());
}

void tst_frmProfile::tabsSwitchPages() {
    Household household;
    frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    QCOMPARE(VisiblePages(form), QStringList{"frmIncome"});
    ChooseTab(form, 3);
    QCOMPARE(VisiblePages(form), QStringList{"frmAssets"});
    QTest::keyClick(LineOf(form, "txtAssFamily"), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(VisiblePages(form), QStringList{"frmLiabilities"});
}

void tst_frmProfile::smallWindowScrollsToTheFieldInFocus() {
    Household household;
    frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    form->resize(form->minimumSizeHint());
    ChooseTab(form, 2);
    const controls::zqTextBox* last = BoxOf(form, "txtExpRent");
    QVERIFY(last->visibleRegion().isEmpty());
    LineOf(form, "txtExpGeneral")->setFocus();
    for (const editors::ProfileField& field : editors::ProfilePages()[1].fields)
        if (BoxOf(form, field.name) != last)
            QTest::keyClick(LineOf(form, field.name), Qt::Key_Tab);
    QVERIFY(LineOf(form, "txtExpRent")->hasFocus());
    QVERIFY(last->visibleRegion().boundingRect().height() == last->height());
    for (const QPushButton* button : {form->cmdAnalyse, form->cmdHelp, form->cmdCancel, form->cmdSave})
        QCOMPARE(button->visibleRegion().boundingRect(), button->rect());
}

void tst_frmProfile::fieldsFollowEachOtherByTab() {
    Household household;
    frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    QStringList order;
    for (int i = 0; i < 12; ++i) {
        const QWidget* focus = QApplication::focusWidget();
        order << (focus->objectName() == "TextBox" ? focus->parentWidget() : focus)->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, (QStringList{"txtName", "txtLastModified", "zqTabDialog1", "txtIncSalary", "txtIncRental",
                                 "txtIncInterest", "txtIncDividends", "txtIncOther", "cmdAnalyse", "cmdHelp",
                                 "cmdCancel", "cmdSave"}));
}

void tst_frmProfile::savedProfileOpensWithItsValues() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    QCOMPARE(form->txtName->text(), "Hannah and Tom Whitaker");
    QCOMPARE(form->txtLastModified->text(), "2/14/2026");
    QVERIFY(form->txtLastModified->isReadOnly());
    QCOMPARE(BoxOf(form, "txtExpPower")->Text(), "2450.75");
    QVERIFY(form->zqTabDialog1->TabEnabled(5));
    QCOMPARE(form->cmdSave->text(), "&Save");
    QCOMPARE(Lines(form->lstProperty), (QStringList{"14 Harbour Terrace", "Unit 3, 88 Kowhai Road", "The old bakery"}));
}

void tst_frmProfile::newProfileOpensWithoutPurchases() {
    Household household;
    const frmProfile* form = Open(household, model::gProfiles->AddItem());
    QVERIFY(form);
    QCOMPARE(form->txtLastModified->text(), "");
    QVERIFY(!form->zqTabDialog1->TabEnabled(5));
    QCOMPARE(form->cmdSave->text(), "&Add");
    QCOMPARE(BoxOf(form, "txtIncSalary")->Text(), "0");
    ChooseTab(form, 5);
    QCOMPARE(form->zqTabDialog1->CurrentTab(), 1);
}

void tst_frmProfile::titleIsTheNameOnceActive() {
    Household household;
    frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    QCOMPARE(form->windowTitle(), "Hannah and Tom Whitaker");
    TypeOver(form->txtName, "Hannah");
    QCOMPARE(form->windowTitle(), "Hannah and Tom Whitaker");
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(form));
    QCOMPARE(form->windowTitle(), "Hannah");
}

void tst_frmProfile::titleFollowsTheActivationOfItsFrame() {
    Household household;
    QMdiArea area;
    area.show();
    area.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&area));
    auto* first = new frmProfile(household.profile("P1"), household.desktop);
    auto* second = new frmProfile(household.profile("P2"), household.desktop);
    for (frmProfile* form : {first, second})
        area.addSubWindow(form)->show();
    QCOMPARE(second->windowTitle(), "Marcus O'Leary");
    household.profile("P1").ProfileName = "Renamed";
    area.setActiveSubWindow(qobject_cast<QMdiSubWindow*>(first->parentWidget()));
    QCOMPARE(first->windowTitle(), "Renamed");
    area.closeAllSubWindows();
}

void tst_frmProfile::nameFollowsEveryKeystroke() {
    Household household;
    clsProfile& profile = household.profile();
    const frmProfile* form = Open(household, profile);
    QVERIFY(form);
    form->txtName->setFocus();
    form->txtName->selectAll();
    QTest::keyClick(form->txtName, 'Z');
    QCOMPARE(profile.ProfileName, std::string("Z"));
    QTest::keyClick(form->txtName, 'o');
    QCOMPARE(profile.ProfileName, std::string("Zo"));
    QTest::keyClick(form->txtName, Qt::Key_Backspace);
    QTest::keyClick(form->txtName, Qt::Key_Backspace);
    QCOMPARE(profile.ProfileName, std::string());
    QCOMPARE(household.Row("select profile_name from Profiles where ProfileNumber = 1")[0],
             std::string("Hannah and Tom Whitaker"));
}

void tst_frmProfile::nameTakesFiftyCharacters() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    TypeOver(form->txtName, QString(60, 'x'));
    Click(form->cmdSave);
    QCOMPARE(household.Row("select profile_name from Profiles where ProfileNumber = 1")[0], std::string(50, 'x'));
    COMPARE_MESSAGES(household, );
}

void tst_frmProfile::amountsThatAreNoNumbersShowAsZero() {
    Household household;
    clsProfile& profile = household.profile();
    profile.IncSalary = std::numeric_limits<double>::quiet_NaN();
    profile.IncRentalIncome = std::numeric_limits<double>::infinity();
    profile.LastModified = runtime::Date{1e300};
    const frmProfile* form = Open(household, profile);
    QVERIFY(form);
    QCOMPARE(BoxOf(form, "txtIncSalary")->Text(), "0");
    QCOMPARE(BoxOf(form, "txtIncRental")->Text(), "0");
    QCOMPARE(form->txtLastModified->text(), "");
    COMPARE_MESSAGES(household, );
}

void tst_frmProfile::hugeAmountsKeepAllDigits() {
    Household household;
    clsProfile& profile = household.profile();
    profile.AssCash = 2e15;
    profile.AssOther = 0.00001;
    const frmProfile* form = Open(household, profile);
    QVERIFY(form);
    Click(form->cmdSave);
    QCOMPARE(household.Row("select AssCash, AssOther from Profiles where ProfileNumber = 1"),
             (std::vector<std::string>{"2E+15", "0"}));
}

void tst_frmProfile::commaOfTheRegionIsUnderstood() {
    Household household;
    runtime::RegionalSettings german = runtime::UnitedStates();
    german.decimal_separator = ",";
    german.group_separator = ".";
    german.currency_symbol = "€";
    german.short_date = "dd.mm.yyyy";
    const ScopedRegion region(german);
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    QCOMPARE(form->txtLastModified->text(), "14.02.2026");
    QCOMPARE(LineOf(form, "txtExpPower")->text(), "2450,75");
    QCOMPARE(BoxOf(form, "txtExpPower")->accessibleName(), "Power, € a year");
    TypeOver(LineOf(form, "txtIncSalary"), "90000,12");
    Click(form->cmdSave);
    QCOMPARE(household.Row("select IncSalary, ExpPower from Profiles where ProfileNumber = 1"),
             (std::vector<std::string>{"90000.12", "2450.75"}));
}

QTEST_MAIN(tst_frmProfile)
#include "tst_frm_profile.moc"
