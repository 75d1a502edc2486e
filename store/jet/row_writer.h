#pragma once

#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// Puts the bytes of a row together, in the present shape of its table.
class RowEncoder {
public:
    // Both must outlive the encoder.
    RowEncoder(const Format& format, const TableDefinition& table);

    // The value of a column, of its own type or Null; a boolean is never null, Null is false. Each column once. Errors:
    // those of EncodeValue, 3421 for a long value.
    void Put(const Column& column, const runtime::Variant& value);

    // The same for the bytes of a value that is not null: those of another row, or the field of a long value. Of a
    // boolean that is true: none.
    void PutStored(const Column& column, Bytes stored);

    // Error 3047 when the row is longer than rows can be. Ends the use of the encoder.
    std::vector<std::uint8_t> Finish();

private:
    void AppendVariableSection();
    void AppendJumps(const std::vector<std::size_t>& offsets);

    const Format& format_;
    const TableDefinition& table_;
    std::size_t fixed_size_;
    std::vector<std::uint8_t> row_;  // count and fixed part, then all of it
    std::vector<std::vector<std::uint8_t>> variable_;
    std::vector<std::uint8_t> mask_;
    std::vector<std::uint8_t> stored_;  // of the value at hand
};

// The bytes of a row of a table without long values, or with Null in them. values[i] is that of table.columns[i].
std::vector<std::uint8_t> EncodeRow(const Format& format, const TableDefinition& table,
                                    const std::vector<runtime::Variant>& values);

}  // namespace ledgix::jet
