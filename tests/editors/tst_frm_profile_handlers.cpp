#include "editor_fixture.h"
#include "fixed_clock.h"
#include "help_topics.h"

using namespace ledgix;
using namespace ledgix::test;
using editors::frmProfile;
using model::clsProfile;

namespace {

const MessageRecorder::Message kNameNeeded{"This profile requires a profile name.", 0, "Vantreo Ledgix"};
const MessageRecorder::Message kAfterFirstSave{"Choose 'Add Purchase' to analyse your property puchasing capabilities.",
                                               0, "Vantreo Ledgix"};

}  // namespace

// What the buttons and keys of the editor of profiles do.
class tst_frmProfileHandlers : public QObject {
    Q_OBJECT

private slots:
    void savingStoresTheRowAndCloses();
    void savingWithoutANameIsRefused();
    void savingANewProfileWithoutANameLeavesAllAsItWas();
    void firstSaveStaysOpenAtThePurchases();
    void secondSaveOfANewProfileCloses();
    void firstSaveLeavesAnotherProgramsProfileAlone();
    void firstSaveWithoutACollectionKeepsItsNumber();
    void listIsRebuiltAfterTheFormIsClosed();

    void cancelRestoresTheStoredName();
    void closingTheFrameIsCancel();
    void cancelOfANewProfileStoresNothing();
    void analysisUsesTheValuesOnScreen();
    void helpOpensAtTheTopicOfThePage();

    void enterSaves();
    void enterOnAButtonPressesThatButton();
    void escapeCancels();
    void altKeysReachTheButtons();
    void pressedButtonOfAClosedFormDoesNothing();
};

void tst_frmProfileHandlers::savingStoresTheRowAndCloses() {
    Household household;
    const FixedClock clock({2027, 3, 4, 5, 6, 7});
    const QPointer<frmProfile> form = Open(household, household.profile());
    QVERIFY(form);
    TypeOver(form->txtName, "Hannah & Tom");
    TypeOver(LineOf(form, "txtIncSalary"), "90000.129");
    Click(form->cmdSave);
    QCOMPARE(household.Row("select profile_name, IncSalary, ExpPower, last_modified from Profiles where "
                           "ProfileNumber = 1"),
             (std::vector<std::string>{"Hannah & Tom", "90000.12", "2450.75", "2027-03-04T05:06:07"}));
    QCOMPARE(household.desktop.list_reloads, 1);
    QVERIFY(!form || !form->isVisible());
    QTRY_VERIFY(!form);
    QVERIFY(!household.profile().ReloadProperties);
    COMPARE_MESSAGES(household, );
}

void tst_frmProfileHandlers::savingWithoutANameIsRefused() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    TypeOver(LineOf(form, "txtIncSalary"), "1");
    form->txtName->clear();
    form->cmdSave->setFocus();
    const std::string before = household.file.bytes();
    Click(form->cmdSave);
    COMPARE_MESSAGES(household, kNameNeeded);
    QVERIFY(form->isVisible());
    QVERIFY(form->txtName->hasFocus());
    QCOMPARE(household.file.bytes(), before);
    QCOMPARE(household.profile().IncSalary, 82500.0);
    QCOMPARE(household.desktop.list_reloads, 0);
}

void tst_frmProfileHandlers::savingANewProfileWithoutANameLeavesAllAsItWas() {
    Household household;
    clsProfile& profile = model::gProfiles->AddItem();
    const frmProfile* form = Open(household, profile);
    QVERIFY(form);
    form->txtName->clear();
    Click(form->cmdSave);
    COMPARE_MESSAGES(household, kNameNeeded);
    QCOMPARE(form->cmdSave->text(), "&Add");
    QVERIFY(!form->zqTabDialog1->TabEnabled(5));
    QVERIFY(!profile.Saved);
    QVERIFY(form->isVisible());
    QCOMPARE(household.file.Rows("select * from Profiles").size(), std::size_t{3});
}

void tst_frmProfileHandlers::firstSaveStaysOpenAtThePurchases() {
    Household household;
    const FixedClock clock({2027, 3, 4, 5, 6, 7});
    clsProfile& profile = model::gProfiles->AddItem();
    const frmProfile* form = Open(household, profile);
    QVERIFY(form);
    TypeOver(form->txtName, "Newcomer");
    TypeOver(LineOf(form, "txtIncSalary"), "51000");
    Click(form->cmdSave);
    COMPARE_MESSAGES(household, kAfterFirstSave);
    QCOMPARE(household.Row("select ProfileNumber, IncSalary from Profiles where profile_name = 'Newcomer'"),
             (std::vector<std::string>{"5", "51000"}));
    QVERIFY(form->isVisible());
    QVERIFY(form->zqTabDialog1->TabEnabled(5));
    QCOMPARE(form->zqTabDialog1->CurrentTab(), 5);
    QCOMPARE(VisiblePages(form), QStringList{"frmPurchases"});
    QCOMPARE(form->cmdSave->text(), "&Save");
    QCOMPARE(form->txtLastModified->text(), "3/4/2027");
    QCOMPARE(household.desktop.list_reloads, 1);
}

void tst_frmProfileHandlers::secondSaveOfANewProfileCloses() {
    Household household;
    const QPointer<frmProfile> form = Open(household, model::gProfiles->AddItem());
    QVERIFY(form);
    TypeOver(form->txtName, "Newcomer");
    Click(form->cmdSave);
    TypeOver(form->txtName, "Neighbour");
    Click(form->cmdSave);
    QTRY_VERIFY(!form);
    QCOMPARE(household.Row("select ProfileNumber, profile_name from Profiles where ProfileNumber = 5"),
             (std::vector<std::string>{"5", "Neighbour"}));
    QCOMPARE(household.desktop.list_reloads, 2);
    COMPARE_MESSAGES(household, kAfterFirstSave);
}

void tst_frmProfileHandlers::firstSaveLeavesAnotherProgramsProfileAlone() {
    Household household;
    clsProfile& profile = model::gProfiles->AddItem();
    const frmProfile* form = Open(household, profile);
    QVERIFY(form);
    TypeOver(form->txtName, "Ours");
    household.file.Execute("insert into Profiles (ProfileNumber, profile_name, IncSalary) values (5, 'Theirs', 7)");
    Click(form->cmdSave);
    QCOMPARE(household.Row("select profile_name, IncSalary from Profiles where ProfileNumber = 5"),
             (std::vector<std::string>{"Theirs", "7"}));
    QCOMPARE(household.Row("select profile_name, IncSalary from Profiles where ProfileNumber = 6"),
             (std::vector<std::string>{"Ours", "0"}));
    QCOMPARE(profile.ProfileNumber, 6);
    QCOMPARE(&model::gProfiles->Item("P6"), &profile);
    COMPARE_MESSAGES(household, kAfterFirstSave);
}

void tst_frmProfileHandlers::firstSaveWithoutACollectionKeepsItsNumber() {
    Household household;
    clsProfile profile;
    profile.ProfileNumber = 70;
    const frmProfile* form = Open(household, profile);
    QVERIFY(form);
    TypeOver(form->txtName, "Alone");
    Click(form->cmdSave);
    QCOMPARE(household.Row("select ProfileNumber from Profiles where profile_name = 'Alone'"),
             std::vector<std::string>{"70"});
}

void tst_frmProfileHandlers::listIsRebuiltAfterTheFormIsClosed() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    bool open_meanwhile = true;
    household.desktop.OnReload = [&] { open_meanwhile = form->isVisible(); };
    Click(form->cmdSave);
    QVERIFY(!open_meanwhile);
}

void tst_frmProfileHandlers::cancelRestoresTheStoredName() {
    Household household;
    clsProfile& profile = household.profile();
    const QPointer<frmProfile> form = Open(household, profile);
    QVERIFY(form);
    TypeOver(form->txtName, "Typed");
    TypeOver(LineOf(form, "txtIncSalary"), "1");
    Click(form->cmdCancel);
    QTRY_VERIFY(!form);
    QCOMPARE(profile.ProfileName, std::string("Hannah and Tom Whitaker"));
    QCOMPARE(profile.IncSalary, 82500.0);
    QCOMPARE(household.desktop.list_reloads, 0);
    QVERIFY(Open(household, profile));
    COMPARE_MESSAGES(household, );
}

void tst_frmProfileHandlers::closingTheFrameIsCancel() {
    Household household;
    clsProfile& profile = household.profile();
    const QPointer<frmProfile> form = Open(household, profile);
    QVERIFY(form);
    TypeOver(form->txtName, "Typed");
    QVERIFY(form->close());
    QTRY_VERIFY(!form);
    QCOMPARE(profile.ProfileName, std::string("Hannah and Tom Whitaker"));
}

void tst_frmProfileHandlers::cancelOfANewProfileStoresNothing() {
    Household household;
    const QPointer<frmProfile> form = Open(household, model::gProfiles->AddItem());
    QVERIFY(form);
    TypeOver(form->txtName, "Typed");
    Click(form->cmdCancel);
    QTRY_VERIFY(!form);
    QCOMPARE(household.file.Rows("select * from Profiles").size(), std::size_t{3});
    COMPARE_MESSAGES(household, );
}

void tst_frmProfileHandlers::analysisUsesTheValuesOnScreen() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    TypeOver(LineOf(form, "txtIncSalary"), "12345.67");
    const std::string before = household.file.bytes();
    Click(form->cmdAnalyse);
    QCOMPARE(household.windows.reports, (std::vector<TestWindows::Report>{{0, 12345.67}}));
    QCOMPARE(household.file.bytes(), before);
    QVERIFY(form->isVisible());
}

void tst_frmProfileHandlers::helpOpensAtTheTopicOfThePage() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    for (int tab = 1; tab <= editors::kProfilePageCount; ++tab) {
        ChooseTab(form, tab);
        Click(form->cmdHelp);
    }
    QCOMPARE(household.desktop.help_contexts,
             (QList<int>{editors::kHelpIncome, editors::kHelpExpenses, editors::kHelpAssets, editors::kHelpLiabilities,
                         editors::kHelpPurchases}));
}

void tst_frmProfileHandlers::enterSaves() {
    Household household;
    const QPointer<frmProfile> form = Open(household, household.profile());
    QVERIFY(form);
    TypeOver(LineOf(form, "txtIncSalary"), "5");
    QTest::keyClick(LineOf(form, "txtIncSalary"), Qt::Key_Return);
    QTRY_VERIFY(!form);
    QCOMPARE(household.Row("select IncSalary from Profiles where ProfileNumber = 1"), std::vector<std::string>{"5"});
}

void tst_frmProfileHandlers::enterOnAButtonPressesThatButton() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    form->cmdHelp->setFocus();
    QTest::keyClick(form->cmdHelp, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(household.desktop.help_contexts, QList<int>{editors::kHelpIncome});
    QVERIFY(form->isVisible());
}

void tst_frmProfileHandlers::escapeCancels() {
    Household household;
    const QPointer<frmProfile> form = Open(household, household.profile());
    QVERIFY(form);
    TypeOver(form->txtName, "Typed");
    QTest::keyClick(form->txtName, Qt::Key_Escape);
    QTRY_VERIFY(!form);
    QCOMPARE(household.profile().ProfileName, std::string("Hannah and Tom Whitaker"));
}

void tst_frmProfileHandlers::altKeysReachTheButtons() {
    Household household;
    const QPointer<frmProfile> form = Open(household, household.profile());
    QVERIFY(form);
    QTest::keyClick(form, Qt::Key_H, Qt::AltModifier);
    QTRY_COMPARE(household.desktop.help_contexts.size(), 1);
    QTest::keyClick(form, Qt::Key_C, Qt::AltModifier);
    QTRY_VERIFY(!form);
}

void tst_frmProfileHandlers::pressedButtonOfAClosedFormDoesNothing() {
    Household household;
    const frmProfile* form = Open(household, household.profile());
    QVERIFY(form);
    household.profile().CloseForm();
    form->cmdSave->click();
    form->cmdAnalyse->click();
    QCOMPARE(household.desktop.list_reloads, 0);
    QVERIFY(household.windows.reports.empty());
}

QTEST_MAIN(tst_frmProfileHandlers)
#include "tst_frm_profile_handlers.moc"
