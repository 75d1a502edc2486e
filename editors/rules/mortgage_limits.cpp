#include "mortgage_limits.h"

#include "conversions.h"

namespace ledgix::editors {

namespace {

constexpr double kHighestRate = 100;
constexpr double kLongestTerm = 50;
constexpr double kUsualTerm = 20;

}  // namespace

std::optional<std::string> LimitedMortgageRate(std::string_view text) {
    if (runtime::LeadingNumber(text) > kHighestRate)
        return runtime::ToText(kHighestRate);
    return std::nullopt;
}

std::optional<std::string> LimitedMortgageTerm(std::string_view text) {
    const double years = runtime::LeadingNumber(text);
    if (years > kLongestTerm)
        return runtime::ToText(kLongestTerm);
    if (years <= 0)
        return runtime::ToText(kUsualTerm);
    return std::nullopt;
}

}  // namespace ledgix::editors
