#include "price_split.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "conversions.h"

namespace ledgix::editors {
namespace {

using model::clsProperty;
using test::CaseName;
using test::Json;

struct Field {
    const char* name;
    double clsProperty::*value;
};

constexpr Field kFields[]{{"PurchasePrice", &clsProperty::PurchasePrice},
                          {"HouseValue", &clsProperty::HouseValue},
                          {"ChattelValue", &clsProperty::ChattelValue},
                          {"HouseDepn", &clsProperty::HouseDepn},
                          {"ChattelDepn", &clsProperty::ChattelDepn}};

class SplitCase : public testing::TestWithParam<Json> {};
TEST_P(SplitCase, GivesTheListedValues) {
    clsProperty property;
    for (const Field& field : kFields)
        property.*field.value = GetParam().at("before").value(field.name, 0.0);
    PriceSplit split(property);
    for (const Json& price : GetParam().at("prices")) {
        split.PriceChanged(price.get<double>());
        split.EndEntry();
    }
    for (const Field& field : kFields)
        EXPECT_EQ(runtime::ToText(property.*field.value), GetParam().at("after").at(field.name).get<std::string>())
            << field.name;
}
INSTANTIATE_TEST_SUITE_P(, SplitCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("property_editor.json").at("priceSplit"))),
                         CaseName);

class PriceSplitOf : public testing::Test {
protected:
    void Type(const std::vector<double>& prices) {
        for (const double price : prices)
            split.PriceChanged(price);
    }

    clsProperty property;
    PriceSplit split{property};
};

TEST_F(PriceSplitOf, ANewPropertyFollowsEveryKeyOfTheEntry) {
    Type({2, 25, 250, 2500, 25000, 250000});
    EXPECT_EQ(runtime::ToText(property.HouseValue), "137500");
    EXPECT_EQ(runtime::ToText(property.ChattelValue), "50000");
}

TEST_F(PriceSplitOf, ANewPropertyFollowsACorrectionWithinTheEntry) {
    Type({9, 90, 9, 0, 8, 80});
    EXPECT_EQ(runtime::ToText(property.HouseValue), "44");
    EXPECT_EQ(runtime::ToText(property.ChattelValue), "16");
}

TEST_F(PriceSplitOf, ALaterEntryIsNotMade) {
    Type({100000});
    split.EndEntry();
    EXPECT_FALSE(split.PriceChanged(200000));
    EXPECT_EQ(property.PurchasePrice, 200000);
    EXPECT_EQ(runtime::ToText(property.HouseValue), "55000");
}

TEST_F(PriceSplitOf, ALaterEntryIsMadeWhenTheValuesAreBothZeroAgain) {
    Type({100000});
    split.EndEntry();
    property.HouseValue = property.ChattelValue = 0;
    EXPECT_TRUE(split.PriceChanged(200000));
    EXPECT_EQ(runtime::ToText(property.HouseValue), "110000");
}

TEST_F(PriceSplitOf, AValueEnteredByHandIsNotMade) {
    property.HouseValue = 1;
    Type({5, 50});
    EXPECT_EQ(property.HouseValue, 1);
    EXPECT_EQ(property.ChattelValue, 0);
    EXPECT_EQ(property.HouseDepn, 0);
}

}  // namespace
}  // namespace ledgix::editors
