#include "editor_fixture.h"

using namespace ledgix;
using namespace ledgix::test;
using editors::frmProfile;
using model::clsProfile;
using model::clsProperty;

namespace {

const MessageRecorder::Message kSelect{"Select a property", 0, "Vantreo Ledgix"};

// The page of purchases of the sample's first profile, which holds three.
class Purchases : public Household {
public:
    Purchases() : form(Open(*this, profile())) {
        ChooseTab(form, editors::kPurchasesTab);
        list = form->lstProperty;
    }

    QPoint PlaceOf(int row) const { return list->visualItemRect(list->item(row)).center(); }
    void Select(int row) const { QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOf(row)); }
    std::size_t RowsStored() const { return file.Rows("select * from ProfileProperty where ProfileNumber = 1").size(); }

    frmProfile* form;
    QListWidget* list;
};

}  // namespace

class tst_frmProfilePurchases : public QObject {
    Q_OBJECT

private slots:
    void selectedNumberIsThatOfTheLine();
    void editOpensTheSelectedProperty();
    void editAndDeleteNeedASelection();
    void editWithoutASelectionIsToldOnceFocused();
    void enterEdits();
    void doubleClickEdits();
    void doubleClickDoesNothingWhileEditIsDisabled();

    void deleteAsksAndKeepsByDefault();
    void deleteRemovesTheRow();
    void deleteKeyAsks();
    void questionShowsTheNameAsItIs();

    void addOpensANewProperty();
    void addedPropertyThatWasSavedStays();
    void addedPropertyThatWasNotSavedIsForgotten();
    void addedPropertyMayTakeAnotherNumber();
    void addSurvivesThatThePropertyIsGone();
    void addSurvivesThatTheFormIsGone();
    void addShowsAnErrorAndForgetsTheProperty();

    void reloadRefillsAndKeepsTheSelection();
    void reloadForgetsASelectionThatIsGone();
    void tabRefreshesTheList();
    void unsavedAmountsOutlastAReload();
    void errorsOfHandlersAreShown();
};

void tst_frmProfilePurchases::selectedNumberIsThatOfTheLine() {
    Household household;
    frmProfile* form = Open(household, household.profile("P4"));
    ChooseTab(form, editors::kPurchasesTab);
    form->lstProperty->setCurrentRow(1);
    QCOMPARE(form->SelPropertyNumber(), 3);
    form->lstProperty->setCurrentRow(0);
    QCOMPARE(form->SelPropertyNumber(), 1);
    form->lstProperty->clearSelection();
    QVERIFY_EXCEPTION_THROWN(form->SelPropertyNumber(), runtime::RuntimeError);
}

void tst_frmProfilePurchases::editOpensTheSelectedProperty() {
    Purchases page;
    page.Select(1);
    Click(page.form->cmdEdit);
    QCOMPARE(page.windows.edited, std::vector<std::string>{"Unit 3, 88 Kowhai Road"});
    COMPARE_MESSAGES(page, );
}

void tst_frmProfilePurchases::editAndDeleteNeedASelection() {
    Purchases page;
    Click(page.form->cmdEdit);
    Click(page.form->cmdDelete);
    COMPARE_MESSAGES(page, kSelect, kSelect);
    QVERIFY(page.windows.edited.empty());
    QCOMPARE(page.RowsStored(), std::size_t{3});
}

// The list has a current line as soon as it has the focus; it is not a selected one.
void tst_frmProfilePurchases::editWithoutASelectionIsToldOnceFocused() {
    Purchases page;
    page.list->setFocus();
    QTest::keyClick(page.list, Qt::Key_Return);
    COMPARE_MESSAGES(page, kSelect);
}

void tst_frmProfilePurchases::enterEdits() {
    Purchases page;
    page.list->setFocus();
    QTest::keyClick(page.list, Qt::Key_Down);
    QTest::keyClick(page.list, Qt::Key_Down);
    const int row = page.list->currentRow();
    QTest::keyClick(page.list, Qt::Key_Return);
    QTest::keyClick(page.list, Qt::Key_Enter, Qt::KeypadModifier);
    const std::string name = page.list->item(row)->text().toStdString();
    QCOMPARE(page.windows.edited, (std::vector<std::string>{name, name}));
    QVERIFY(page.form->isVisible());
}

void tst_frmProfilePurchases::doubleClickEdits() {
    Purchases page;
    page.Select(2);
    QTest::mouseDClick(page.list->viewport(), Qt::LeftButton, Qt::NoModifier, page.PlaceOf(2));
    QCOMPARE(page.windows.edited, std::vector<std::string>{"The old bakery"});
}

void tst_frmProfilePurchases::doubleClickDoesNothingWhileEditIsDisabled() {
    Purchases page;
    page.form->cmdEdit->setEnabled(false);
    page.Select(2);
    QTest::mouseDClick(page.list->viewport(), Qt::LeftButton, Qt::NoModifier, page.PlaceOf(2));
    QVERIFY(page.windows.edited.empty());
}

void tst_frmProfilePurchases::deleteAsksAndKeepsByDefault() {
    Purchases page;
    page.Select(0);
    Click(page.form->cmdDelete);
    COMPARE_MESSAGES(page, {"Delete property '14 Harbour Terrace'?", 292, "Vantreo Ledgix"});
    QCOMPARE(page.RowsStored(), std::size_t{3});
    QCOMPARE(page.list->count(), 3);
}

void tst_frmProfilePurchases::deleteRemovesTheRow() {
    Purchases page;
    page.Select(1);
    page.messages.AnswerNext(runtime::MessageAnswer::kYes);
    Click(page.form->cmdDelete);
    QCOMPARE(Lines(page.list), (QStringList{"14 Harbour Terrace", "The old bakery"}));
    QCOMPARE(page.file.Rows("select * from ProfileProperty where ProfileNumber = 1 and PropertyNumber = 2").size(),
             std::size_t{0});
    QCOMPARE(page.file.Rows("select * from ProfileProperty").size(), std::size_t{6});
    QCOMPARE(page.profile().Properties().Keys(), (std::vector<std::string>{"P1-1", "P1-3"}));
    Click(page.form->cmdEdit);
    QCOMPARE(page.messages.messages().back(), kSelect);
}

void tst_frmProfilePurchases::deleteKeyAsks() {
    Purchases page;
    page.Select(2);
    page.messages.AnswerNext(runtime::MessageAnswer::kYes);
    QTest::keyClick(page.list, Qt::Key_Delete);
    COMPARE_MESSAGES(page, {"Delete property 'The old bakery'?", 292, "Vantreo Ledgix"});
    QCOMPARE(page.RowsStored(), std::size_t{2});
}

void tst_frmProfilePurchases::questionShowsTheNameAsItIs() {
    Purchases page;
    page.profile().Property("P1-1").PropertyName = "Fish & \"Chips\" 'Bar'";
    page.profile().RaiseReloadProperties();
    page.Select(0);
    Click(page.form->cmdDelete);
    COMPARE_MESSAGES(page, {"Delete property 'Fish & \"Chips\" 'Bar''?", 292, "Vantreo Ledgix"});
}

void tst_frmProfilePurchases::addOpensANewProperty() {
    Purchases page;
    std::vector<std::int32_t> numbers;
    page.windows.EditProperty = [&](clsProperty& property) {
        numbers = {property.ProfileNumber, property.PropertyNumber, property.Saved};
    };
    Click(page.form->cmdAdd);
    QCOMPARE(numbers, (std::vector<std::int32_t>{1, 4, 0}));
}

void tst_frmProfilePurchases::addedPropertyThatWasSavedStays() {
    Purchases page;
    page.windows.EditProperty = [&](clsProperty& property) {
        property.PropertyName = "New flat";
        property.Save();
        page.profile().RaiseReloadProperties();
    };
    Click(page.form->cmdAdd);
    QCOMPARE(Lines(page.list).last(), "New flat");
    QCOMPARE(page.list->count(), 4);
    QCOMPARE(page.RowsStored(), std::size_t{4});
}

void tst_frmProfilePurchases::addedPropertyThatWasNotSavedIsForgotten() {
    Purchases page;
    Click(page.form->cmdAdd);
    QCOMPARE(page.list->count(), 3);
    QCOMPARE(page.profile().PropertyCount(), std::size_t{3});
    QCOMPARE(page.RowsStored(), std::size_t{3});
}

void tst_frmProfilePurchases::addedPropertyMayTakeAnotherNumber() {
    Purchases page;
    page.windows.EditProperty = [&](clsProperty& property) {
        page.file.Execute("insert into ProfileProperty (ProfileNumber, PropertyNumber) values (1, 4)");
        page.profile().TakeFreeNumber(property);
        QCOMPARE(property.PropertyNumber, 5);
    };
    Click(page.form->cmdAdd);
    QCOMPARE(page.profile().Properties().Keys(), (std::vector<std::string>{"P1-1", "P1-2", "P1-3"}));
    COMPARE_MESSAGES(page, );
}

void tst_frmProfilePurchases::addSurvivesThatThePropertyIsGone() {
    Purchases page;
    page.windows.EditProperty = [&](clsProperty& property) {
        page.profile().ForgetProperty(model::PropertyKey(property.ProfileNumber, property.PropertyNumber));
    };
    Click(page.form->cmdAdd);
    QCOMPARE(page.list->count(), 3);
    COMPARE_MESSAGES(page, );
}

void tst_frmProfilePurchases::addSurvivesThatTheFormIsGone() {
    Purchases page;
    const QPointer<frmProfile> form(page.form);
    page.windows.EditProperty = [&](clsProperty&) { model::gProfiles->Remove("P1"); };
    Click(page.form->cmdAdd);
    QTRY_VERIFY(!form);
    COMPARE_MESSAGES(page, );
}

void tst_frmProfilePurchases::addShowsAnErrorAndForgetsTheProperty() {
    Purchases page;
    page.windows.EditProperty = [](clsProperty&) { runtime::RaiseError(runtime::ErrorNumber::kOverflow); };
    Click(page.form->cmdAdd);
    COMPARE_MESSAGES(page, {"6 - Overflow", 0, "Vantreo Ledgix"});
    QCOMPARE(page.profile().PropertyCount(), std::size_t{3});
    QCOMPARE(page.list->count(), 3);
}

void tst_frmProfilePurchases::reloadRefillsAndKeepsTheSelection() {
    Purchases page;
    page.Select(2);
    page.profile().Property("P1-3").PropertyName = "The new bakery";
    page.profile().ForgetProperty("P1-1");
    page.profile().RaiseReloadProperties();
    QCOMPARE(Lines(page.list), (QStringList{"Unit 3, 88 Kowhai Road", "The new bakery"}));
    QCOMPARE(page.form->SelPropertyNumber(), 3);
}

void tst_frmProfilePurchases::reloadForgetsASelectionThatIsGone() {
    Purchases page;
    page.Select(2);
    page.profile().ForgetProperty("P1-3");
    page.profile().RaiseReloadProperties();
    QVERIFY(page.list->selectedItems().isEmpty());
}

void tst_frmProfilePurchases::tabRefreshesTheList() {
    Purchases page;
    ChooseTab(page.form, 1);
    page.profile().Property("P1-1").PropertyName = "Renamed";
    QCOMPARE(Lines(page.list).first(), "14 Harbour Terrace");
    ChooseTab(page.form, 2);
    QCOMPARE(Lines(page.list).first(), "14 Harbour Terrace");
    ChooseTab(page.form, editors::kPurchasesTab);
    QCOMPARE(Lines(page.list).first(), "Renamed");
}

void tst_frmProfilePurchases::unsavedAmountsOutlastAReload() {
    Purchases page;
    ChooseTab(page.form, 1);
    TypeOver(LineOf(page.form, "txtIncSalary"), "123");
    page.profile().RaiseReloadProperties();
    QCOMPARE(BoxOf(page.form, "txtIncSalary")->Text(), "123");
}

void tst_frmProfilePurchases::errorsOfHandlersAreShown() {
    Purchases page;
    page.Select(2);
    page.profile().ForgetProperty("P1-3");  // behind the list's back
    Click(page.form->cmdEdit);
    COMPARE_MESSAGES(page, {"9 - Subscript out of range", 0, "Vantreo Ledgix"});
}

QTEST_MAIN(tst_frmProfilePurchases)
#include "tst_frm_profile_purchases.moc"
