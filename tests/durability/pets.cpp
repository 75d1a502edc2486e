#include "pets.h"

#include <gtest/gtest.h>

#include "index_cursor.h"
#include "new_database.h"
#include "row_reader.h"
#include "schema_writer.h"
#include "structure_check.h"
#include "table_scan.h"
#include "table_writer.h"

namespace ledgix::test {

namespace {

constexpr runtime::Date kSomeDay{45000};

jet::TableDefinition PetTable(jet::DatabaseFile& file) {
    return file.ReadTableDefinition(file.FindTable("Pet").value().DefinitionPage());
}

jet::RowId FindPet(jet::DatabaseFile& file, const jet::TableDefinition& table, int number) {
    return jet::FindRows(file, table, table.indexes.at(0), {number}).at(0);
}

}  // namespace

std::vector<std::uint8_t> PetDatabase(jet::Generation generation) {
    jet::DatabaseFile file(jet::MakeMemoryFile(jet::NewDatabase(generation, kSomeDay)));
    jet::Transaction change(file);
    const jet::TableDefinition table =
        jet::CreateTable(file, "Pet",
                         {{.name = "Id", .type = jet::ColumnType::kInt32},
                          {.name = "Name", .type = jet::ColumnType::kText, .size = 255}});
    jet::CreateIndex(file, table, {.name = "PrimaryKey", .parts = {{.column = "Id"}}, .primary = true});
    change.Commit();
    std::vector<std::uint8_t> content(file.pager().size());
    file.pager().file().Read(0, content);
    return content;
}

void StorePets(jet::DatabaseFile& file, const Pets& before, const Pets& after) {
    jet::Transaction change(file);
    const jet::TableDefinition table = PetTable(file);
    jet::TableWriter writer(file, table);
    for (const auto& [number, name] : before) {
        if (!after.contains(number))
            writer.Delete(FindPet(file, table, number));
    }
    for (const auto& [number, name] : after) {
        const auto old = before.find(number);
        if (old == before.end())
            writer.Insert({number, name});
        else if (old->second != name)
            writer.Update(FindPet(file, table, number), {{.column = 1, .value = name}});
    }
    change.Commit();
}

Pets LoadPets(jet::DatabaseFile& file) {
    const jet::ReadAccess access(file);
    const jet::TableDefinition table = PetTable(file);
    Pets pets;
    for (jet::TableScan scan(file, table); scan.Next();)
        pets.emplace(std::get<std::int32_t>(scan.Value(0)), std::get<std::string>(scan.Value(1)));
    Pets by_index;
    jet::RowReader reader(file, table);
    for (jet::IndexCursor cursor(file, table, table.indexes.at(0)); cursor.Next();) {
        EXPECT_TRUE(reader.Load(cursor.row()));
        by_index.emplace(std::get<std::int32_t>(reader.Value(0)), std::get<std::string>(reader.Value(1)));
    }
    EXPECT_EQ(by_index, pets);
    EXPECT_EQ(table.row_count, pets.size());
    return pets;
}

std::string Findings(jet::DatabaseFile& file) {
    const jet::ReadAccess access(file);
    std::string text;
    for (const jet::Finding& finding : jet::CheckStructure(file.pager(), jet::Strictness::kOwnFiles))
        text += finding.code + " " + finding.text + "\n";
    return text;
}

}  // namespace ledgix::test
