#include "long_value_check.h"

#include <algorithm>

#include "byte_order.h"
#include "damage_error.h"
#include "row_page_claims.h"

namespace ledgix::jet {

LongValueCheck::LongValueCheck(CheckRun& run, const RawDefinition& table) : run_(run) {
    for (const RawLongColumn& column : table.long_columns)
        ClaimPages(table.page, column);
}

void LongValueCheck::ClaimPages(PageNumber table, const RawLongColumn& column) {
    pages_[column.column_number] =
        ClaimRowPages(run_, {.name = "the long values of column " + std::to_string(column.column_number) +
                                     " of the table in " + DescribePage(table),
                             .owned_map = column.owned,
                             .free_space_map = column.free_space,
                             .needs_free_space_map = false,
                             .use = PageUse::kLongValues,
                             .table = table,
                             .owner = kLongValueOwner,
                             .code_of_owner = "L1"});
}

bool LongValueCheck::Check(Bytes field, RowId row, const Column& column) {
    place_ = Describe(row) + ", column '" + column.name + "': ";
    if (field.empty())
        return true;
    if (field.size() < kLongValueHeader)
        return Fail("L2", "its long value is cut off");
    const std::uint32_t kind = LoadU32(field, 0) & kLongValueKind;
    const std::size_t length = LoadU32(field, 0) & kLongValueLength;
    const RowId place = LoadRowPointer(field, kLongValuePointer);
    switch (kind) {
        case kLongValueInside:
            return length == field.size() - kLongValueHeader ||
                   Fail("L2", "its long value has " + std::to_string(field.size() - kLongValueHeader) +
                                  " bytes, and it says " + std::to_string(length));
        case kLongValueOneRow:
            return CheckOneRow(place, length, column.number);
        case kLongValueChain:
            return CheckChain(place, length, column.number);
        default:
            return Fail("L2", "its long value is of an unknown kind");
    }
}

bool LongValueCheck::CheckOneRow(RowId place, std::size_t length, std::uint16_t column) {
    RowPage page;
    const std::optional<Bytes> row = TakeRow(place, column, page);
    if (!row)
        return false;
    return row->size() == length || Fail("L2", "its long value has " + std::to_string(row->size()) +
                                                   " bytes, and it says " + std::to_string(length));
}

// A row is taken once in a file, so this comes to an end.
bool LongValueCheck::CheckChain(RowId place, std::size_t length, std::uint16_t column) {
    RowPage page;
    std::size_t found = 0;
    for (RowId next = place; next.page != 0;) {
        const std::optional<Bytes> row = TakeRow(next, column, page);
        if (!row)
            return false;
        if (row->size() < kRowPointerSize)
            return Fail("L2", Describe(next) + " is too short for a piece of it");
        found += row->size() - kRowPointerSize;
        next = LoadRowPointer(*row, 0);
    }
    return found == length || Fail("L2", "the pieces of its long value have " + std::to_string(found) +
                                             " bytes, and it says " + std::to_string(length));
}

std::optional<Bytes> LongValueCheck::TakeRow(RowId place, std::uint16_t column, RowPage& page) {
    const std::vector<PageNumber>& pages = pages_[column];
    if (!std::binary_search(pages.begin(), pages.end(), place.page)) {
        Fail("L1", "its long value is in " + Describe(place) + ", and that page is not the column's");
        return std::nullopt;
    }
    page = RowPage(run_.pager, place.page);
    const bool is_there = place.slot < page.slot_count() && page.flags(place.slot) == 0;
    const std::optional<Bytes> row = is_there ? page.row(place.slot) : std::nullopt;
    if (!row) {
        Fail("L2", "its long value is in " + Describe(place) + ", which is not there");
        return std::nullopt;
    }
    if (!run_.used_long_rows.insert(RowNumber(place)).second) {
        Fail("L2", "its long value is in " + Describe(place) + ", which belongs to another one");
        return std::nullopt;
    }
    return row;
}

bool LongValueCheck::Fail(std::string_view code, const std::string& text) {
    run_.findings.Add(code, place_ + text);
    return false;
}

}  // namespace ledgix::jet
