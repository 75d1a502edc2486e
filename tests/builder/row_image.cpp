#include "row_image.h"

#include <algorithm>
#include <array>
#include <bit>
#include <stdexcept>

#include "text.h"

namespace ledgix::test {

namespace {

using jet::ColumnType;

// The smallest number of jumps that the whole row, jumps included, asks for.
std::size_t JumpCount(std::size_t length_without) {
    std::size_t jumps = 0;
    while ((length_without + jumps - 1) / 256 != jumps)
        ++jumps;
    return jumps;
}

// offsets.back() is the end of the data.
void AppendJumpTable(ByteList& row, const std::vector<std::size_t>& offsets, std::size_t jumps) {
    ByteList table;
    for (std::size_t j = 0; j < jumps; ++j) {
        const auto first =
            std::find_if(offsets.begin(), offsets.end(), [&](std::size_t o) { return o >= 256 * (j + 1); });
        const bool dummy = first == offsets.end();
        table.push_back(static_cast<std::uint8_t>(dummy ? 0xFF : first - offsets.begin()));
    }
    row.insert(row.end(), table.rbegin(), table.rend());
}

void AppendVariableSection(ByteList& row, const jet::Format& format, const RowContent& content, std::size_t mask_size) {
    std::vector<std::size_t> offsets;
    for (const ByteList& value : content.variable) {
        offsets.push_back(row.size());
        Append(row, value);
    }
    offsets.push_back(row.size());
    row.insert(row.end(), content.gap_before_end, 0xEE);
    if (!format.row.has_jump_table) {
        for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset)
            AppendLittle(row, static_cast<std::uint16_t>(*offset));
        AppendLittle(row, static_cast<std::uint16_t>(content.variable.size()));
        return;
    }
    const std::size_t jumps = JumpCount(row.size() + offsets.size() + 1 + mask_size);
    for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset)
        row.push_back(static_cast<std::uint8_t>(*offset));
    AppendJumpTable(row, offsets, jumps);
    row.push_back(static_cast<std::uint8_t>(content.variable.size()));
}

ByteList EncodeGuid(const runtime::Guid& guid) {
    ByteList bytes;
    for (const std::size_t i : std::array<std::size_t, 16>{3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15})
        bytes.push_back(guid.bytes[i]);
    return bytes;
}

ByteList EncodeDecimal(const runtime::Decimal& number) {
    ByteList bytes{static_cast<std::uint8_t>(number.negative ? 0x80 : 0)};
    for (const std::uint32_t word : number.magnitude)
        AppendLittle(bytes, word);
    return bytes;
}

template <typename Number>
ByteList LittleBytes(Number number) {
    ByteList bytes;
    AppendLittle(bytes, number);
    return bytes;
}

}  // namespace

ByteList EncodeRow(const jet::Format& format, const RowContent& content) {
    ByteList row;
    row.push_back(static_cast<std::uint8_t>(content.columns_ever));
    if (format.row.count_size == 2)
        row.push_back(static_cast<std::uint8_t>(content.columns_ever >> 8));
    Append(row, content.fixed);
    ByteList mask((content.columns_ever + 7U) / 8);
    for (std::size_t number = 0; number < content.not_null.size(); ++number)
        mask[number / 8] =
            static_cast<std::uint8_t>(mask[number / 8] | (content.not_null[number] ? 1U << number % 8 : 0));
    if (!content.variable.empty())
        AppendVariableSection(row, format, content, mask.size());
    Append(row, mask);
    return row;
}

ByteList EncodeText(const jet::Format& format, const std::string& text, bool compressed) {
    ByteList bytes;
    if (format.generation == jet::Generation::kJet3) {
        const std::string stored = runtime::ToCodePage1252(text);
        return {stored.begin(), stored.end()};
    }
    const std::u16string units = runtime::ToUtf16(text);
    const bool fits = std::all_of(units.begin(), units.end(), [](char16_t c) { return c >= 1 && c <= 0xFF; });
    if (compressed && fits && units.size() >= 3) {
        bytes = {0xFF, 0xFE};
        for (const char16_t unit : units)
            bytes.push_back(static_cast<std::uint8_t>(unit));
        return bytes;
    }
    for (const char16_t unit : units)
        AppendLittle(bytes, static_cast<std::uint16_t>(unit));
    return bytes;
}

ByteList EncodeValue(const jet::Format& format, const ColumnSpec& column, const runtime::Variant& value) {
    switch (column.type) {
        case ColumnType::kByte:
            return LittleBytes(std::get<std::uint8_t>(value));
        case ColumnType::kInt16:
            return LittleBytes(std::get<std::int16_t>(value));
        case ColumnType::kInt32:
            return LittleBytes(std::get<std::int32_t>(value));
        case ColumnType::kCurrency:
            return LittleBytes(std::get<runtime::Currency>(value).ten_thousandths);
        case ColumnType::kSingle:
            return LittleBytes(std::bit_cast<std::uint32_t>(std::get<float>(value)));
        case ColumnType::kDouble:
            return LittleBytes(std::bit_cast<std::uint64_t>(std::get<double>(value)));
        case ColumnType::kDate:
            return LittleBytes(std::bit_cast<std::uint64_t>(std::get<runtime::Date>(value).days));
        case ColumnType::kText:
            return EncodeText(format, std::get<std::string>(value), column.compressed);
        case ColumnType::kGuid:
            return EncodeGuid(std::get<runtime::Guid>(value));
        case ColumnType::kNumeric:
            return EncodeDecimal(std::get<runtime::Decimal>(value));
        default:
            return std::get<runtime::Binary>(value);
    }
}

}  // namespace ledgix::test
