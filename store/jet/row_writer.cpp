#include "row_writer.h"

#include <algorithm>
#include <cassert>
#include <utility>
#include <variant>

#include "column_layout.h"
#include "runtime_error.h"
#include "value_codec.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;

constexpr std::size_t kJump = 256;            // Jet 3 keeps the multiples of this apart from its offsets
constexpr std::uint8_t kUnneededJump = 0xFF;  // stands for a multiple that no offset reaches

void Append(ByteList& bytes, Bytes more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// A count or offset in the size that the generation has for it.
void AppendSmall(ByteList& bytes, std::size_t number, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

}  // namespace

RowEncoder::RowEncoder(const Format& format, const TableDefinition& table)
    : format_(format),
      table_(table),
      fixed_size_(FixedPartSize(table)),
      variable_(table.variable_columns_ever),
      mask_((table.columns_ever + 7U) / 8) {
    constexpr std::size_t kUsualRow = 512;
    row_.reserve(kUsualRow);
    AppendSmall(row_, table_.columns_ever, format_.row.count_size);
    row_.resize(row_.size() + fixed_size_);
}

void RowEncoder::Put(const Column& column, const runtime::Variant& value) {
    if (runtime::IsNull(value))
        return;
    if (column.type == ColumnType::kBoolean) {
        const bool* truth = std::get_if<bool>(&value);
        if (truth == nullptr)
            RaiseConversion(column);
        if (*truth)
            PutStored(column, {});
        return;
    }
    if (IsLongValue(column.type))
        RaiseConversion(column);
    EncodeValue(format_, column, value, stored_);
    PutStored(column, stored_);
}

void RowEncoder::PutStored(const Column& column, Bytes stored) {
    if (column.type == ColumnType::kBoolean) {
        // Its bit is all that there is.
    } else if (!column.fixed) {
        variable_[column.variable_index].assign(stored.begin(), stored.end());
    } else if (stored.size() == column.length) {
        std::copy(stored.begin(), stored.end(),
                  row_.begin() + static_cast<std::ptrdiff_t>(format_.row.count_size + column.fixed_offset));
    } else {
        RaiseConversion(column);
    }
    std::uint8_t& mask = mask_[column.number / 8U];
    mask = static_cast<std::uint8_t>(mask | 1U << (column.number & 7U));
}

std::vector<std::uint8_t> RowEncoder::Finish() {
    if (!variable_.empty())
        AppendVariableSection();
    row_.resize(std::max(row_.size(), kShortestRow - std::min(kShortestRow, mask_.size())));
    Append(row_, mask_);
    if (row_.size() > format_.row.longest)
        runtime::RaiseEngineError(runtime::ErrorNumber::kRecordTooLarge, "Record is too large.");
    return std::move(row_);
}

void RowEncoder::AppendVariableSection() {
    std::vector<std::size_t> offsets;
    offsets.reserve(variable_.size() + 1);
    for (const ByteList& value : variable_) {
        offsets.push_back(row_.size());
        Append(row_, value);
    }
    offsets.push_back(row_.size());
    for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset)
        AppendSmall(row_, *offset, format_.row.offset_size);
    if (format_.row.has_jump_table)
        AppendJumps(offsets);
    AppendSmall(row_, variable_.size(), format_.row.offset_size);
}

// A jump for each multiple of 256 below the length of the whole row, jumps included: the first offset that is not
// below the multiple. They stand in descending order, like the offsets.
void RowEncoder::AppendJumps(const std::vector<std::size_t>& offsets) {
    const std::size_t length = row_.size() + format_.row.offset_size + mask_.size();
    std::size_t count = 0;
    while ((length + count - 1) / kJump != count)
        ++count;
    for (std::size_t multiple = count * kJump; multiple > 0; multiple -= kJump) {
        const auto first = std::lower_bound(offsets.begin(), offsets.end(), multiple);
        row_.push_back(first == offsets.end() ? kUnneededJump : static_cast<std::uint8_t>(first - offsets.begin()));
    }
}

std::vector<std::uint8_t> EncodeRow(const Format& format, const TableDefinition& table,
                                    const std::vector<runtime::Variant>& values) {
    assert(values.size() == table.columns.size());
    RowEncoder encoder(format, table);
    for (std::size_t i = 0; i < values.size(); ++i)
        encoder.Put(table.columns[i], values[i]);
    return encoder.Finish();
}

}  // namespace ledgix::jet
