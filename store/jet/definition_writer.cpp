#include "definition_writer.h"

#include <algorithm>
#include <cassert>
#include <span>
#include <string>
#include <utility>

#include "byte_order.h"
#include "damage_error.h"
#include "definition_parts.h"
#include "text.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;

// The positions of memo and OLE columns as their maps are listed: by name.
std::vector<std::size_t> LongColumnsByName(const TableDefinition& table) {
    std::vector<std::size_t> columns = LongColumns(table);
    std::sort(columns.begin(), columns.end(), [&](std::size_t a, std::size_t b) {
        return runtime::CompareIgnoringCase(table.columns[a].name, table.columns[b].name) < 0;
    });
    return columns;
}

// One of the logical indexes of each real one, by real number.
std::vector<const Index*> RealIndexes(const TableDefinition& table) {
    std::vector<const Index*> real;
    for (const Index& index : table.indexes) {
        if (index.real_number >= table.indexes.size())
            RaiseDamage("index '" + index.name + "' has an impossible number");
        real.resize(std::max<std::size_t>(real.size(), index.real_number + std::size_t{1}));
        real[index.real_number] = &index;
    }
    if (std::find(real.begin(), real.end(), nullptr) != real.end())
        RaiseDamage("the table definition in " + DescribePage(table.page) + " has a tree without an index");
    return real;
}

// The head of a page of a definition; `used` counts it too.
void WriteHead(const Format& format, std::size_t used, PageNumber next, ByteList& page) {
    page[0] = static_cast<std::uint8_t>(PageKind::kDefinition);
    page[1] = kPageInUse;
    const std::size_t free = page.size() - std::min(page.size(), used + kDefinitionPageHeader);
    const bool jet3 = format.generation == Generation::kJet3;
    StoreLittle(page, kDefinitionFreeBytes, jet3 ? kDefinitionMarkJet3 : static_cast<std::uint16_t>(free));
    StoreLittle(page, kDefinitionNextPage, next);
}

}  // namespace

std::vector<std::uint8_t> EncodeDefinition(const Format& format, const TableDefinition& table) {
    DefinitionParts parts;
    parts.header = MakeDefinitionHeader(format, table);
    for (const Index* index : RealIndexes(table)) {
        parts.statistics.push_back(MakeStatistics(format, *index));
        parts.index_blocks.push_back(MakeIndexBlock(format, *index));
    }
    for (const Column& column : table.columns) {
        parts.columns.push_back(MakeColumnRecord(format, column));
        parts.column_names.push_back(MakeStoredName(format, column.name));
    }
    for (const Index& index : table.indexes) {
        parts.logical_indexes.push_back(MakeLogicalIndex(format, index));
        parts.index_names.push_back(MakeStoredName(format, index.name));
    }
    for (const std::size_t column : LongColumnsByName(table))
        parts.long_column_maps.push_back(MakeLongColumnMaps(table.columns[column]));
    return JoinDefinition(format, parts);
}

std::size_t DefinitionPageCount(const Format& format, std::size_t size) {
    const std::size_t room = format.page_size - kDefinitionPageHeader;
    return std::max<std::size_t>(1, (size - kDefinitionPageHeader + room - 1) / room);
}

std::vector<std::vector<std::uint8_t>> CutDefinition(const Format& format, Bytes definition,
                                                     const std::vector<PageNumber>& numbers) {
    assert(numbers.size() == DefinitionPageCount(format, definition.size()));
    // The head of the first page counts as part of the definition; behind it all pages are alike.
    Bytes rest = definition.subspan(kDefinitionPageHeader);
    std::vector<ByteList> pages;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        ByteList page(format.page_size);
        const std::size_t size = std::min(rest.size(), page.size() - kDefinitionPageHeader);
        std::copy_n(rest.begin(), size, page.begin() + kDefinitionPageHeader);
        rest = rest.subspan(size);
        WriteHead(format, kDefinitionPageHeader + size, i + 1 < numbers.size() ? numbers[i + 1] : 0, page);
        pages.push_back(std::move(page));
    }
    return pages;
}

}  // namespace ledgix::jet
