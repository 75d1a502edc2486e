#include "random_values.h"

#include <algorithm>
#include <string_view>

namespace ledgix::test {

using jet::ColumnType;

runtime::Variant RandomValues::Draw(const ModelColumn& column) {
    if (OneOf(5))
        return runtime::Null{};
    switch (column.type) {
        case ColumnType::kBoolean:
            return OneOf(2);
        case ColumnType::kInt16:
            return static_cast<std::int16_t>(random_());
        case ColumnType::kInt32:
            return static_cast<std::int32_t>(random_() % 100) - 50;
        case ColumnType::kCurrency:
            return runtime::Currency{static_cast<std::int64_t>(random_())};
        case ColumnType::kDouble:
            return Real();
        case ColumnType::kDate:
            return runtime::Date{Real()};
        case ColumnType::kOle: {
            const std::string memo = Memo();
            return runtime::Binary(memo.begin(), memo.end());
        }
        case ColumnType::kMemo:
            return Memo();
        default:
            return Text(column.size);
    }
}

double RandomValues::Real() {
    return static_cast<double>(Below(1U << 26)) / 1024 - 30000;
}

std::string RandomValues::Word(std::size_t characters) {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::string word;
    while (word.size() < characters)
        word += kLetters[Below(kLetters.size())];
    return word;
}

std::string RandomValues::Text(std::size_t most) {
    constexpr const char* kPieces[]{"a", "B", "e", "i", "o", "z", "9", " ", "\u00E9", "\u00DC", "\u00DF", "'", "-"};
    std::string text;
    for (std::size_t i = Below((OneOf(2) ? std::min<std::size_t>(most, 10) : most) + 1); i > 0; --i)
        text += kPieces[Below(std::size(kPieces))];
    return text;
}

// Inside the row, in one row of its own, or in a chain of them; with a character that takes two bytes now and then.
std::string RandomValues::Memo() {
    constexpr std::size_t kLengths[]{30, 30, 70, 70, 1500, 1500, 12000};
    std::string memo = Word(Below(kLengths[Below(std::size(kLengths))]));
    if (OneOf(4))
        memo += "\u20AC";
    return memo;
}

}  // namespace ledgix::test
