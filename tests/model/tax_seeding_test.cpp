#include <gtest/gtest.h>

#include <chrono>

#include "cases.h"
#include "dao_transaction.h"
#include "database.h"
#include "household_builder.h"
#include "household_file.h"
#include "tax_module.h"

namespace ledgix::model {
namespace {

using runtime::Variant;
using test::Json;
using Values = std::vector<Variant>;

constexpr char kAllBrackets[] = "select upper, rate from Tax_Rates";

std::vector<std::uint8_t> ContentWith(const Json& brackets) {
    return test::HouseholdBuilder().AddTaxRates(brackets).Finish();
}

class TaxSeeding : public testing::Test {
protected:
    ~TaxSeeding() override { TaxRatesSeeded = false; }

    test::MessageRecorder messages;
    test::DiagnosisRecorder diagnoses;
};

TEST_F(TaxSeeding, DoesWhatItsStatementsDo) {
    const test::HouseholdFile file(ContentWith(Json::array()));
    const test::HouseholdFile executed(ContentWith(Json::array()));
    file.Open();
    CheckDefaultTaxRates();
    const Json cases = test::LoadCases("schema.json");
    for (const Json& statement : cases.at("seedStatements"))
        executed.Execute(statement.get<std::string>());
    EXPECT_EQ(file.Rows(kAllBrackets), executed.Rows(kAllBrackets));
    EXPECT_EQ(file.Rows(kAllBrackets), (std::vector<Values>{{38000, 19.5F}, {60000, 33.0F}, {0, 39.0F}}));
    EXPECT_TRUE(TaxRatesSeeded);
    EXPECT_EQ(CalculateIncomeTax(70000), 18570);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(TaxSeeding, LeavesATableWithAnyRowAlone) {
    for (const Json& bracket : {Json{{"upper", 0}, {"rate", 20}}, Json{{"upper", 500}, {"rate", 20}}}) {
        const test::HouseholdFile file(ContentWith(Json::array({bracket})));
        const std::string before = file.bytes();
        file.Open();
        CheckDefaultTaxRates();
        EXPECT_EQ(file.bytes(), before);
        EXPECT_FALSE(TaxRatesSeeded);
    }
}

TEST_F(TaxSeeding, KeepsWhatItSaidWhenItRunsAgain) {
    const test::HouseholdFile file(ContentWith(Json::array()));
    file.Open();
    CheckDefaultTaxRates();
    CheckDefaultTaxRates();
    EXPECT_EQ(file.Rows(kAllBrackets).size(), 3U);
    EXPECT_TRUE(TaxRatesSeeded);
}

TEST_F(TaxSeeding, ThatFailsIsReportedAndNotSaidToBeDone) {
    const test::HouseholdFile file(ContentWith(Json::array()));
    file.OpenReadOnly();
    CheckDefaultTaxRates();
    EXPECT_EQ(diagnoses.Numbers(), (std::vector<int>{3027, 3027, 3027}));
    EXPECT_FALSE(TaxRatesSeeded);
}

TEST_F(TaxSeeding, OfATableThatCanNotBeReadIsNotTried) {
    const test::HouseholdFile file(ContentWith(Json::array()));
    file.Open();
    store::gDatabase->SetPatience(std::chrono::milliseconds(1));
    {
        const auto other = dao::DefaultWorkspace().OpenDatabase(file.path());
        const dao::Transaction keeping_out(*other);
        CheckDefaultTaxRates();
    }
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3260});
    EXPECT_FALSE(TaxRatesSeeded);
    EXPECT_TRUE(file.Rows(kAllBrackets).empty());
}

}  // namespace
}  // namespace ledgix::model
