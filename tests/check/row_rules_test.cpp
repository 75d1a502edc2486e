#include <gtest/gtest.h>

#include "specimen.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;
using jet::RowId;

class RowRules : public RuleTest {
protected:
    std::size_t offset_size() const { return pets_.format().row.offset_size; }

    // Where the first row has its number of variable columns; their offsets stand before it, backwards.
    std::size_t VariableCountAt() { return pets_.Row(rows_[0]).size() - 2 - offset_size(); }
    std::uint8_t& VariableOffset(std::size_t i) {
        return pets_.Row(rows_[0])[VariableCountAt() - (i + 1) * offset_size()];
    }
    void SetLength(std::size_t column, std::uint16_t length) {
        const jet::ColumnRecordLayout& layout = pets_.format().column;
        pets_.Store(table_.page, pets_.PlacesOf("Pets").columns + column * layout.size + layout.length, length);
    }

    const jet::DataPageLayout& page() const { return pets_.format().data_page; }
    const RowId moved_ = rows_[4];
    const RowId moved_too_ = rows_[7];
};

TEST_P(RowRules, WantPagesThatNameTheTable) {
    pets_.Store(rows_[0].page, page().owner, 3U);
    EXPECT_TRUE(pets_.Found().contains("D1"));
}

TEST_P(RowRules, WantSlotsThatHaveRoom) {
    pets_.Store(rows_[0].page, page().slot_count, std::uint16_t{5000});
    EXPECT_TRUE(pets_.Found().contains("D2"));
}

TEST_P(RowRules, WantRowsOneBelowTheOther) {
    pets_.SetSlot(rows_[1], static_cast<std::uint16_t>(pets_.Slot(rows_[0]) + 4));
    EXPECT_TRUE(pets_.Found().contains("D3"));
}

TEST_P(RowRules, WantTheCountOfFreeBytes) {
    pets_.Store(rows_[0].page, page().free_bytes, std::uint16_t{1});
    EXPECT_EQ(pets_.Found(), Codes{"D4"});
}

TEST_P(RowRules, WantNoUnknownFlag) {
    pets_.SetSlot(rows_[0], pets_.Slot(rows_[0]) | 0x2000);
    EXPECT_EQ(pets_.Found(), Codes{"D5"});
}

TEST_P(RowRules, WantTheCountOfRows) {
    pets_.Store(table_.page, pets_.format().definition.row_count, 11U);
    EXPECT_EQ(pets_.Found(), Codes{"D6"});
}

TEST_P(RowRules, WantTheCountOfRowsInSystemTablesOfOwnFilesOnly) {
    pets_.Store(jet::kCatalogPage, pets_.format().definition.row_count, 1U);
    EXPECT_EQ(pets_.Found(), Codes{});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{"D6"});
}

TEST_P(RowRules, WantPointersToHiddenRows) {
    jet::StoreRowPointer(pets_.Row(moved_), 0, rows_[0]);
    EXPECT_EQ(pets_.Found(), Codes{"D7"});
    EXPECT_EQ(pets_.FoundStrictly(), (Codes{"D13", "D7"}));
}

TEST_P(RowRules, WantOnePointerToAHiddenRow) {
    jet::StoreRowPointer(pets_.Row(moved_), 0, jet::LoadRowPointer(pets_.Row(moved_too_), 0));
    EXPECT_EQ(pets_.Found(), (Codes{"D7", "I18"}));
}

TEST_P(RowRules, WantNoMoreColumnsThanTheTableHad) {
    pets_.Row(rows_[0])[0] = 200;
    EXPECT_EQ(pets_.Found(), Codes{"D8"});
}

TEST_P(RowRules, WantRoomForTheVariableColumns) {
    pets_.Row(rows_[0])[VariableCountAt()] = 100;
    EXPECT_EQ(pets_.Found(), Codes{"D9"});
}

TEST_P(RowRules, WantVariableColumnsInOrder) {
    VariableOffset(2) = static_cast<std::uint8_t>(VariableOffset(1) - 1);
    EXPECT_EQ(pets_.Found(), Codes{"D9"});
}

TEST_P(RowRules, WantRoomForTheFixedColumns) {
    VariableOffset(0) = 4;
    EXPECT_EQ(pets_.Found(), Codes{"D10"});
}

TEST_P(RowRules, WantTheBytesOfTheType) {
    --VariableOffset(2);
    EXPECT_EQ(pets_.Found(), Codes{"D11"});
}

TEST_P(RowRules, WantTextNoLongerThanItsColumn) {
    SetLength(4, 4);
    EXPECT_EQ(pets_.Found(), Codes{"D12"});
}

TEST_P(RowRules, WantBinaryDataNoLongerThanTheirColumn) {
    SetLength(6, 2);
    EXPECT_EQ(pets_.Found(), Codes{"D12"});
}

TEST_P(RowRules, WantNoHiddenRowWithoutPointerInOwnFilesOnly) {
    const RowId deleted{.page = rows_[0].page, .slot = 5};
    ASSERT_EQ(pets_.Slot(deleted) & jet::kSlotDeleted, jet::kSlotDeleted);
    pets_.SetSlot(deleted, (pets_.Slot(deleted) & jet::kSlotStart) | jet::kSlotHidden);
    EXPECT_EQ(pets_.Found(), Codes{});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{"D13"});
}

TEST_P(RowRules, WantLongValuesOnPagesOfTheirOwn) {
    const jet::PageNumber page = pets_.PagesOf(table_.columns[7].owned_map).front();
    pets_.Store(page, pets_.format().data_page.owner, table_.page);
    EXPECT_EQ(pets_.Found(), Codes{"L1"});
}

TEST_P(RowRules, WantLongValuesOnPagesOfTheirColumn) {
    const RowId map = table_.columns[7].owned_map;
    pets_.SetMapBit(map, pets_.PagesOf(map).front(), false);
    EXPECT_EQ(pets_.Found(), Codes{"L1"});
}

TEST_P(RowRules, WantTheRowsOfLongValues) {
    const RowId value{.page = pets_.PagesOf(table_.columns[7].owned_map).front(), .slot = 0};
    pets_.SetSlot(value, pets_.Slot(value) | jet::kSlotDeleted);
    EXPECT_EQ(pets_.Found(), Codes{"L2"});
}

TEST_P(RowRules, WantNoCircleOfLongValues) {
    const RowId last{.page = pets_.PagesOf(table_.columns[8].owned_map).front(), .slot = 0};
    jet::StoreRowPointer(pets_.Row(last), 0, last);
    EXPECT_EQ(pets_.Found(), Codes{"L2"});
}

TEST_P(RowRules, WantLongValuesOfTheirLength) {
    const std::span<std::uint8_t> row = pets_.Row(rows_[0]);
    const std::size_t header = VariableOffset(3);
    ASSERT_EQ(jet::LoadU32(row, header) & jet::kLongValueKind, jet::kLongValueInside);
    ++row[header];
    EXPECT_EQ(pets_.Found(), Codes{"L2"});
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, RowRules, kBothGenerations, GenerationName);

class BuiltRows : public testing::TestWithParam<jet::Generation> {
protected:
    Codes Any() { return CodesOf(Check(content_, jet::Strictness::kAnyWriter)); }
    Codes Strict() { return CodesOf(Check(content_, jet::Strictness::kOwnFiles)); }

    DatabaseBuilder builder_{GetParam()};
    std::vector<std::uint8_t> content_;
};

TEST_P(BuiltRows, MayBeShorterThanAPointerInForeignFilesOnly) {
    builder_.AddTable("Flags", {{.name = "A", .type = kBoolean}}).AddRow({true});
    content_ = builder_.Finish();
    EXPECT_FALSE(Any().contains("D14"));
    EXPECT_TRUE(Strict().contains("D14"));
}

TEST_P(BuiltRows, MayNotBeLongerThanTheEngineMakesThem) {
    std::vector<ColumnSpec> columns;
    Values values;
    for (std::size_t i = 0; (i + 1) * 250 < builder_.file().format().row.longest; ++i) {
        columns.push_back({.name = "B" + std::to_string(i), .type = kBinary, .characters = 255});
        values.push_back(runtime::Binary(250));
    }
    TableBuilder& table = builder_.AddTable("Long", columns);
    values.back() = runtime::Binary(0);
    const std::size_t missing = builder_.file().format().row.longest + 1 - table.Encode(values).size();
    values.back() = runtime::Binary(missing);
    table.AddRow(values);
    content_ = builder_.Finish();
    EXPECT_TRUE(Any().contains("D14"));
}

TEST_P(BuiltRows, MayLackVariableColumnsInForeignFilesOnly) {
    TableBuilder& table = builder_.AddTable("Grown", {{.name = "Id"}});
    table.AddRow({1});
    table.AddColumn({.name = "Text", .type = kText, .characters = 20});
    content_ = builder_.Finish();
    EXPECT_FALSE(Any().contains("D15"));
    EXPECT_TRUE(Strict().contains("D15"));
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, BuiltRows, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
