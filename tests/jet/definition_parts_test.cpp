#include "definition_parts.h"

#include "byte_order.h"
#include "database_file.h"
#include "definition_reader.h"
#include "hex.h"
#include "jet_test.h"
#include "pet_definition.h"
#include "pet_table.h"
#include "sample_database.h"
#include "table_rows.h"

namespace ledgix::test {

namespace {

using jet::Generation;

// Every table of a file, taken apart and put together again.
void ExpectSameDefinitions(jet::DatabaseFile& file) {
    std::size_t tables = 0;
    for (const jet::CatalogEntry& entry : file.ReadCatalog()) {
        if (!entry.IsTable())
            continue;
        const auto stored = jet::ReadStoredDefinition(file.pager(), entry.DefinitionPage());
        const jet::DefinitionParts parts = jet::SplitDefinition(file.format(), stored.bytes);
        EXPECT_EQ(jet::JoinDefinition(file.format(), parts), stored.bytes) << entry.name;
        ++tables;
    }
    EXPECT_GE(tables, 4U);
}

class DefinitionPartsOf : public testing::TestWithParam<std::string> {};

TEST_P(DefinitionPartsOf, GiveTheSameBytesAgain) {
    jet::DatabaseFile file(jet::OpenPageFile(GetParam()));
    ExpectSameDefinitions(file);
}

INSTANTIATE_TEST_SUITE_P(SampleFiles, DefinitionPartsOf, testing::ValuesIn(SampleFiles()), FileTestName);

class DefinitionParts : public testing::TestWithParam<Generation> {
protected:
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }
    ByteList Pet() const { return Hex(GetParam() == Generation::kJet4 ? kPetDefinitionJet4 : kPetDefinitionJet3); }
};

TEST_P(DefinitionParts, GiveTheSameBytesForDefinitionsOfSeveralPages) {
    jet::DatabaseFile file(jet::MakeMemoryFile(BuildSampleDatabase(GetParam())));
    ExpectSameDefinitions(file);
}

TEST_P(DefinitionParts, AreTheRecordsOfTheDefinition) {
    const jet::DefinitionParts parts = jet::SplitDefinition(format(), Pet());
    EXPECT_EQ(parts.header.size(), format().definition.statistics);
    EXPECT_EQ(parts.statistics.size(), 1U);
    EXPECT_EQ(parts.columns.size(), 4U);
    EXPECT_EQ(parts.column_names.size(), 4U);
    EXPECT_EQ(parts.index_blocks.size(), 1U);
    EXPECT_EQ(parts.logical_indexes.size(), 1U);
    EXPECT_EQ(parts.index_names.size(), 1U);
    EXPECT_TRUE(parts.long_column_maps.empty());
}

TEST_P(DefinitionParts, AreMadeAsJetMakesThem) {
    const jet::DefinitionParts parts = jet::SplitDefinition(format(), Pet());
    const jet::TableDefinition table = MakePetDefinition(GetParam());
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(jet::MakeColumnRecord(format(), table.columns[i]), parts.columns[i]);
        EXPECT_EQ(jet::MakeStoredName(format(), table.columns[i].name), parts.column_names[i]);
    }
    EXPECT_EQ(jet::MakeStatistics(format(), table.indexes[0]), parts.statistics[0]);
    EXPECT_EQ(jet::MakeIndexBlock(format(), table.indexes[0]), parts.index_blocks[0]);
    EXPECT_EQ(jet::MakeLogicalIndex(format(), table.indexes[0]), parts.logical_indexes[0]);
    EXPECT_EQ(jet::MakeStoredName(format(), "PrimaryKey"), parts.index_names[0]);
}

TEST_P(DefinitionParts, TellHowManyThereAre) {
    jet::DefinitionParts parts = jet::SplitDefinition(format(), Pet());
    parts.columns.pop_back();
    parts.column_names.pop_back();
    parts.statistics.clear();
    parts.index_blocks.clear();
    parts.logical_indexes.clear();
    parts.index_names.clear();
    const ByteList joined = jet::JoinDefinition(format(), parts);
    EXPECT_EQ(jet::LoadU32(joined, 8), joined.size());
    const jet::DefinitionParts again = jet::SplitDefinition(format(), joined);
    EXPECT_EQ(again.columns.size(), 3U);
    EXPECT_TRUE(again.index_blocks.empty());
    EXPECT_TRUE(again.logical_indexes.empty());
    EXPECT_EQ(jet::LoadU16(again.header, format().definition.columns_ever), 4) << "it never shrinks";
}

TEST_P(DefinitionParts, OfADefinitionThatIsCutOffAreRefused) {
    const ByteList pet = Pet();
    for (std::size_t size = 0; size + 2 < pet.size(); ++size)
        EXPECT_EQ(ErrorOf([&] { jet::SplitDefinition(format(), jet::Bytes(pet).first(size)); }), kDamaged) << size;
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, DefinitionParts, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
