#include "pet_definition.h"

#include "column_layout.h"

namespace ledgix::test {

using jet::ColumnType;

jet::Column ColumnOf(const std::string& name, ColumnType type) {
    jet::Column column;
    column.name = name;
    column.type = type;
    return column;
}

jet::Column TextColumn(const std::string& name, std::size_t characters, jet::Generation generation, bool compressed) {
    jet::Column column = ColumnOf(name, ColumnType::kText);
    column.length = static_cast<std::uint16_t>(characters * jet::FormatOf(generation).character_size);
    column.compressed = compressed;
    return column;
}

jet::TableDefinition MakePetDefinition(jet::Generation generation) {
    const jet::Format& format = jet::FormatOf(generation);
    const bool jet4 = generation == jet::Generation::kJet4;
    jet::TableDefinition table;
    table.page = jet4 ? 16 : 20;
    table.row_count = 2;
    table.owned_map = {.page = table.page + 1, .slot = 0};
    table.free_space_map = {.page = table.page + 1, .slot = 1};
    jet::AddColumn(format, table, ColumnOf("Id", ColumnType::kInt32));
    jet::AddColumn(format, table, TextColumn("Nick", 20, generation, jet4));
    jet::AddColumn(format, table, ColumnOf("Tame", ColumnType::kBoolean));
    jet::AddColumn(format, table, ColumnOf("Born", ColumnType::kDate));
    jet::Index key;
    key.name = "PrimaryKey";
    key.columns = {{.column_number = 0}};
    key.unique = true;
    key.primary = true;
    key.required = true;
    key.root = table.page + 2;
    key.map = {.page = table.page + 1, .slot = 2};
    key.distinct_keys = 2;
    table.indexes.push_back(key);
    return table;
}

}  // namespace ledgix::test
