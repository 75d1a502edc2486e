#include "definition_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "byte_order.h"
#include "column_layout.h"
#include "definition_reader.h"
#include "hex.h"
#include "jet_test.h"
#include "new_database.h"
#include "pet_definition.h"
#include "pet_table.h"

namespace ledgix::test {

namespace {

using jet::ColumnType;
using jet::Generation;
using jet::TableDefinition;

auto Fields(const jet::RowId& id) {
    return std::tuple(id.page, int{id.slot});
}

auto Fields(const jet::Column& column) {
    return std::tuple(column.name, column.type, column.number, column.variable_index, column.fixed, column.fixed_offset,
                      column.length, int{column.precision}, int{column.scale}, column.autonumber, column.compressed,
                      column.ordinal, int{column.flags}, column.sort_order, int{column.character_size},
                      Fields(column.owned_map), Fields(column.free_space_map));
}

auto Fields(const jet::IndexRelation& relation) {
    return std::tuple(relation.referenced_side, relation.other_table, relation.other_index, relation.cascades_updates,
                      relation.cascades_deletes);
}

auto Fields(const jet::Index& index) {
    return std::tuple(index.name, index.columns, index.unique, index.primary, index.ignore_nulls, index.required,
                      index.is_relation, index.root, Fields(index.map), index.logical_number, index.real_number,
                      index.built_entries, index.distinct_keys,
                      Fields(index.relation.value_or(jet::IndexRelation{.other_table = 0xFFFFFF})));
}

auto HeaderFields(const TableDefinition& table) {
    return std::tuple(table.page, table.system, table.row_count, table.last_autonumber, table.columns_ever,
                      table.variable_columns_ever, Fields(table.owned_map), Fields(table.free_space_map));
}

void ExpectSame(const TableDefinition& read, const TableDefinition& written) {
    EXPECT_EQ(HeaderFields(read), HeaderFields(written));
    ASSERT_EQ(read.columns.size(), written.columns.size());
    for (std::size_t i = 0; i < read.columns.size(); ++i)
        EXPECT_EQ(Fields(read.columns[i]), Fields(written.columns[i])) << written.columns[i].name;
    ASSERT_EQ(read.indexes.size(), written.indexes.size());
    for (std::size_t i = 0; i < read.indexes.size(); ++i)
        EXPECT_EQ(Fields(read.indexes[i]), Fields(written.indexes[i])) << written.indexes[i].name;
}

class DefinitionWriter : public testing::TestWithParam<Generation> {
protected:
    bool IsJet4() const { return GetParam() == Generation::kJet4; }
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }

    // The definition in pages behind those of a new database, and read from there.
    TableDefinition WriteAndRead(TableDefinition& table) {
        std::vector<std::uint8_t> content = jet::NewDatabase(GetParam(), {});
        table.page = static_cast<jet::PageNumber>(content.size() / format().page_size);
        const std::vector<std::uint8_t> definition = jet::EncodeDefinition(format(), table);
        std::vector<jet::PageNumber> numbers(jet::DefinitionPageCount(format(), definition.size()));
        std::generate(numbers.begin(), numbers.end(), [next = table.page]() mutable { return next++; });
        pages_ = jet::CutDefinition(format(), definition, numbers);
        for (const std::vector<std::uint8_t>& page : pages_)
            content.insert(content.end(), page.begin(), page.end());
        jet::Pager pager(jet::MakeMemoryFile(std::move(content)), format());
        return jet::ReadDefinition(pager, table.page);
    }

    // Every kind of column, a dropped one, memos with and without a second map.
    TableDefinition WithEveryColumnType() const {
        TableDefinition table;
        for (const ColumnType type :
             {ColumnType::kBoolean, ColumnType::kByte, ColumnType::kInt16, ColumnType::kInt32, ColumnType::kCurrency,
              ColumnType::kSingle, ColumnType::kDouble, ColumnType::kDate, ColumnType::kGuid, ColumnType::kOle})
            jet::AddColumn(format(), table, ColumnOf("C" + std::to_string(static_cast<int>(type)), type));
        jet::AddColumn(format(), table, TextColumn("Text", 50, GetParam(), IsJet4()));
        jet::Column memo = ColumnOf("A memo", ColumnType::kMemo);
        memo.owned_map = {.page = 70, .slot = 4};
        memo.free_space_map = {.page = 70, .slot = 5};
        jet::AddColumn(format(), table, memo);
        jet::Column counter = ColumnOf("Counter", ColumnType::kInt32);
        counter.flags = jet::kColumnAutonumber;
        jet::AddColumn(format(), table, counter);
        table.columns.erase(table.columns.begin() + 2);
        table.last_autonumber = 77;
        table.row_count = 1234;
        return table;
    }

    std::vector<std::vector<std::uint8_t>> pages_;
};

TEST_P(DefinitionWriter, WritesTheDefinitionThatJetWrites) {
    const TableDefinition pet = MakePetDefinition(GetParam());
    const ByteList expected = Hex(IsJet4() ? kPetDefinitionJet4 : kPetDefinitionJet3);
    const ByteList definition = jet::EncodeDefinition(format(), pet);
    EXPECT_EQ(definition.size(), expected.size());
    const auto pages = jet::CutDefinition(format(), definition, {pet.page});
    ASSERT_EQ(pages.size(), 1U);
    ASSERT_EQ(pages[0].size(), format().page_size);
    const auto end = pages[0].begin() + static_cast<std::ptrdiff_t>(expected.size());
    EXPECT_EQ(ByteList(pages[0].begin(), end), expected);
    EXPECT_TRUE(std::all_of(end, pages[0].end(), [](std::uint8_t byte) { return byte == 0; }));
}

TEST_P(DefinitionWriter, WritesWhatTheReaderReadsOfEveryColumnType) {
    TableDefinition table = WithEveryColumnType();
    const TableDefinition read = WriteAndRead(table);
    ExpectSame(read, table);
}

TEST_P(DefinitionWriter, WritesIndexesThatShareATreeAndSidesOfRelations) {
    TableDefinition table = WithEveryColumnType();
    jet::Index plain;
    plain.name = "Plain";
    plain.columns = {{.column_number = 3, .ascending = false}, {.column_number = 10}};
    plain.ignore_nulls = true;
    plain.logical_number = 4;
    plain.real_number = 1;
    plain.root = 99;
    plain.map = {.page = 70, .slot = 9};
    plain.built_entries = 12;
    plain.distinct_keys = 8;
    jet::Index relation = plain;
    relation.name = "A relation";
    relation.is_relation = true;
    relation.logical_number = 5;
    relation.relation = {.referenced_side = false,
                         .other_table = 33,
                         .other_index = 2,
                         .cascades_updates = true,
                         .cascades_deletes = false};
    jet::Index key = MakePetDefinition(GetParam()).indexes[0];
    table.indexes = {relation, key, plain};
    const TableDefinition read = WriteAndRead(table);
    ExpectSame(read, table);
}

TEST_P(DefinitionWriter, ListsTheMapsOfLongColumnsByName) {
    TableDefinition table = WithEveryColumnType();
    const ByteList definition = jet::EncodeDefinition(format(), table);
    const std::size_t first = definition.size() - 2 - 2 * jet::kLongColumnMapsSize;
    EXPECT_EQ(jet::LoadU16(definition, first), 11) << "A memo";
    EXPECT_EQ(jet::LoadU16(definition, first + jet::kLongColumnMapsSize), 9) << "C11";
}

TEST_P(DefinitionWriter, GoesOnOverSeveralPages) {
    TableDefinition table;
    for (int i = 0; i < 200; ++i)
        jet::AddColumn(format(), table,
                       ColumnOf("A column with a name of some length " + std::to_string(i), ColumnType::kByte));
    const TableDefinition read = WriteAndRead(table);
    EXPECT_EQ(pages_.size(), 6U);
    ExpectSame(read, table);
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        const bool last = i + 1 == pages_.size();
        EXPECT_EQ(jet::LoadU32(pages_[i], 4), last ? 0 : table.page + i + 1);
        const std::uint16_t mark = jet::LoadU16(pages_[i], 2);
        if (!IsJet4())
            EXPECT_EQ(mark, 0x4356);
        else if (last)
            EXPECT_GT(mark, 0);
        else
            EXPECT_EQ(mark, 0);
    }
}

TEST_P(DefinitionWriter, NeedsAnotherPageForTheFirstByteThatDoesNotFit) {
    const std::size_t page = format().page_size;
    EXPECT_EQ(jet::DefinitionPageCount(format(), 100), 1U);
    EXPECT_EQ(jet::DefinitionPageCount(format(), page), 1U);
    EXPECT_EQ(jet::DefinitionPageCount(format(), page + 1), 2U);
    EXPECT_EQ(jet::DefinitionPageCount(format(), page + page - 8), 2U);
    EXPECT_EQ(jet::DefinitionPageCount(format(), page + page - 7), 3U);
}

TEST_P(DefinitionWriter, RefusesATreeWithoutAnIndex) {
    TableDefinition table = MakePetDefinition(GetParam());
    table.indexes[0].real_number = 1;
    EXPECT_EQ(ErrorOf([&] { jet::EncodeDefinition(format(), table); }), kDamaged);
    table.indexes.push_back(table.indexes[0]);
    EXPECT_EQ(ErrorOf([&] { jet::EncodeDefinition(format(), table); }), kDamaged);
    table.indexes[0].real_number = 0;
    EXPECT_EQ(ErrorOf([&] { jet::EncodeDefinition(format(), table); }), 0);
}

TEST_P(DefinitionWriter, GivesANewColumnItsPlaceBehindAllThatEverWere) {
    TableDefinition table = MakePetDefinition(GetParam());
    table.columns.erase(table.columns.begin() + 1);
    jet::AddColumn(format(), table, TextColumn("Note", 10, GetParam()));
    jet::AddColumn(format(), table, ColumnOf("Age", ColumnType::kInt16));
    const jet::Column& note = table.columns[3];
    EXPECT_EQ(note.number, 4);
    EXPECT_EQ(note.variable_index, 1);
    EXPECT_EQ(note.ordinal, 4);
    EXPECT_FALSE(note.fixed);
    EXPECT_EQ(note.flags, 0x02);
    const jet::Column& age = table.columns[4];
    EXPECT_EQ(age.fixed_offset, 12);
    EXPECT_EQ(age.variable_index, 2);
    EXPECT_EQ(age.length, 2);
    EXPECT_EQ(age.flags, 0x03);
    EXPECT_EQ(table.columns_ever, 6);
    EXPECT_EQ(table.variable_columns_ever, 2);
    const TableDefinition read = WriteAndRead(table);
    ExpectSame(read, table);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, DefinitionWriter, kBothGenerations, GenerationName);

TEST(DefinitionWriterOfJet4, WritesPrecisionAndScale) {
    const jet::Format& format = jet::FormatOf(Generation::kJet4);
    TableDefinition table;
    jet::Column column = ColumnOf("N", ColumnType::kNumeric);
    column.precision = 18;
    column.scale = 4;
    jet::AddColumn(format, table, column);
    const ByteList definition = jet::EncodeDefinition(format, table);
    EXPECT_EQ(definition[63 + 11], 18);
    EXPECT_EQ(definition[63 + 12], 4);
    EXPECT_EQ(definition[63 + 15], 0x02) << "stored as variable";
}

TEST(DefinitionWriterOfJet4, WritesAgainWhatItReadInASampleFile) {
    const jet::Format& format = jet::FormatOf(Generation::kJet4);
    const std::string path = LEDGIX_TEST_DATA "/mdb/household-empty.mdb";
    jet::Pager pager(jet::OpenPageFile(path), format);
    const std::vector<std::uint8_t>& theirs = pager.Read(jet::kCatalogPage)->bytes;
    const ByteList ours = jet::EncodeDefinition(format, jet::ReadDefinition(pager, jet::kCatalogPage));
    EXPECT_EQ(jet::CutDefinition(format, ours, {jet::kCatalogPage}).front(), theirs);
}

}  // namespace

}  // namespace ledgix::test
