#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "check_run.h"
#include "raw_definition.h"
#include "row_page.h"
#include "table_definition.h"

namespace ledgix::jet {

// Rules of the memo and OLE values of one table.
class LongValueCheck {
public:
    // Checks and claims the pages of all columns.
    LongValueCheck(CheckRun& run, const RawDefinition& table);

    // What a row holds of a value, and the rows that the data are in. True when all of it is there.
    bool Check(Bytes field, RowId row, const Column& column);

private:
    void ClaimPages(PageNumber table, const RawLongColumn& column);
    bool CheckOneRow(RowId place, std::size_t length, std::uint16_t column);
    bool CheckChain(RowId place, std::size_t length, std::uint16_t column);
    std::optional<Bytes> TakeRow(RowId place, std::uint16_t column, RowPage& page);
    bool Fail(std::string_view code, const std::string& text);

    CheckRun& run_;
    std::map<std::uint16_t, std::vector<PageNumber>> pages_;  // of the columns, by number
    std::string place_;                                       // of the value at hand
};

}  // namespace ledgix::jet
