#pragma once

#include <array>
#include <optional>

#include "cls_profile.h"
#include "cls_property.h"
#include "tax_module.h"
#include "yearly_records.h"

namespace ledgix::model {

// A property year by year from its purchase on.
struct Outlook {
    YearlyRecords records{};
    // After-tax cash received so far plus the equity in the property, as a multiple of the deposit, to 2 decimals; none
    // without a deposit. Of year 0 it is the equity at the purchase, which says nothing of a return: reports leave it
    // out.
    std::array<std::optional<double>, kLastReportYear + 1> returns{};
};

// Starts from zeroed records and leaves the result in the property's own, too. Income and expenses grow by inflation
// and are rounded to whole dollars each year, depreciation is by declining balance, the owner's salary is not inflated.
// Errors: those of MortgageCost and of `tax`, 6 when a value is beyond a double.
Outlook ComputeOutlook(clsProperty& property, const clsProfile& profile, const IncomeTaxFunction& tax);

}  // namespace ledgix::model
