#include "cls_property.h"

#include <gtest/gtest.h>

#include "cls_profile.h"
#include "household_builder.h"

namespace ledgix::model {
namespace {

TEST(Property, LoadsEveryFieldOfItsRow) {
    const test::InstalledDatabase database(LEDGIX_TEST_DATA "/mdb/household-2000.mdb");
    clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ReloadProfile();
    const clsProperty& property = profile.Property("P1-2");
    EXPECT_TRUE(property.Saved);
    EXPECT_EQ(property.ProfileNumber, 1);
    EXPECT_EQ(property.PropertyNumber, 2);
    EXPECT_EQ(property.PropertyName, "Unit 3, 88 Kowhai Road");
    EXPECT_EQ(property.PurchasePrice, 189500);
    EXPECT_EQ(property.PurchaseCosts, 1850.5);
    EXPECT_EQ(property.DepositValue, 20000);
    EXPECT_TRUE(property.InterestOnly);
    EXPECT_EQ(property.MortgageTerm, 20);
    EXPECT_EQ(property.Rates, 1315);
    EXPECT_EQ(property.Insurance, 0);
    EXPECT_EQ(property.OtherCosts, 1040);
    EXPECT_EQ(property.RentIncome, 14560);
    EXPECT_EQ(property.InflationRate, 2);
    EXPECT_EQ(property.HouseValue, 104225);
    EXPECT_EQ(property.ChattelValue, 37900);
    EXPECT_EQ(property.HouseDepn, 4);
    EXPECT_EQ(property.ChattelDepn, 15);
    EXPECT_EQ(property.PriceIncreases, 3.5);
    EXPECT_EQ(property.Fees, 1092);
    EXPECT_EQ(property.Repairs, 650);
}

TEST(Property, ItsRateIsTheNearestSingle) {
    const test::InstalledDatabase database(LEDGIX_TEST_DATA "/mdb/household-2000.mdb");
    clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ReloadProfile();
    EXPECT_EQ(profile.Property("P1-2").MortgageRate, 6.85F);
    EXPECT_NE(static_cast<double>(profile.Property("P1-2").MortgageRate), 6.85);
}

TEST(Property, ANewOneIsNotSaved) {
    EXPECT_FALSE(clsProperty().Saved);
}

}  // namespace
}  // namespace ledgix::model
