#include "tax_rate_rows.h"

#include "conversions.h"

namespace ledgix::editors {

namespace {

std::string NumberText(const std::string& text) {
    return runtime::IsNumeric(text) ? text : "0";
}

}  // namespace

bool TaxRateRows::Bounded(std::size_t row) const {
    return runtime::LeadingNumber(NumberText(Row(row).upper)) != 0;
}

std::string TaxRateRows::Label(std::size_t row) const {
    if (row == 0)
        return "Income from 0 to";
    std::string label = "Income from ";
    label += NumberText(Row(row - 1).upper);
    label += Bounded(row) ? " to " : " and up ";
    return label;
}

bool TaxRateRows::Enabled(std::size_t row) const {
    for (std::size_t above = 0; above < row; ++above)
        if (!Bounded(above))
            return false;
    return true;
}

std::vector<std::string> TaxRateRows::SaveStatements() const {
    std::vector<std::string> statements{"delete from tax_rates"};
    for (std::size_t row = 0; row < kCount && Enabled(row); ++row) {
        std::string insert = "insert into tax_rates (upper,rate) values (";
        insert += NumberText(rows_[row].upper);
        insert += ",";
        insert += NumberText(rows_[row].rate);
        insert += ")";
        statements.push_back(insert);
    }
    return statements;
}

}  // namespace ledgix::editors
