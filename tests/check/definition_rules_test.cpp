#include <gtest/gtest.h>

#include <algorithm>

#include "specimen.h"

namespace ledgix::test {

namespace {

class DefinitionRules : public RuleTest {
protected:
    const jet::DefinitionLayout& header() const { return pets_.format().definition; }

    // A field of a column, an index or a logical index of the table, in record order.
    template <typename Number>
    void StoreColumn(std::size_t column, std::size_t field, Number number) {
        pets_.Store(table_.page, places_.columns + column * pets_.format().column.size + field, number);
    }
    template <typename Number>
    void StoreIndex(std::size_t index, std::size_t field, Number number) {
        pets_.Store(table_.page, places_.index_blocks + index * pets_.format().index_block.size + field, number);
    }
    template <typename Number>
    void StoreLogicalIndex(std::size_t index, std::size_t field, Number number) {
        pets_.Store(table_.page, places_.logical_indexes + index * pets_.format().logical_index.size + field, number);
    }
    template <typename Number>
    void StoreOnlyColumn(std::size_t field, Number number) {
        pets_.Store(empty_.page, pets_.PlacesOf("Empty").columns + field, number);
    }

    const jet::TableDefinition empty_ = pets_.Table("Empty");
    const DefinitionPlaces places_ = pets_.PlacesOf("Pets");
};

constexpr std::size_t kRank = 1;
constexpr std::size_t kNick = 4;
constexpr std::size_t kLoose = 5;

TEST_P(DefinitionRules, WantNoPageBehindTheLast) {
    const jet::PageNumber more = pets_.AddPage();
    pets_.Store(more, 0, std::uint16_t{0x0102});
    pets_.Store(more, 2, jet::kDefinitionMarkJet3);
    pets_.Store(empty_.page, jet::kDefinitionNextPage, more);
    EXPECT_EQ(pets_.Found(), Codes{"T1"});
}

TEST_P(DefinitionRules, WantAllPages) {
    pets_.Store(empty_.page, header().length, static_cast<std::uint32_t>(pets_.format().page_size + 10));
    EXPECT_TRUE(pets_.Found().contains("T1"));
}

TEST_P(DefinitionRules, WantPagesOfDefinitions) {
    pets_.Page(empty_.page)[1] = 0;
    EXPECT_EQ(pets_.Found(), (Codes{"C7", "T2"}));
}

TEST_P(DefinitionRules, WantThePageHeaderOfTheGeneration) {
    pets_.Store(empty_.page, jet::kDefinitionFreeBytes, std::uint16_t{77});
    EXPECT_EQ(pets_.Found(), Codes{GetParam() == jet::Generation::kJet3 ? "T3" : "T20"});
}

TEST_P(DefinitionRules, WantAKnownKindOfTable) {
    pets_.Page(empty_.page)[header().table_mark] = 0;
    EXPECT_EQ(pets_.Found(), (Codes{"T4", "X1"}));
}

TEST_P(DefinitionRules, WantNoMoreColumnsThanThereWereEver) {
    pets_.Store(table_.page, header().columns_ever, std::uint16_t{3});
    EXPECT_TRUE(pets_.Found().contains("T5"));
}

TEST_P(DefinitionRules, WantNoMoreVariableColumnsThanColumns) {
    pets_.Store(table_.page, header().variable_columns_ever, std::uint16_t{10});
    EXPECT_EQ(pets_.Found(), Codes{"T6"});
}

TEST_P(DefinitionRules, WantNoMoreIndexesThanTheEngineMakes) {
    pets_.Store(empty_.page, header().real_index_count, 40U);
    EXPECT_TRUE(pets_.Found().contains("T7"));
}

TEST_P(DefinitionRules, WantNames) {
    pets_.Page(table_.page)[places_.column_names] = 0;
    EXPECT_TRUE(pets_.Found().contains("T8"));
}

TEST_P(DefinitionRules, WantTheLengthThatThePartsHave) {
    const std::uint32_t length = jet::LoadU32(pets_.Page(empty_.page), header().length);
    pets_.Store(empty_.page, header().length, length - 1);
    EXPECT_TRUE(pets_.Found().contains("T9"));
    pets_.Store(empty_.page, header().length, length + 1);
    EXPECT_TRUE(pets_.Found().contains("T9"));
}

TEST_P(DefinitionRules, WantColumnNumbersBelowTheCounter) {
    StoreOnlyColumn(pets_.format().column.number, std::uint16_t{5});
    EXPECT_EQ(pets_.Found(), (Codes{"T10", "X1"}));
}

TEST_P(DefinitionRules, WantColumnNumbersOnce) {
    StoreColumn(kRank, pets_.format().column.number, std::uint16_t{0});
    EXPECT_TRUE(pets_.Found().contains("T10"));
}

TEST_P(DefinitionRules, WantColumnNamesOnce) {
    const std::size_t name = header().name_length_size + 4 * pets_.format().character_size;  // of four letters
    const auto names = pets_.Page(table_.page).begin() + static_cast<std::ptrdiff_t>(places_.column_names);
    const auto rank = names + static_cast<std::ptrdiff_t>(name - 2 * pets_.format().character_size);  // behind "Id"
    std::copy_n(rank, name, rank + static_cast<std::ptrdiff_t>(name));
    EXPECT_EQ(pets_.Found(), Codes{"T11"});
}

TEST_P(DefinitionRules, WantTheLengthOfTheType) {
    StoreOnlyColumn(pets_.format().column.length, std::uint16_t{3});
    EXPECT_EQ(pets_.Found(), (Codes{"T12", "X1"}));
}

TEST_P(DefinitionRules, WantPlacesAmongTheVariableColumnsOnce) {
    StoreColumn(kNick, pets_.format().column.variable_index, table_.columns[kLoose].variable_index);
    EXPECT_TRUE(pets_.Found().contains("T13"));
}

TEST_P(DefinitionRules, WantKnownTypes) {
    StoreOnlyColumn(pets_.format().column.type, std::uint8_t{13});
    EXPECT_EQ(pets_.Found(), Codes{"T14"});
}

TEST_P(DefinitionRules, WantAPlaceForEachFixedColumn) {
    StoreColumn(kRank, pets_.format().column.fixed_offset, std::uint16_t{2});
    EXPECT_TRUE(pets_.Found().contains("T15"));
}

TEST_P(DefinitionRules, WantTheColumnsOfIndexes) {
    StoreIndex(0, pets_.format().index_block.columns, std::uint16_t{77});
    EXPECT_TRUE(pets_.Found().contains("T16"));
}

TEST_P(DefinitionRules, WantIndexNumbersOnce) {
    StoreLogicalIndex(1, pets_.format().logical_index.number, 0U);
    EXPECT_EQ(pets_.Found(), Codes{"T17"});
}

TEST_P(DefinitionRules, WantALogicalIndexForEachRealOne) {
    StoreLogicalIndex(1, pets_.format().logical_index.real_number, 0U);
    EXPECT_EQ(pets_.Found(), Codes{"T17"});
}

TEST_P(DefinitionRules, WantOnePrimaryKeyThatIsUnique) {
    StoreLogicalIndex(1, pets_.format().logical_index.type, jet::kLogicalPrimaryKey);
    EXPECT_EQ(pets_.Found(), Codes{"T18"});
}

TEST_P(DefinitionRules, WantMapsForEachLongColumn) {
    pets_.Store(table_.page, places_.long_columns, table_.columns.back().number);
    EXPECT_TRUE(pets_.Found().contains("T19"));
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, DefinitionRules, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
