#include "read_everything.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "database_file.h"
#include "index_cursor.h"
#include "runtime_error.h"
#include "table_scan.h"

namespace ledgix::test {

namespace {

std::size_t ContentSize(const runtime::Variant& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        return text->size();
    if (const auto* bytes = std::get_if<runtime::Binary>(&value))
        return bytes->size();
    return 0;
}

// Runs one step; an error of the engine ends it and is counted.
template <typename Step>
void Try(Everything& everything, Step step) {
    try {
        step();
    } catch (const runtime::RuntimeError& error) {
        if (error.source() != runtime::kEngineSource)
            throw;
        ++everything.errors;
    }
}

void ReadTable(jet::DatabaseFile& file, jet::PageNumber page, Everything& everything) {
    const jet::TableDefinition table = file.ReadTableDefinition(page);
    ++everything.tables;
    std::size_t size = 0;
    jet::TableScan scan(file, table);
    while (scan.Next()) {
        ++everything.rows;
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            size += ContentSize(scan.Value(i));
            everything.longest_table = std::max(everything.longest_table, size);
        }
    }
}

void WalkIndexes(jet::DatabaseFile& file, jet::PageNumber page, Everything& everything) {
    const jet::TableDefinition table = file.ReadTableDefinition(page);
    for (const jet::Index& index : table.indexes) {
        Try(everything, [&] {
            jet::IndexCursor cursor(file, table, index);
            while (cursor.Next())
                ++everything.entries;
        });
    }
}

}  // namespace

Everything ReadEverything(std::vector<std::uint8_t> content) {
    Everything everything;
    Try(everything, [&] {
        jet::DatabaseFile file(jet::MakeMemoryFile(std::move(content)));
        everything.opened = true;
        for (const jet::CatalogEntry& entry : file.ReadCatalog()) {
            if (!entry.IsTable())
                continue;
            Try(everything, [&] { ReadTable(file, entry.DefinitionPage(), everything); });
            Try(everything, [&] { WalkIndexes(file, entry.DefinitionPage(), everything); });
        }
    });
    return everything;
}

}  // namespace ledgix::test
