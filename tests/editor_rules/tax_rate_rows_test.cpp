#include "tax_rate_rows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "cases.h"
#include "conversions.h"

namespace ledgix::editors {
namespace {

using test::CaseName;
using test::Json;
using Texts = std::vector<std::string>;

std::string NumberText(const Json& number) {
    return runtime::ToText(number.get<double>());
}

// The brackets of a table in the order of the rows: by bound, then the top bracket.
TaxRateRows RowsOf(Json brackets) {
    std::stable_sort(brackets.begin(), brackets.end(), [](const Json& left, const Json& right) {
        return right.at("upper") == 0 ? left.at("upper") != 0
                                      : left.at("upper") != 0 && left.at("upper") < right.at("upper");
    });
    TaxRateRows rows;
    for (std::size_t i = 0; i < brackets.size(); ++i) {
        rows.SetUpper(i, NumberText(brackets[i].at("upper")));
        rows.SetRate(i, NumberText(brackets[i].at("rate")));
    }
    return rows;
}

// A numeric field drops the zero before a point.
std::string AsTheFieldHoldsIt(const std::string& text) {
    return text.starts_with("0.") ? text.substr(1) : text;
}

TaxRateRows RowsAfter(const Json& test_case) {
    TaxRateRows rows = RowsOf(test_case.at("TaxRates"));
    for (const Json& step : test_case.at("steps")) {
        const std::string text = AsTheFieldHoldsIt(step.at("text"));
        const std::size_t row = step.at("row");
        step.at("control") == "txtUpper" ? rows.SetUpper(row, text) : rows.SetRate(row, text);
    }
    return rows;
}

class TaxRatesCase : public testing::TestWithParam<Json> {
protected:
    TaxRateRows rows = RowsAfter(GetParam());
};

TEST_P(TaxRatesCase, DescribesEveryRow) {
    for (const auto& [row, label] : GetParam().at("Label1").items())
        EXPECT_EQ(rows.Label(std::stoul(row)), label.get<std::string>());
}

TEST_P(TaxRatesCase, EnablesTheRowsDownToTheTopBracket) {
    std::vector<bool> enabled;
    for (std::size_t row = 0; row < TaxRateRows::kCount; ++row)
        enabled.push_back(rows.Enabled(row));
    EXPECT_EQ(enabled, GetParam().at("enabled").get<std::vector<bool>>());
}

TEST_P(TaxRatesCase, SavesTheEnabledRows) {
    EXPECT_EQ(rows.SaveStatements(), GetParam().at("saveStatements").get<Texts>());
}
INSTANTIATE_TEST_SUITE_P(, TaxRatesCase, testing::ValuesIn(test::CaseList(test::LoadCases("tax_rates_editor.json"))),
                         CaseName);

TEST(TaxRateRows, HoldZeroesAtFirst) {
    const TaxRateRows rows;
    EXPECT_EQ(rows.Row(9).upper, "0");
    EXPECT_EQ(rows.Row(9).rate, "0");
}

TEST(TaxRateRows, ThatBecomeTheTopBracketDisableAllRowsBelow) {
    TaxRateRows rows =
        RowsOf({{{"upper", 10}, {"rate", 1}}, {{"upper", 20}, {"rate", 2}}, {{"upper", 30}, {"rate", 3}}});
    rows.SetUpper(0, "0");
    for (std::size_t row = 1; row < TaxRateRows::kCount; ++row)
        EXPECT_FALSE(rows.Enabled(row)) << row;
    EXPECT_EQ(rows.SaveStatements().size(), 2U);
}

TEST(TaxRateRows, ChangeTheirOwnLabelWithTheirOwnBound) {
    TaxRateRows rows = RowsOf({{{"upper", 10}, {"rate", 1}}, {{"upper", 20}, {"rate", 2}}});
    EXPECT_EQ(rows.Label(1), "Income from 10 to ");
    rows.SetUpper(1, "0");
    EXPECT_EQ(rows.Label(1), "Income from 10 and up ");
}

TEST(TaxRateRows, SaveZeroForATextThatIsNoNumberYet) {
    TaxRateRows rows;
    rows.SetUpper(0, "");
    rows.SetRate(0, ".");
    EXPECT_EQ(rows.SaveStatements(),
              (Texts{"delete from tax_rates", "insert into tax_rates (upper,rate) values (0,0)"}));
}

TEST(TaxRateRows, AreTen) {
    const TaxRateRows rows;
    EXPECT_THROW(rows.Row(10), std::out_of_range);
}

}  // namespace
}  // namespace ledgix::editors
