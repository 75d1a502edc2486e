#include <gtest/gtest.h>

#include "cls_profile.h"
#include "database.h"
#include "fixed_clock.h"
#include "household_file.h"

namespace ledgix::model {
namespace {

using runtime::Variant;
using Message = test::MessageRecorder::Message;
using Values = std::vector<Variant>;

clsProperty EveryFieldFilled() {
    clsProperty property;
    property.ProfileNumber = 2;
    property.PropertyNumber = 6;
    property.PropertyName = "7 O'Brien's True Lane";
    property.MortgageRate = 6.85F;
    property.InterestOnly = true;
    property.MortgageTerm = 30;
    double next = 1000.5;
    for (double clsProperty::*member :
         {&clsProperty::PurchasePrice, &clsProperty::PurchaseCosts, &clsProperty::DepositValue, &clsProperty::Rates,
          &clsProperty::Insurance, &clsProperty::OtherCosts, &clsProperty::RentIncome, &clsProperty::InflationRate,
          &clsProperty::HouseValue, &clsProperty::ChattelValue, &clsProperty::HouseDepn, &clsProperty::ChattelDepn,
          &clsProperty::PriceIncreases, &clsProperty::Fees, &clsProperty::Repairs})
        property.*member = next++;
    return property;
}

class SavedProperty : public testing::Test {
protected:
    SavedProperty() { file.Open(); }

    clsProperty Stored(std::int32_t profile, const std::string& key) const {
        clsProfile owner;
        owner.ProfileNumber = profile;
        owner.LoadProperties();
        return std::move(owner.Property(key));
    }
    std::string Log() const { return test::Content(file.folder().File("errNov26.log")); }

    test::FixedClock clock{{2026, 11, 7, 9, 5, 3}};
    test::HouseholdFile file{test::SampleContent("household-2000.mdb")};
    test::MessageRecorder messages;
    test::DiagnosisRecorder diagnoses;
};

TEST_F(SavedProperty, HasEveryFieldInItsColumn) {
    EveryFieldFilled().Save();
    EXPECT_EQ(file.Rows("select PropertyName, PurchasePrice, PurchaseCosts, DepositValue, MortgageRate, Rates, "
                        "Insurance, OtherCosts, RentIncome, InflationRate, HouseValue, Chattelvalue, HouseDepn, "
                        "ChattelDepn, PriceIncreases, ExpFees, expRepair, InterestOnly, MortgageTerm "
                        "from ProfileProperty where ProfileNumber = 2 and PropertyNumber = 6"),
              (std::vector<Values>{{std::string("7 O'Brien's True Lane"), 1000.5, 1001.5, 1002.5, 6.85F, 1003.5, 1004.5,
                                    1005.5, 1006.5, 1007.5, 1008.5, 1009.5, 1010.5, 1011.5, 1012.5, 1013.5, 1014.5,
                                    true, std::int16_t{30}}}));
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(SavedProperty, ReadsItsRateBackAsTheNearestSingle) {
    EveryFieldFilled().Save();
    EXPECT_EQ(Stored(2, "P2-6").MortgageRate, 6.85F);
}

TEST_F(SavedProperty, IsSavedFromThenOn) {
    clsProperty property = EveryFieldFilled();
    EXPECT_TRUE(property.Save());
    EXPECT_TRUE(property.Saved);
}

TEST_F(SavedProperty, ThatIsStoredChangesItsRowOnly) {
    const auto others = "select * from ProfileProperty where ProfileNumber <> 1 or PropertyNumber <> 2";
    const auto before = file.Rows(others);
    clsProperty property = Stored(1, "P1-2");
    property.RentIncome = 1;
    property.Save();
    EXPECT_EQ(file.Rows(others), before);
    EXPECT_EQ(file.Column("select RentIncome from ProfileProperty where ProfileNumber = 1 and PropertyNumber = 2"),
              Values{1.0});
}

TEST_F(SavedProperty, GoesByBothNumbersWhenItIsDeleted) {
    const auto others = "select * from ProfileProperty where ProfileNumber <> 1 or PropertyNumber <> 1";
    const auto before = file.Rows(others);
    Stored(1, "P1-1").Delete();
    EXPECT_EQ(file.Rows("select * from ProfileProperty"), before);
}

TEST_F(SavedProperty, OfNumber0IsARowThatASecondOneCanNotJoin) {
    clsProperty property;
    property.ProfileNumber = 2;
    property.Save();
    EXPECT_TRUE(messages.messages().empty());
    property.Save();
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3022});
    EXPECT_EQ(file.Rows("select * from ProfileProperty where ProfileNumber = 2 and PropertyNumber = 0").size(), 1U);
}

TEST_F(SavedProperty, WithANameThatIsTooLongEndsInTheErrorLogAndKeepsItsValues) {
    const std::string before = file.bytes();
    clsProperty property = EveryFieldFilled();
    property.PropertyName = std::string(51, 'x');
    EXPECT_FALSE(property.Save());
    EXPECT_EQ(messages.messages(), (std::vector<Message>{{"", runtime::kOkOnly, "Vantreo Ledgix"}}));
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3163});
    EXPECT_EQ(Log(), "07/11/26 09:05:03 \r\n");
    EXPECT_EQ(file.bytes(), before);
    EXPECT_FALSE(property.Saved);
    EXPECT_EQ(property.PropertyName, std::string(51, 'x'));
    EXPECT_EQ(property.PurchasePrice, 1000.5);
}

TEST_F(SavedProperty, ThatIsStoredAndFailsIsStillASavedOne) {
    clsProperty property = Stored(1, "P1-1");
    const std::string before = file.bytes();
    property.PropertyName = std::string(51, 'x');
    EXPECT_FALSE(property.Save());
    EXPECT_TRUE(property.Saved);
    EXPECT_EQ(file.bytes(), before);
}

TEST_F(SavedProperty, WithoutADatabaseIsReportedAndNotSaved) {
    file.Close();
    clsProperty property = EveryFieldFilled();
    EXPECT_FALSE(property.Save());
    ASSERT_FALSE(messages.messages().empty());
    EXPECT_EQ(messages.messages()[0].text.substr(0, 24), "General Errors...\r\n\r\n91 ");
    EXPECT_FALSE(property.Saved);
}

TEST_F(SavedProperty, IsReadBackAsItIsStored) {
    clsProperty property = Stored(1, "P1-1");
    const double price = property.PurchasePrice;
    property.PurchasePrice = 1;
    property.PropertyName = "changed";
    property.Reload();
    EXPECT_EQ(property.PurchasePrice, price);
    EXPECT_NE(property.PropertyName, "changed");
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(SavedProperty, KeepsItsValuesWhenThereIsNoRowToReadBack) {
    clsProperty property = EveryFieldFilled();
    property.Reload();
    EXPECT_EQ(property.PurchasePrice, 1000.5);
    EXPECT_FALSE(property.Saved);
    EXPECT_TRUE(messages.messages().empty());
}

}  // namespace
}  // namespace ledgix::model
