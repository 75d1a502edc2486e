#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "check_run.h"
#include "long_value_check.h"
#include "table_definition.h"

namespace ledgix::jet {

// Rules of one encoded row, found out from its bytes.
class RowCheck {
public:
    // All must outlive it.
    RowCheck(CheckRun& run, const TableDefinition& table, LongValueCheck& long_values);

    // True when the row can be decoded.
    bool Check(Bytes row, RowId place);

private:
    struct Parts;

    bool FindParts(Parts& parts);
    bool FindVariablePart(Parts& parts) const;
    bool CheckFixedPart(const Parts& parts);
    bool CheckValue(const Parts& parts, const Column& column);
    bool CheckStored(const Column& column, Bytes stored);
    bool IsSoundText(const Column& column, Bytes stored) const;
    bool Fail(std::string_view code, const std::string& text);

    CheckRun& run_;
    const TableDefinition& table_;
    LongValueCheck& long_values_;
    std::uint32_t first_variable_column_;
    Bytes row_;
    RowId place_;
};

}  // namespace ledgix::jet
