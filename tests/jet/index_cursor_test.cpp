#include "index_cursor.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "byte_order.h"
#include "database_builder.h"
#include "forwarding_file.h"
#include "hex.h"
#include "index_check.h"
#include "jet_test.h"
#include "row_reader.h"

namespace ledgix::test {

namespace {

using jet::Generation;
using runtime::Variant;

// Notes which pages are read.
class WatchedFile : public ForwardingFile {
public:
    WatchedFile(std::vector<std::uint8_t> content, std::size_t& reads)
        : ForwardingFile(jet::MakeMemoryFile(std::move(content))), reads_(reads) {}

    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override {
        ++reads_;
        ForwardingFile::Read(offset, into);
    }

private:
    std::size_t& reads_;
};

class Index : public testing::TestWithParam<Generation> {
protected:
    // A new file with a table of the even numbers from 0 up, put in in disorder.
    TableBuilder& AddEvenNumbers(int count, IndexSpec index) {
        builder_.emplace(GetParam());
        TableBuilder& table = builder_->AddTable("T", {{.name = "Id"}, {.name = "Half"}});
        index.name = "Id";
        index.column = "Id";
        table.AddIndex(index);
        constexpr int kStep = 7919;  // a prime
        for (int i = 0; i < count; ++i)
            table.AddRow({i * kStep % count * 2, i * kStep % count});
        return table;
    }

    void Open(const TableBuilder& table) {
        builder_->Finish();
        OpenAgain(table);
    }

    // With the changes that were made to the finished file.
    void OpenAgain(const TableBuilder& table) {
        file_ = std::make_unique<jet::DatabaseFile>(std::make_unique<WatchedFile>(builder_->file().Finish(), reads_));
        table_ = file_->ReadTableDefinition(table.page());
    }

    const jet::Index& index() const { return table_.indexes.at(0); }

    std::vector<jet::RowId> Find(int id) { return jet::FindRows(*file_, table_, index(), {id}); }

    int ErrorWalking() {
        return ErrorOf([&] {
            jet::IndexCursor cursor(*file_, table_, index());
            while (cursor.Next()) {
            }
        });
    }

    std::span<std::uint8_t> Root() { return builder_->file().page(index().root); }
    const jet::IndexPageLayout& layout() const { return builder_format().index_page; }
    const jet::Format& builder_format() const { return jet::FormatOf(GetParam()); }

    std::optional<DatabaseBuilder> builder_{std::in_place, GetParam()};
    std::size_t reads_ = 0;
    std::unique_ptr<jet::DatabaseFile> file_;
    jet::TableDefinition table_;
};

TEST_P(Index, OfAnEmptyTableHasNoEntries) {
    Open(AddEvenNumbers(0, {}));
    EXPECT_EQ(Find(0), std::vector<jet::RowId>{});
}

TEST_P(Index, WalksItsEntriesInOrder) {
    for (const bool ascending : {true, false}) {
        for (const bool compressed : {true, false}) {
            for (const std::size_t per_page : {2U, 3U, 5U, 100U}) {
                Open(AddEvenNumbers(100, {.name = "",
                                          .column = "",
                                          .entries_per_page = per_page,
                                          .ascending = ascending,
                                          .compressed = compressed}));
                const IndexCheck check = CheckIndex(*file_, table_, index());
                EXPECT_EQ(check.difference, "");
                EXPECT_EQ(check.entries, 100U);
            }
        }
    }
}

TEST_P(Index, FindsTheRowsWithAKey) {
    for (const bool compressed : {true, false}) {
        Open(AddEvenNumbers(200, {.name = "", .column = "", .entries_per_page = 4, .compressed = compressed}));
        jet::RowReader reader(*file_, table_);
        for (int i = 0; i < 200; ++i) {
            const std::vector<jet::RowId> rows = Find(2 * i);
            ASSERT_EQ(rows.size(), 1U) << i;
            ASSERT_TRUE(reader.Load(rows[0]));
            EXPECT_EQ(reader.Value(1), Variant{i});
            EXPECT_EQ(Find(2 * i + 1), std::vector<jet::RowId>{}) << i;
        }
        EXPECT_EQ(Find(-1), std::vector<jet::RowId>{});
    }
}

TEST_P(Index, FindsAllRowsWithTheSameKeyInTheirOrder) {
    TableBuilder& table = builder_->AddTable("T", {{.name = "Id"}});
    table.AddIndex({.name = "Id", .column = "Id", .entries_per_page = 3});
    std::vector<jet::RowId> sevens;
    for (int i = 0; i < 40; ++i) {
        const jet::RowId id = table.AddRow({i % 2 == 0 ? 7 : i});
        if (i % 2 == 0 || i == 7)
            sevens.push_back(id);
    }
    Open(table);
    EXPECT_EQ(Find(7), sevens);
}

TEST_P(Index, SeeksTheNextGreaterKey) {
    Open(AddEvenNumbers(50, {.name = "", .column = "", .entries_per_page = 4}));
    jet::IndexCursor cursor(*file_, table_, index());
    cursor.Seek(jet::MakeIndexKey(builder_format(), index(), {41}));
    ASSERT_TRUE(cursor.Next());
    EXPECT_EQ(jet::IndexKey(cursor.key().begin(), cursor.key().end()),
              jet::MakeIndexKey(builder_format(), index(), {42}));
    cursor.Seek(jet::MakeIndexKey(builder_format(), index(), {1000}));
    EXPECT_FALSE(cursor.Next());
}

TEST_P(Index, LookUpReadsFewPagesWhateverTheSizeOfTheTable) {
    Open(AddEvenNumbers(8000, {.name = "", .column = "", .entries_per_page = 60}));
    ASSERT_GT(file_->pager().page_count(), 150U);
    const std::size_t before = reads_;
    EXPECT_EQ(Find(7778).size(), 1U);
    EXPECT_LE(reads_ - before, 4U);
}

// As some writers leave a tree when pages have gone: one child, in an ordinary entry.
TEST_P(Index, ANodeWithoutATailLeadsToItsLastChild) {
    const TableBuilder& table = AddEvenNumbers(8, {.name = "", .column = "", .entries_per_page = 4});
    Open(table);
    const jet::IndexPageView root(file_->pager(), index().root, table.page());
    jet::StoreLittle(Root(), layout().tail, std::uint32_t{0});
    jet::StoreLittle(builder_->file().page(root.Child(0)), layout().next, std::uint32_t{0});
    OpenAgain(table);
    EXPECT_EQ(Find(6).size(), 1U);
    EXPECT_EQ(Find(1000).size(), 0U);
}

TEST_P(Index, WhoseLeavesRunInACircleIsDamaged) {
    const TableBuilder& table = AddEvenNumbers(20, {.name = "", .column = "", .entries_per_page = 4});
    Open(table);
    const jet::PageNumber last = jet::LoadU32(Root(), layout().tail);
    jet::StoreLittle(builder_->file().page(last), layout().next, last);
    OpenAgain(table);
    EXPECT_EQ(ErrorWalking(), kDamaged);
}

TEST_P(Index, WhoseTreeRunsInACircleIsDamaged) {
    const TableBuilder& table = AddEvenNumbers(20, {.name = "", .column = "", .entries_per_page = 4});
    Open(table);
    jet::StoreLittle(Root(), layout().tail, index().root);
    OpenAgain(table);
    EXPECT_EQ(ErrorOf([&] { Find(1000); }), kDamaged);
}

TEST_P(Index, WhoseEntriesDoNotAscendIsDamaged) {
    const TableBuilder& table = AddEvenNumbers(3, {});
    Open(table);
    Root()[layout().entries + 1] = 0xFF;
    OpenAgain(table);
    EXPECT_EQ(ErrorWalking(), kDamaged);
}

TEST_P(Index, WhoseEntriesDoNotFitTheirPageIsDamaged) {
    const std::vector<std::pair<std::size_t, std::uint8_t>> faults{
        {layout().mask, std::uint8_t{0x81}},
        {layout().mask + layout().mask_size - 1, std::uint8_t{0x81}},
        {layout().prefix_length, std::uint8_t{200}}};
    for (const auto& [at, byte] : faults) {
        const TableBuilder& table = AddEvenNumbers(3, {});
        Open(table);
        Root()[at] = byte;
        OpenAgain(table);
        EXPECT_EQ(ErrorWalking(), kDamaged) << at;
    }
}

TEST_P(Index, OfAnotherTableOrOnAnotherKindOfPageIsDamaged) {
    const TableBuilder& table = AddEvenNumbers(3, {});
    Open(table);
    jet::StoreLittle(Root(), layout().owner, std::uint32_t{2});
    OpenAgain(table);
    EXPECT_EQ(ErrorWalking(), kDamaged);
    table_.indexes[0].root = 1;
    EXPECT_EQ(ErrorWalking(), kDamaged);
    table_.indexes[0].root = 0xFFFFFFFF;
    EXPECT_EQ(ErrorWalking(), kDamaged);
}

// What the builder makes is what Jet makes: the leaf of a table of the two keys 1 and -2.
TEST_P(Index, FromOurBuilderIsTheSameAsFromJet) {
    const bool jet4 = GetParam() == Generation::kJet4;
    builder_->SkipTo(jet4 ? 16 : 20);
    TableBuilder& table = builder_->AddTable("Pet", {{.name = "Id"}});
    table.AddIndex({.name = "PrimaryKey", .column = "Id", .primary = true});
    table.AddRow({1});
    table.AddRow({-2});
    Open(table);
    const auto part = [&](std::size_t at, std::size_t size) {
        const auto bytes = Root().subspan(at, size);
        return ByteList(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(part(0, 8), Hex(jet4 ? "04 01 0E 0E 10 00 00 00" : "04 01 F6 06 14 00 00 00"));
    EXPECT_EQ(part(8, jet4 ? 19 : 14), ByteList(jet4 ? 19 : 14));
    EXPECT_EQ(part(jet4 ? 27 : 22, 3), Hex("00 02 04"));
    EXPECT_EQ(part(jet4 ? 0x1E0 : 0xF8, 18), jet4 ? Hex("7F 7F FF FF FE 00 00 13 01  7F 80 00 00 01 00 00 13 00")
                                                  : Hex("7F 7F FF FF FE 00 00 17 01  7F 80 00 00 01 00 00 17 00"));
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, Index, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
