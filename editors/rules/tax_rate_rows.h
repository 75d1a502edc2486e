#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ledgix::editors {

// A bracket as its two fields show it: whole dollars, 0 for the top bracket, and percent. Decimal points whatever the
// locale.
struct TaxRateRow {
    std::string upper = "0";
    std::string rate = "0";
};

// The ten rows in which the income tax brackets are edited. Rows are counted from 0; std::out_of_range beyond 9.
class TaxRateRows {
public:
    static constexpr std::size_t kCount = 10;

    const TaxRateRow& Row(std::size_t row) const { return rows_.at(row); }
    // A text that is no number, such as one still being typed, counts as 0.
    void SetUpper(std::size_t row, std::string_view text) { rows_.at(row).upper = text; }
    void SetRate(std::size_t row, std::string_view text) { rows_.at(row).rate = text; }

    // "Income from 38000 to ", from the bound above; "Income from 60000 and up " in a row without a bound.
    std::string Label(std::size_t row) const;

    // False below the top bracket. Such rows keep their texts but are not saved.
    bool Enabled(std::size_t row) const;

    // What replaces the table by the enabled rows, in order.
    std::vector<std::string> SaveStatements() const;

private:
    bool Bounded(std::size_t row) const;

    std::array<TaxRateRow, kCount> rows_;
};

}  // namespace ledgix::editors
