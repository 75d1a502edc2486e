#include "rollback_journal.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "byte_order.h"
#include "jet_test.h"
#include "temporary_folder.h"

namespace ledgix::test {

namespace {

using Content = std::vector<std::uint8_t>;

constexpr std::size_t kPageSize = 16;

// A "database" of four small pages, 00 to 03. A change makes page 1 full of 91, page 3 of 93, and appends one of 94.
class RollbackJournal : public testing::Test {
protected:
    RollbackJournal() { Store(Original()); }

    static Content Pages(const std::vector<std::uint8_t>& bytes) {
        Content content;
        for (const std::uint8_t byte : bytes)
            content.insert(content.end(), kPageSize, byte);
        return content;
    }
    static Content Original() { return Pages({0, 1, 2, 3}); }
    static Content Halfway() { return Pages({0, 0x91, 2, 3, 0x94}); }
    static Content Changed() { return Pages({0, 0x91, 2, 0x93, 0x94}); }
    static std::vector<jet::PagePtr> Change() {
        std::vector<jet::PagePtr> pages;
        for (const jet::PageNumber number : {1U, 3U, 4U})
            pages.push_back(std::make_shared<jet::Page>(
                jet::Page{number, Content(kPageSize, static_cast<std::uint8_t>(0x90 + number))}));
        return pages;
    }

    void Store(const Content& content) { WriteFile("db.mdb", content); }
    void WriteFile(const std::string& name, const Content& content) {
        folder_.Write(name, {reinterpret_cast<const char*>(content.data()), content.size()});
    }
    Content ReadFile(const std::string& name) const {
        const std::string content = test::Content(folder_.File(name));
        return {content.begin(), content.end()};
    }
    std::unique_ptr<jet::PageFile> Open() {
        return jet::DiskFileSystem().Open(folder_.File("db.mdb"), jet::OpenMode::kReadWrite);
    }
    jet::RollbackJournal Journal() { return {jet::DiskFileSystem(), folder_.File("db.mdb")}; }

    // A complete journal of the change.
    Content MakeJournal() {
        Journal().Write(*Open(), 4, Change());
        return ReadFile("db.mdb.journal");
    }
    void Recover() { Journal().Recover(*Open()); }

    // The journal is not one that counts.
    void ExpectIgnored(const Content& journal, const std::string& what) {
        Store(Halfway());
        WriteFile("db.mdb.journal", journal);
        Recover();
        EXPECT_EQ(ReadFile("db.mdb"), Halfway()) << what;
        EXPECT_EQ(folder_.List(), "db.mdb") << what;
    }

    TemporaryFolder folder_;
};

TEST_F(RollbackJournal, KeepsThePagesAsTheyWere) {
    const Content journal = MakeJournal();
    ASSERT_EQ(journal.size(), 32 + 3 * 12 + 2 * kPageSize);
    EXPECT_EQ(std::string(journal.begin(), journal.begin() + 8), "LGXJRNL1");
    EXPECT_EQ(jet::LoadU32(journal, 8), kPageSize);
    EXPECT_EQ(jet::LoadU32(journal, 12), 4U) << "pages before";
    EXPECT_EQ(jet::LoadU32(journal, 16), 3U) << "pages changed";
    EXPECT_EQ(jet::LoadU32(journal, 20), 2U) << "pages kept";
    EXPECT_EQ(jet::LoadU32(journal, 32), 1U);
    EXPECT_EQ(jet::LoadU32(journal, 44), 3U);
    EXPECT_EQ(jet::LoadU32(journal, 56), 4U);
    EXPECT_EQ(journal[68], 1);
    EXPECT_EQ(journal[68 + kPageSize], 3);
    EXPECT_EQ(ReadFile("db.mdb"), Original());
}

TEST_F(RollbackJournal, BringsTheFileBackAndGoes) {
    MakeJournal();
    Store(Halfway());
    EXPECT_TRUE(Journal().Exists());
    Recover();
    EXPECT_EQ(ReadFile("db.mdb"), Original());
    EXPECT_EQ(folder_.List(), "db.mdb");
    EXPECT_FALSE(Journal().Exists());
}

TEST_F(RollbackJournal, UndoesAnyPartOfAChange) {
    const std::vector<Content> states{Original(), Pages({0, 0x91, 2, 3}), Pages({0, 1, 2, 0x93, 0x94}),
                                      Pages({0, 0x91, 2, 0x93}), Pages({0, 0x91, 2, 0x93, 0})};
    for (const Content& state : states) {
        Store(Original());
        MakeJournal();
        Store(state);
        Recover();
        EXPECT_EQ(ReadFile("db.mdb"), Original());
    }
}

TEST_F(RollbackJournal, LeavesACompleteChangeAlone) {
    MakeJournal();
    Store(Changed());
    Recover();
    EXPECT_EQ(ReadFile("db.mdb"), Changed());
    EXPECT_EQ(folder_.List(), "db.mdb");
}

TEST_F(RollbackJournal, TakesACompleteChangeBackWhenItIsTold) {
    MakeJournal();
    Store(Changed());
    Journal().Undo(*Open());
    EXPECT_EQ(ReadFile("db.mdb"), Original());
    EXPECT_EQ(folder_.List(), "db.mdb");
}

TEST_F(RollbackJournal, MakesAFileLongerAgain) {
    MakeJournal();
    Store(Content(kPageSize));
    Recover();
    EXPECT_EQ(ReadFile("db.mdb").size(), 4 * kPageSize);
}

TEST_F(RollbackJournal, OfAFileThatOnlyGrewCutsIt) {
    Journal().Write(*Open(), 4, {Change().back()});
    Store(Pages({0, 1, 2, 3, 0x55}));
    Recover();
    EXPECT_EQ(ReadFile("db.mdb"), Original());
}

TEST_F(RollbackJournal, ChangesNothingWhenItIsCutOffAnywhere) {
    const Content whole = MakeJournal();
    for (std::size_t size = 0; size < whole.size(); ++size)
        ExpectIgnored({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}, std::to_string(size));
}

TEST_F(RollbackJournal, ChangesNothingWhenAnyByteIsWrong) {
    const Content whole = MakeJournal();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        Content damaged = whole;
        damaged[at] ^= 0x10;
        ExpectIgnored(damaged, std::to_string(at));
    }
}

TEST_F(RollbackJournal, ChangesNothingWhenMoreFollows) {
    Content longer = MakeJournal();
    longer.push_back(0);
    ExpectIgnored(longer, "longer");
}

TEST_F(RollbackJournal, GoesWhenTheChangeIsComplete) {
    MakeJournal();
    Journal().Discard();
    EXPECT_EQ(folder_.List(), "db.mdb");
    EXPECT_EQ(ErrorOf([&] { Journal().Discard(); }), 0);
}

TEST_F(RollbackJournal, IsNotLeftWhenAPageCannotBeRead) {
    Store(Pages({0, 1}));
    EXPECT_NE(ErrorOf([&] { MakeJournal(); }), 0);
    EXPECT_EQ(folder_.List(), "db.mdb");
}

TEST_F(RollbackJournal, StandsBesideTheFileThatALinkNames) {
    const std::string link = folder_.MakeFolder("elsewhere") + "/link.mdb";
    std::error_code failure;
    std::filesystem::create_symlink(folder_.File("db.mdb"), link, failure);
    if (failure)
        GTEST_SKIP() << "links can't be made here";
    MakeJournal();
    EXPECT_TRUE(jet::RollbackJournal(jet::DiskFileSystem(), link).Exists());
}

}  // namespace

}  // namespace ledgix::test
