#pragma once

#include <cstdint>
#include <vector>

#include "data_page.h"
#include "jet_types.h"
#include "pager.h"

namespace ledgix::jet {

// What a row holds of a memo or OLE value.
struct LongValue {
    enum class Kind { kInside, kOneRow, kChain };

    Kind kind = Kind::kInside;
    std::uint32_t length = 0;  // bytes of data
    RowId place;               // of the data, or of the first piece
    Bytes inside;              // the data, when they are in the row
};

// Error 3049 when the field is no long value; `row` is for the error text. An empty field is an empty value.
LongValue ParseLongValue(Bytes field, RowId row);

// Fetches the data of long values.
class LongValueReader {
public:
    explicit LongValueReader(Pager& pager) : pager_(pager) {}

    // All data of the value, good until the next call. Error 3049 when they are not there in full or run in a circle.
    Bytes Read(const LongValue& value);

private:
    Bytes ReadOneRow(RowId place, std::size_t length);
    Bytes ReadChain(RowId place, std::size_t length);

    Pager& pager_;
    DataPage page_;
    std::vector<std::uint8_t> joined_;
};

}  // namespace ledgix::jet
