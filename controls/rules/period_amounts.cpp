#include "period_amounts.h"

#include "amount_text.h"
#include "conversions.h"

namespace ledgix::controls {

namespace {

constexpr double kWeeks = 52;
constexpr double kMonths = 12;
constexpr AmountLimits kWholeAmounts{};

std::string Whole(double amount) {
    return CleanAmount(runtime::ToText(amount), kWholeAmounts);
}

}  // namespace

void PeriodAmounts::Enter(Period period, std::string_view text) {
    const std::string entered = CleanAmount(text, kWholeAmounts);
    const double amount = runtime::LeadingNumber(entered);
    std::string year = period == Period::kWeek    ? Whole(amount * kWeeks)
                       : period == Period::kMonth ? Whole(amount * kMonths)
                                                  : entered;
    const double yearly = runtime::LeadingNumber(year);
    std::string week = period == Period::kWeek ? entered : Whole(yearly / kWeeks);
    std::string month = period == Period::kMonth ? entered : Whole(yearly / kMonths);
    texts_ = {std::move(week), std::move(month), std::move(year)};
}

}  // namespace ledgix::controls
