#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "column_spec.h"
#include "jet_format.h"
#include "variant.h"

namespace ledgix::test {

using ByteList = std::vector<std::uint8_t>;

// What a row holds of each column of a table at the time when it is written.
struct RowContent {
    std::uint16_t columns_ever = 0;
    ByteList fixed;                  // the fixed part
    std::vector<ByteList> variable;  // by variable index
    std::vector<bool> not_null;      // by column number
    std::size_t gap_before_end = 0;  // unused bytes behind the variable data
};

// Lays out a row; the Jet 3 form has a jump table when it is longer than 256 bytes.
ByteList EncodeRow(const jet::Format& format, const RowContent& content);

// The bytes of a value that is neither boolean, null nor long.
ByteList EncodeValue(const jet::Format& format, const ColumnSpec& column, const runtime::Variant& value);

// Text as memos and text columns store it.
ByteList EncodeText(const jet::Format& format, const std::string& text, bool compressed);

template <typename Number>
void AppendLittle(ByteList& bytes, Number number) {
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(number) >> (8 * i)));
}

inline void Append(ByteList& bytes, const ByteList& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace ledgix::test
