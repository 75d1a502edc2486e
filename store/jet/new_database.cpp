#include "new_database.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <span>
#include <utility>

#include "data_page_writer.h"
#include "definition_writer.h"
#include "header_page.h"
#include "index_page_writer.h"
#include "row_writer.h"
#include "system_tables.h"
#include "usage_map_writer.h"

namespace ledgix::jet {

namespace {

// The values of a row by column position.
std::vector<runtime::Variant> InColumnOrder(const TableDefinition& table, const SystemRow& row) {
    std::vector<runtime::Variant> values(table.columns.size());
    for (const auto& [name, value] : row)
        values[table.FindColumn(name).value()] = value;
    return values;
}

// The indexes in the order of their trees. System tables have one index to a tree.
std::vector<Index*> RealIndexes(TableDefinition& table) {
    std::vector<Index*> indexes;
    for (Index& index : table.indexes)
        indexes.push_back(&index);
    std::sort(indexes.begin(), indexes.end(),
              [](const Index* a, const Index* b) { return a->real_number < b->real_number; });
    return indexes;
}

// Puts the pages of a new file one behind the other: header, free-page map, the definitions of the system tables, then
// maps and index roots table by table, then rows.
class FileMaker {
public:
    FileMaker(Generation generation, runtime::Date created)
        : format_(FormatOf(generation)), tables_(MakeSystemTables(format_, created)) {}

    std::vector<std::uint8_t> Make() {
        AddPage(MakeHeaderPage(format_.generation));
        AddPage(MakeDataPage(format_, kAllocationOwner));
        for (std::size_t i = 0; i < tables_.size(); ++i)
            AddPage({});
        map_page_ = AddPage(MakeDataPage(format_, kUsageMapOwner));
        for (SystemTable& table : tables_)
            PlaceTable(table.definition);
        for (SystemTable& table : tables_)
            WriteRows(table);
        for (const SystemTable& table : tables_)
            WriteDefinition(table.definition);
        WriteFreePageMap();
        return std::move(file_);
    }

private:
    // A page of zeros, or with this content.
    PageNumber AddPage(const std::vector<std::uint8_t>& content) {
        const auto number = static_cast<PageNumber>(file_.size() / format_.page_size);
        file_.insert(file_.end(), content.begin(), content.end());
        file_.resize((number + std::size_t{1}) * format_.page_size);
        return number;
    }

    std::span<std::uint8_t> PageAt(PageNumber number) {
        return std::span(file_).subspan(number * format_.page_size, format_.page_size);
    }

    std::span<std::uint8_t> RowAt(RowId id) { return RowBytes(format_, PageAt(id.page), id.slot); }

    // Appends an empty map to the page of maps, or to a new one when it is full.
    RowId AddMap() {
        const std::vector<std::uint8_t> map = MakeUsageMap(format_);
        std::optional<std::uint8_t> slot = AppendRow(format_, PageAt(map_page_), map);
        if (!slot) {
            StartMapPage();
            slot = AppendRow(format_, PageAt(map_page_), map);
        }
        return {.page = map_page_, .slot = slot.value()};
    }

    void StartMapPage() { map_page_ = AddPage(MakeDataPage(format_, kUsageMapOwner)); }

    // In Jet 3 each index of the catalogue has a page of maps to itself, and what follows begins another one.
    bool MapsAreApart(const TableDefinition& table) const {
        return format_.generation == Generation::kJet3 && table.page == kCatalogPage;
    }

    void PlaceTable(TableDefinition& table) {
        table.owned_map = AddMap();
        table.free_space_map = AddMap();
        for (const std::size_t column : LongColumns(table)) {
            table.columns[column].owned_map = AddMap();
            table.columns[column].free_space_map = AddMap();
        }
        for (Index* index : RealIndexes(table)) {
            if (MapsAreApart(table))
                StartMapPage();
            index->map = AddMap();
            if (MapsAreApart(table))
                index->root = AddRoot(*index);
        }
        if (MapsAreApart(table))
            StartMapPage();
        for (Index* index : RealIndexes(table)) {
            if (index->root == 0)
                index->root = AddRoot(*index);
        }
    }

    PageNumber AddRoot(const Index& index) {
        const PageNumber root = AddPage({});
        Mark(index.map, root);
        return root;
    }

    void Mark(RowId map, PageNumber page) {
        [[maybe_unused]] const bool in_range = SetInUsageMap(RowAt(map), page, true);
        assert(in_range);
    }

    // The rows of a system table fit on one page.
    void WriteRows(SystemTable& table) {
        std::vector<RowId> ids;
        std::vector<std::vector<runtime::Variant>> rows;
        if (!table.rows.empty()) {
            const PageNumber page = AddPage(MakeDataPage(format_, table.definition.page));
            Mark(table.definition.owned_map, page);
            Mark(table.definition.free_space_map, page);
            for (const SystemRow& row : table.rows) {
                rows.push_back(InColumnOrder(table.definition, row));
                const std::vector<std::uint8_t> bytes = EncodeRow(format_, table.definition, rows.back());
                ids.push_back({.page = page, .slot = AppendRow(format_, PageAt(page), bytes).value()});
            }
        }
        table.definition.row_count = static_cast<std::uint32_t>(rows.size());
        for (Index& index : table.definition.indexes)
            WriteIndex(table.definition, rows, ids, index);
    }

    void WriteIndex(const TableDefinition& table, const std::vector<std::vector<runtime::Variant>>& rows,
                    const std::vector<RowId>& ids, Index& index) {
        std::vector<IndexEntry> entries;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            std::vector<runtime::Variant> values;
            for (const IndexColumn& column : index.columns)
                values.push_back(rows[i][table.FindColumnByNumber(column.column_number).value()]);
            entries.push_back({.key = MakeIndexKey(format_, index, values), .row = ids[i]});
        }
        std::sort(entries.begin(), entries.end());
        index.distinct_keys = CountDistinctKeys(entries);
        Overwrite(index.root, MakeIndexLeaf(format_, table.page, entries));
    }

    // The definition of a system table fits on one page.
    void WriteDefinition(const TableDefinition& table) {
        const std::vector<std::uint8_t> definition = EncodeDefinition(format_, table);
        Overwrite(table.page, CutDefinition(format_, definition, {table.page}).front());
    }

    void Overwrite(PageNumber number, const std::vector<std::uint8_t>& content) {
        std::copy(content.begin(), content.end(), PageAt(number).begin());
    }

    // All pages behind the end of the file are free; nothing is in the second map.
    void WriteFreePageMap() {
        std::vector<std::uint8_t> map = MakeUsageMap(format_);
        AppendRow(format_, PageAt(kAllocationPage), map);
        AppendRow(format_, PageAt(kAllocationPage), map);
        FillUsageMap(RowAt({.page = kAllocationPage, .slot = 0}),
                     static_cast<PageNumber>(file_.size() / format_.page_size));
    }

    const Format& format_;
    std::vector<SystemTable> tables_;
    std::vector<std::uint8_t> file_;
    PageNumber map_page_ = 0;
};

}  // namespace

std::vector<std::uint8_t> NewDatabase(Generation generation, runtime::Date created) {
    return FileMaker(generation, created).Make();
}

}  // namespace ledgix::jet
