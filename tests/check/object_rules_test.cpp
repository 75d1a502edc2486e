#include <gtest/gtest.h>

#include "catalog.h"
#include "new_database.h"
#include "specimen.h"

namespace ledgix::test {

namespace {

constexpr std::int32_t kQuery = 0x7000001;

class ObjectRules : public RuleTest {
protected:
    // Fields of a row of MSysObjects, in the order of the file: the containers, MSysDb, the tables.
    void SetId(std::size_t object, std::int32_t id) { Store(object, 0, id); }
    void SetParent(std::size_t object, std::int32_t parent) { Store(object, 4, parent); }
    void SetType(std::size_t object, std::int16_t type) { Store(object, 8, type); }

    template <typename Number>
    void Store(std::size_t object, std::size_t offset, Number number) {
        jet::StoreLittle(pets_.Row(objects_[object]), pets_.format().row.count_size + offset, number);
    }

    // What a file with one more object has to be found.
    static Codes FoundWith(std::int32_t id, std::int32_t parent, const std::string& name) {
        DatabaseBuilder builder(GetParam());
        builder.AddTable("Pets", {{.name = "Id"}});
        builder.AddEntry(id, parent, name, jet::kQueryEntry, 0);
        Codes codes = CodesOf(Check(builder.Finish(), jet::Strictness::kAnyWriter));
        for (const char* of_the_builder : {"C10", "H2", "H5"})
            codes.erase(of_the_builder);
        return codes;
    }

    void StoreRelation(std::size_t index, std::uint8_t side, std::uint32_t other_index) {
        const jet::LogicalIndexLayout& layout = pets_.format().logical_index;
        const std::size_t at = pets_.PlacesOf("Pets").logical_indexes + index * layout.size;
        pets_.Store(table_.page, at + layout.type, jet::kLogicalRelation);
        pets_.Store(table_.page, at + layout.relation_side, side);
        pets_.Store(table_.page, at + layout.relation_index, other_index);
        pets_.Store(table_.page, at + layout.relation_table, table_.page);
    }

    static constexpr std::size_t kTables = 0;
    static constexpr std::size_t kAces = 5;
    static constexpr std::size_t kPets = 8;
    static constexpr std::size_t kEmpty = 9;
    const std::vector<jet::RowId> objects_ = pets_.RowsOf("MSysObjects");
};

TEST_P(ObjectRules, WantTheColumnsOfTheCatalogue) {
    const std::size_t name = pets_.PlacesOf("MSysObjects").column_names + pets_.format().definition.name_length_size;
    pets_.Page(jet::kCatalogPage)[name] = 'X';
    EXPECT_TRUE(pets_.Found().contains("C1"));
}

TEST_P(ObjectRules, WantIdsOnce) {
    SetId(kEmpty, static_cast<std::int32_t>(table_.page));
    EXPECT_EQ(pets_.Found(), Codes{"C2"});
}

TEST_P(ObjectRules, WantNamesOnceBelowAParent) {
    EXPECT_EQ(FoundWith(kQuery, jet::kTablesContainer, "pETS"), Codes{"C3"});
    EXPECT_EQ(FoundWith(kQuery, jet::kTablesContainer, "Cats"), Codes{});
}

TEST_P(ObjectRules, WantParents) {
    EXPECT_EQ(FoundWith(kQuery, 77, "Cats"), Codes{"C4"});
}

TEST_P(ObjectRules, WantTheContainers) {
    SetType(kTables, jet::kQueryEntry);
    EXPECT_EQ(pets_.Found(), Codes{"C5"});
}

TEST_P(ObjectRules, WantTablesBelowTheirContainer) {
    SetParent(kPets, jet::kTablesContainer + 1);
    EXPECT_EQ(pets_.Found(), Codes{"C6"});
}

TEST_P(ObjectRules, WantDefinitionsOfTables) {
    SetId(kEmpty, 9999);
    EXPECT_EQ(pets_.Found(), Codes{"C7"});
}

TEST_P(ObjectRules, WantTheTablesOfTheSystem) {
    SetType(kAces, jet::kQueryEntry);
    EXPECT_EQ(pets_.Found(), Codes{"C8"});
}

TEST_P(ObjectRules, WantNames) {
    EXPECT_EQ(FoundWith(kQuery, jet::kTablesContainer, ""), Codes{"C9"});
}

TEST_P(ObjectRules, WantTheOtherSideOfARelation) {
    StoreRelation(0, jet::kRelationReferencedSide, 1);
    EXPECT_EQ(pets_.Found(), Codes{"C11"});
    StoreRelation(1, jet::kRelationReferencingSide, 1);
    EXPECT_EQ(pets_.Found(), Codes{"C11"});
    StoreRelation(1, jet::kRelationReferencingSide, 0);
    EXPECT_EQ(pets_.Found(), Codes{});
}

// Gives the entries of one object to another one.
Codes FoundWithoutAccess(jet::Generation generation, std::int32_t object, jet::Strictness strictness) {
    Specimen file(jet::NewDatabase(generation, runtime::Date{38000.5}));
    for (const jet::RowId row : file.RowsOf("MSysACEs")) {
        const std::size_t at = file.format().row.count_size;
        if (jet::LoadU32(file.Row(row), at) == static_cast<std::uint32_t>(object))
            jet::StoreLittle(file.Row(row), at, jet::kTablesContainer);
    }
    return file.Found(strictness);
}

TEST_P(ObjectRules, WantRightsToTables) {
    EXPECT_EQ(FoundWithoutAccess(GetParam(), 4, jet::Strictness::kAnyWriter), (Codes{"C10", "I18"}));
}

TEST_P(ObjectRules, WantRightsToOtherObjectsInOwnFilesOnly) {
    constexpr std::int32_t kDatabases = jet::kTablesContainer + 1;
    EXPECT_EQ(FoundWithoutAccess(GetParam(), kDatabases, jet::Strictness::kAnyWriter), Codes{"I18"});
    EXPECT_EQ(FoundWithoutAccess(GetParam(), kDatabases, jet::Strictness::kOwnFiles), (Codes{"C10", "I18"}));
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, ObjectRules, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
