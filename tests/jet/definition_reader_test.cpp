#include "definition_reader.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "byte_order.h"
#include "database_builder.h"
#include "hex.h"
#include "jet_test.h"
#include "pet_table.h"

namespace ledgix::test {

namespace {

using jet::ColumnType;
using jet::Generation;
using jet::TableDefinition;

class Definition : public testing::TestWithParam<Generation> {
protected:
    bool IsJet4() const { return GetParam() == Generation::kJet4; }

    // Reads what stands on `page` of the file so far.
    TableDefinition Read(jet::PageNumber page) {
        jet::Pager pager(jet::MakeMemoryFile(builder_.file().Finish()), builder_.file().format());
        return jet::ReadDefinition(pager, page);
    }

    // Puts the bytes on a page of their own and reads them as a definition.
    TableDefinition ReadBytes(const ByteList& bytes) {
        const jet::PageNumber page = builder_.file().Allocate();
        std::copy(bytes.begin(), bytes.end(), builder_.file().page(page).begin());
        return Read(page);
    }

    ByteList Pet() const { return Hex(IsJet4() ? kPetDefinitionJet4 : kPetDefinitionJet3); }

    int ErrorWithPet(std::size_t at, const ByteList& bytes) {
        ByteList pet = Pet();
        std::copy(bytes.begin(), bytes.end(), pet.begin() + static_cast<std::ptrdiff_t>(at));
        return ErrorOf([&] { ReadBytes(pet); });
    }

    // The offset of a field in the record of a column of Pet.
    std::size_t InColumn(std::size_t column, std::size_t field) const {
        return layout().statistics + layout().statistics_size + column * format().column.size + field;
    }

    const jet::Format& format() const { return jet::FormatOf(GetParam()); }
    const jet::DefinitionLayout& layout() const { return format().definition; }

    DatabaseBuilder builder_{GetParam()};
};

TEST_P(Definition, TellsTheColumnsOfATableMadeByJet) {
    const TableDefinition table = ReadBytes(Pet());
    ASSERT_EQ(table.columns.size(), 4U);
    const auto& [id, nick, tame, born] =
        std::tie(table.columns[0], table.columns[1], table.columns[2], table.columns[3]);
    EXPECT_EQ(id.name, "Id");
    EXPECT_EQ(id.type, ColumnType::kInt32);
    EXPECT_TRUE(id.fixed);
    EXPECT_EQ(nick.name, "Nick");
    EXPECT_EQ(nick.type, ColumnType::kText);
    EXPECT_FALSE(nick.fixed);
    EXPECT_EQ(nick.Characters(), 20U);
    EXPECT_EQ(nick.compressed, IsJet4());
    EXPECT_EQ(tame.type, ColumnType::kBoolean);
    EXPECT_EQ(born.type, ColumnType::kDate);
    EXPECT_EQ(born.fixed_offset, 4);
    EXPECT_EQ(born.number, 3);
    EXPECT_FALSE(table.system);
    EXPECT_EQ(table.row_count, 2U);
    EXPECT_EQ(table.columns_ever, 4);
    EXPECT_EQ(table.variable_columns_ever, 1);
    const jet::PageNumber map_page = IsJet4() ? 17 : 21;
    EXPECT_EQ(table.owned_map, (jet::RowId{map_page, 0}));
    EXPECT_EQ(table.free_space_map, (jet::RowId{map_page, 1}));
}

TEST_P(Definition, TellsTheIndexOfATableMadeByJet) {
    const TableDefinition table = ReadBytes(Pet());
    ASSERT_EQ(table.indexes.size(), 1U);
    const jet::Index& index = table.indexes[0];
    EXPECT_EQ(index.name, "PrimaryKey");
    EXPECT_EQ(index.columns, (std::vector<jet::IndexColumn>{{.column_number = 0, .ascending = true}}));
    EXPECT_TRUE(index.unique);
    EXPECT_TRUE(index.primary);
    EXPECT_TRUE(index.required);
    EXPECT_FALSE(index.ignore_nulls);
    EXPECT_FALSE(index.is_relation);
    EXPECT_EQ(index.distinct_keys, 2U);
    EXPECT_EQ(index.root, IsJet4() ? 18U : 22U);
    EXPECT_EQ(index.map, (jet::RowId{IsJet4() ? 17U : 21U, 2}));
    EXPECT_EQ(table.PrimaryKey(), &index);
    EXPECT_EQ(table.FindIndex("primarykey"), &index);
}

TEST_P(Definition, FromOurBuilderIsTheSameAsFromJet) {
    const jet::PageNumber page = IsJet4() ? 16 : 20;
    builder_.SkipTo(page);
    TableBuilder& table =
        builder_.AddTable("Pet", {{.name = "Id"},
                                  {.name = "Nick", .type = ColumnType::kText, .characters = 20, .compressed = IsJet4()},
                                  {.name = "Tame", .type = ColumnType::kBoolean},
                                  {.name = "Born", .type = ColumnType::kDate}});
    table.AddIndex({.name = "PrimaryKey", .column = "Id", .primary = true});
    EXPECT_EQ(table.Encode({1, "Rex", true, runtime::Date{36526.5}}), Hex(IsJet4() ? kRexJet4 : kRexJet3));
    EXPECT_EQ(table.Encode({-2, "Al", false, runtime::Null{}}), Hex(IsJet4() ? kAlJet4 : kAlJet3));
    table.AddRow({1, "Rex", true, runtime::Date{36526.5}});
    table.AddRow({-2, "Al", false, runtime::Null{}});
    builder_.Finish();
    const auto built = builder_.file().page(page).first(Pet().size());
    EXPECT_EQ(ByteList(built.begin(), built.end()), Pet());
}

TEST_P(Definition, MayGoOnOverSeveralPages) {
    std::vector<ColumnSpec> columns;
    for (int i = 0; i < 200; ++i)
        columns.push_back({.name = "A column with a name of some length " + std::to_string(i)});
    const jet::PageNumber page = builder_.AddTable("Wide", columns).page();
    builder_.Finish();
    const TableDefinition table = Read(page);
    ASSERT_EQ(table.columns.size(), 200U);
    for (std::size_t i = 0; i < columns.size(); ++i)
        EXPECT_EQ(table.columns[i].name, columns[i].name);
}

TEST_P(Definition, KeepsTheNumbersOfColumnsWhenOthersAreDropped) {
    TableBuilder& builder = builder_.AddTable("Changed", {{.name = "A"}, {.name = "B"}, {.name = "C"}});
    builder.DropColumn("B");
    builder.AddColumn({.name = "D"});
    builder_.Finish();
    const TableDefinition table = Read(builder.page());
    ASSERT_EQ(table.columns.size(), 3U);
    EXPECT_EQ(table.columns[1].name, "C");
    EXPECT_EQ(table.columns[1].number, 2);
    EXPECT_EQ(table.columns[1].fixed_offset, 8);
    EXPECT_EQ(table.columns_ever, 4);
    EXPECT_EQ(table.FindColumn("d"), 2U);
    EXPECT_EQ(table.FindColumn("B"), std::nullopt);
    EXPECT_EQ(table.FindColumnByNumber(2), 1U);
    EXPECT_EQ(table.FindColumnByNumber(1), std::nullopt);
}

TEST_P(Definition, SortsColumnsByOrdinalAndKeepsTheRestInRecordOrder) {
    ByteList pet = Pet();
    pet[InColumn(0, format().column.ordinal)] = 7;
    pet[InColumn(1, format().column.ordinal)] = 3;
    const TableDefinition table = ReadBytes(pet);
    std::string names;
    for (const jet::Column& column : table.columns)
        names += column.name + " ";
    EXPECT_EQ(names, "Tame Nick Born Id ");
}

TEST_P(Definition, NamesTheMapsOfLongColumns) {
    TableBuilder& builder = builder_.AddTable("Long", {{.name = "A"}, {.name = "B", .type = ColumnType::kMemo}});
    builder_.Finish();
    const TableDefinition table = Read(builder.page());
    EXPECT_EQ(table.columns[1].owned_map.slot, 2);
    EXPECT_EQ(table.columns[1].owned_map.page, table.owned_map.page);
    EXPECT_EQ(table.columns[1].free_space_map.slot, 3);
}

TEST_P(Definition, OnlyTheFlagDecidesWhetherAColumnIsFixed) {
    TableBuilder& builder = builder_.AddTable("Loose", {{.name = "A"}, {.name = "B", .stored_variable = true}});
    builder_.Finish();
    const TableDefinition table = Read(builder.page());
    EXPECT_TRUE(table.columns[0].fixed);
    EXPECT_FALSE(table.columns[1].fixed);
    EXPECT_EQ(table.columns[1].type, ColumnType::kInt32);
}

TEST_P(Definition, TellsTheSideOfARelation) {
    ByteList pet = Pet();
    const jet::LogicalIndexLayout& layout = format().logical_index;
    const std::size_t record = Pet().size() - 2 - (IsJet4() ? 22 : 11) - layout.size;
    pet[record + layout.type] = 2;
    pet[record + layout.relation_side] = 1;
    pet[record + layout.relation_table] = 99;
    pet[record + layout.relation_index] = 5;
    pet[record + layout.cascade_deletes] = 1;
    const TableDefinition table = ReadBytes(pet);
    const jet::Index& index = table.indexes.at(0);
    EXPECT_TRUE(index.is_relation);
    EXPECT_FALSE(index.primary);
    ASSERT_TRUE(index.relation);
    EXPECT_TRUE(index.relation->referenced_side);
    EXPECT_EQ(index.relation->other_table, 99U);
    EXPECT_EQ(index.relation->other_index & 0xFF, 5U);
    EXPECT_FALSE(index.relation->cascades_updates);
    EXPECT_TRUE(index.relation->cascades_deletes);
}

TEST_P(Definition, OnAPageOfAnotherKindIsDamage) {
    EXPECT_EQ(ErrorOf([&] { Read(1); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { Read(100000); }), kDamaged);
}

TEST_P(Definition, WithAnImpossibleLengthIsDamage) {
    EXPECT_EQ(ErrorWithPet(layout().length, {10, 0, 0, 0}), kDamaged);
    EXPECT_EQ(ErrorWithPet(layout().length, {0xFF, 0xFF, 0xFF, 0x7F}), kDamaged);
    EXPECT_EQ(ErrorWithPet(layout().length, {0xFF, 0xFF, 0x00, 0x00}), kDamaged) << "longer than its page";
    EXPECT_EQ(ErrorWithPet(layout().length, {0xA0, 0x00, 0x00, 0x00}), kDamaged) << "cut off within";
}

TEST_P(Definition, WhosePagesRunInACircleIsDamage) {
    const jet::PageNumber first = builder_.file().Allocate();
    const jet::PageNumber second = builder_.file().Allocate();
    builder_.SkipTo(40);
    ByteList pet = Pet();
    jet::StoreLittle(pet, layout().length, std::uint32_t{60000});
    for (const auto& [page, next] : {std::pair{first, second}, std::pair{second, first}}) {
        jet::StoreLittle(pet, jet::kDefinitionNextPage, next);
        std::copy(pet.begin(), pet.end(), builder_.file().page(page).begin());
    }
    try {
        Read(first);
        FAIL();
    } catch (const runtime::RuntimeError& error) {
        EXPECT_NE(error.description().find("circle"), std::string::npos) << error.description();
    }
}

TEST_P(Definition, WithForgedCountsIsDamage) {
    EXPECT_EQ(ErrorWithPet(layout().column_count, {0xFF, 0xFF}), kDamaged);
    EXPECT_EQ(ErrorWithPet(layout().column_count, {5, 0}), kDamaged) << "more than ever";
    EXPECT_EQ(ErrorWithPet(layout().columns_ever, {3, 0}), kDamaged);
    EXPECT_EQ(ErrorWithPet(layout().variable_columns_ever, {0, 0}), kDamaged);
    EXPECT_EQ(ErrorWithPet(layout().real_index_count, {0xFF, 0xFF, 0xFF, 0xFF}), kDamaged);
    EXPECT_EQ(ErrorWithPet(layout().logical_index_count, {0xFF, 0xFF, 0xFF, 0xFF}), kDamaged);
    EXPECT_EQ(ErrorWithPet(layout().logical_index_count, {2, 0, 0, 0}), kDamaged);
}

TEST_P(Definition, WithAnyByteWrongIsReadOrDamage) {
    const ByteList pet = Pet();
    const jet::PageNumber page = builder_.file().Allocate();
    const auto place = builder_.file().page(page);
    std::copy(pet.begin(), pet.end(), place.begin());
    for (std::size_t at = 0; at < pet.size(); ++at) {
        for (const std::uint8_t value : Hex("00 01 7F 80 FF")) {
            place[at] = value;
            const int error = ErrorOf([&] { Read(page); });
            ASSERT_TRUE(error == 0 || error == kDamaged) << at << " " << int{value};
        }
        place[at] = pet[at];
    }
}

TEST_P(Definition, OfAnUnknownKindIsDamage) {
    EXPECT_EQ(ErrorWithPet(layout().table_mark, {0x4F}), kDamaged);
}

TEST_P(Definition, WithContradictoryColumnsIsDamage) {
    const jet::ColumnRecordLayout& column = format().column;
    EXPECT_EQ(ErrorWithPet(InColumn(1, column.number), {0, 0}), kDamaged) << "a number twice";
    EXPECT_EQ(ErrorWithPet(InColumn(3, column.length), {4, 0}), kDamaged) << "a date of 4 bytes";
    EXPECT_EQ(ErrorWithPet(InColumn(3, column.fixed_offset), {3, 0}), kDamaged) << "two in one place";
    EXPECT_EQ(ErrorWithPet(InColumn(1, column.variable_index), {9, 0}), kDamaged);
    EXPECT_EQ(ErrorWithPet(InColumn(0, column.type), {static_cast<std::uint8_t>(ColumnType::kMemo)}), kDamaged)
        << "a memo among the fixed columns";
}

TEST_P(Definition, WithAnIndexOnNoColumnOrWithoutATreeIsDamage) {
    const std::size_t block =
        Pet().size() - 2 - (IsJet4() ? 22 : 11) - format().logical_index.size - format().index_block.size;
    EXPECT_EQ(ErrorWithPet(block + format().index_block.columns, {9, 0}), kDamaged);
    const std::size_t record = block + format().index_block.size;
    EXPECT_EQ(ErrorWithPet(record + format().logical_index.real_number, {1, 0, 0, 0}), kDamaged);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, Definition, kBothGenerations, GenerationName);

TEST(DefinitionOfJet4, TellsPrecisionAndScale) {
    DatabaseBuilder builder(Generation::kJet4);
    const jet::PageNumber page =
        builder.AddTable("Numeric", {{.name = "A", .type = ColumnType::kNumeric, .precision = 18, .scale = 4}}).page();
    jet::DatabaseFile file = builder.Open();
    const TableDefinition table = file.ReadTableDefinition(page);
    EXPECT_EQ(table.columns[0].type, ColumnType::kNumeric);
    EXPECT_EQ(table.columns[0].precision, 18);
    EXPECT_EQ(table.columns[0].scale, 4);
}

TEST(DefinitionOfJet4, WithMoreDecimalsThanANumberHasIsDamage) {
    DatabaseBuilder builder(Generation::kJet4);
    const jet::PageNumber page =
        builder.AddTable("Numeric", {{.name = "A", .type = ColumnType::kNumeric, .precision = 18, .scale = 29}}).page();
    jet::DatabaseFile file = builder.Open();
    EXPECT_EQ(ErrorOf([&] { file.ReadTableDefinition(page); }), kDamaged);
}

}  // namespace

}  // namespace ledgix::test
