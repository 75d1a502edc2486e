#pragma once

#include <array>
#include <cstddef>

namespace ledgix::model {

// The values of one year of a property, in dollars a year. Outgoings are negative.
enum class YearValue : std::size_t {
    kPurchasePrice,
    kPurchaseCosts,
    kFinancing,
    kIncome,
    kExpenses,
    kInterest,
    kCashBeforeTax,
    kPrincipal,
    kHouseDepreciation,
    kChattelDepreciation,
    kTaxableResult,
    kTaxRefund,
    kCashAfterTax,
    kHouseValueLeft,
    kChattelValueLeft,
    kPropertyValue,
    kMortgageBalance,
};

inline constexpr std::size_t kYearValues = 17;
inline constexpr std::size_t kLastYear = 20;
inline constexpr std::size_t kLastReportYear = 10;

struct YearRecord {
    std::array<double, kYearValues> values{};

    double& operator[](YearValue value) { return values[static_cast<std::size_t>(value)]; }
    double operator[](YearValue value) const { return values[static_cast<std::size_t>(value)]; }
};

// Years 0 (the purchase) to 20.
using YearlyRecords = std::array<YearRecord, kLastYear + 1>;

}  // namespace ledgix::model
