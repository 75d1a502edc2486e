#include "pager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "forwarding_file.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::Pager;

// Pages whose bytes are all their number.
Pager NumberedPages(std::size_t count) {
    const jet::Format& format = jet::FormatOf(jet::Generation::kJet3);
    std::vector<std::uint8_t> content;
    for (std::size_t i = 0; i < count; ++i)
        content.insert(content.end(), format.page_size, static_cast<std::uint8_t>(i));
    return Pager(jet::MakeMemoryFile(std::move(content)), format);
}

TEST(Pager, CountsThePagesOfTheFile) {
    EXPECT_EQ(NumberedPages(7).page_count(), 7U);
}

TEST(Pager, ReadsThePageAskedFor) {
    Pager pager = NumberedPages(7);
    for (const jet::PageNumber number : {0U, 6U, 3U, 3U}) {
        EXPECT_EQ(pager.Read(number)->number, number);
        EXPECT_EQ(pager.Read(number)->bytes.back(), number);
    }
}

TEST(Pager, RefusesPagesPastTheEnd) {
    Pager pager = NumberedPages(7);
    EXPECT_EQ(ErrorOf([&] { pager.Read(7); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { pager.Read(0xFFFFFFFF); }), kDamaged);
}

TEST(Pager, RefusesAPageOfAnotherKind) {
    Pager pager = NumberedPages(7);
    EXPECT_NO_THROW(pager.Read(4, jet::PageKind::kIndexLeaf, "leaf"));
    EXPECT_EQ(ErrorOf([&] { pager.Read(3, jet::PageKind::kIndexLeaf, "leaf"); }), kDamaged);
}

TEST(Pager, KeepsAPageAsItIsWhileItIsHeld) {
    constexpr jet::PageNumber kMany = 4000;  // more than are kept in memory
    Pager pager = NumberedPages(kMany);
    const jet::PagePtr held = pager.Read(5);
    for (jet::PageNumber number = 0; number < kMany; ++number)
        EXPECT_EQ(pager.Read(number)->bytes[9], static_cast<std::uint8_t>(number));
    EXPECT_EQ(held->number, 5U);
    EXPECT_EQ(held->bytes[100], 5);
    EXPECT_EQ(pager.Read(5)->bytes[100], 5);
}

// Sets all bytes of a page.
void Fill(Pager& pager, jet::PageNumber number, std::uint8_t byte) {
    const auto bytes = pager.Change(number);
    std::fill(bytes.begin(), bytes.end(), byte);
}

TEST(PagerLevels, GiveChangesBackAtOnceAndKeepThemFromTheFile) {
    Pager pager = NumberedPages(3);
    pager.Read(1);
    pager.BeginLevel();
    Fill(pager, 1, 77);
    EXPECT_EQ(pager.Read(1)->bytes[5], 77);
    std::uint8_t in_file = 0;
    pager.file().Read(pager.format().page_size, {&in_file, 1});
    EXPECT_EQ(in_file, 1);
    pager.DropLevel();
    EXPECT_EQ(pager.Read(1)->bytes[5], 1);
}

TEST(PagerLevels, DropWhatTheyChangedAndNothingBelow) {
    Pager pager = NumberedPages(3);
    pager.BeginLevel();
    Fill(pager, 1, 10);
    pager.BeginLevel();
    Fill(pager, 1, 20);
    Fill(pager, 2, 20);
    EXPECT_EQ(pager.Read(1)->bytes[5], 20);
    pager.DropLevel();
    EXPECT_EQ(pager.level_count(), 1U);
    EXPECT_EQ(pager.Read(1)->bytes[5], 10);
    EXPECT_EQ(pager.Read(2)->bytes[5], 2);
    pager.DropLevel();
    EXPECT_EQ(pager.Read(1)->bytes[5], 1);
}

TEST(PagerLevels, HandWhatTheyChangedToTheOneBelow) {
    Pager pager = NumberedPages(4);
    pager.BeginLevel();
    Fill(pager, 1, 10);
    Fill(pager, 3, 10);
    pager.BeginLevel();
    Fill(pager, 1, 20);
    Fill(pager, 2, 20);
    pager.MergeLevel();
    std::vector<std::pair<jet::PageNumber, int>> changed;
    for (const jet::PagePtr& page : pager.ChangedPages())
        changed.emplace_back(page->number, page->bytes[5]);
    EXPECT_EQ(changed, (std::vector<std::pair<jet::PageNumber, int>>{{1, 20}, {2, 20}, {3, 10}}));
    pager.DropLevel();
    EXPECT_EQ(pager.Read(2)->bytes[5], 2);
}

TEST(PagerLevels, StartTheirChangeFromTheOneBelow) {
    Pager pager = NumberedPages(2);
    pager.BeginLevel();
    pager.Change(1)[0] = 10;
    pager.BeginLevel();
    pager.Change(1)[1] = 20;
    EXPECT_EQ(pager.Read(1)->bytes[0], 10);
    EXPECT_EQ(pager.Read(1)->bytes[1], 20);
    pager.DropLevel();
    EXPECT_EQ(pager.Read(1)->bytes[1], 1);
}

TEST(PagerLevels, GrowTheFileUntilTheyAreDropped) {
    Pager pager = NumberedPages(3);
    pager.BeginLevel();
    EXPECT_EQ(pager.Append(), 3U);
    pager.BeginLevel();
    EXPECT_EQ(pager.Append(), 4U);
    EXPECT_EQ(pager.page_count(), 5U);
    EXPECT_EQ(pager.size(), 5 * pager.format().page_size);
    EXPECT_EQ(pager.Read(4)->bytes, std::vector<std::uint8_t>(pager.format().page_size));
    pager.DropLevel();
    EXPECT_EQ(pager.page_count(), 4U);
    EXPECT_EQ(ErrorOf([&] { pager.Read(4); }), kDamaged);
    EXPECT_EQ(pager.page_count_before(), 3U);
    pager.DropLevel();
    EXPECT_EQ(pager.page_count(), 3U);
}

TEST(PagerLevels, KeepPagesThatTheLevelAboveAppended) {
    Pager pager = NumberedPages(3);
    pager.BeginLevel();
    pager.BeginLevel();
    Fill(pager, pager.Append(), 9);
    pager.MergeLevel();
    EXPECT_EQ(pager.page_count(), 4U);
    EXPECT_EQ(pager.Read(3)->bytes[5], 9);
}

TEST(PagerLevels, GiveZerosWhereAPageIsOverwritten) {
    Pager pager = NumberedPages(3);
    pager.BeginLevel();
    Fill(pager, 2, 10);
    EXPECT_EQ(pager.Overwrite(2)[5], 0);
    EXPECT_EQ(pager.Read(2)->bytes, std::vector<std::uint8_t>(pager.format().page_size));
    EXPECT_EQ(ErrorOf([&] { pager.Overwrite(3); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { pager.Change(3); }), kDamaged);
}

TEST(PagerLevels, LeaveAHeldPageAsItWas) {
    Pager pager = NumberedPages(3);
    const jet::PagePtr before = pager.Read(1);
    pager.BeginLevel();
    Fill(pager, 1, 10);
    const jet::PagePtr between = pager.Read(1);
    Fill(pager, 1, 20);
    EXPECT_EQ(before->bytes[5], 1);
    EXPECT_EQ(between->bytes[5], 10);
    EXPECT_EQ(pager.Read(1)->bytes[5], 20);
    pager.Overwrite(1);
    EXPECT_EQ(between->bytes[5], 10);
}

TEST(PagerLevels, AreReadFromMemoryWhenTheirPagesAreInTheFile) {
    Pager pager = NumberedPages(3);
    pager.BeginLevel();
    Fill(pager, 1, 10);
    Fill(pager, pager.Append(), 30);
    pager.KeepLevel();
    EXPECT_EQ(pager.level_count(), 0U);
    EXPECT_EQ(pager.page_count(), 4U);
    EXPECT_EQ(pager.Read(1)->bytes[5], 10);
    EXPECT_EQ(pager.Read(3)->bytes[5], 30);
}

// Claims to be so long.
class LongFile : public ForwardingFile {
public:
    LongFile(std::unique_ptr<jet::PageFile> file, std::uint64_t size) : ForwardingFile(std::move(file)), size_(size) {}
    std::uint64_t size() const override { return size_; }

private:
    std::uint64_t size_;
};

TEST(PagerLevels, MakeNoFileLongerThanItsGenerationAllows) {
    constexpr int kDiskFull = 3026;
    for (const jet::Generation generation : {jet::Generation::kJet3, jet::Generation::kJet4}) {
        const jet::Format& format = jet::FormatOf(generation);
        Pager pager(std::make_unique<LongFile>(jet::MakeMemoryFile({}), format.longest_file - format.page_size),
                    format);
        pager.BeginLevel();
        EXPECT_EQ(ErrorOf([&] { pager.Append(); }), 0);
        EXPECT_EQ(ErrorOf([&] { pager.Append(); }), kDiskFull);
        pager.DropLevel();
    }
}

TEST(Pager, ReadsAnewAfterItForgot) {
    Pager pager = NumberedPages(3);
    EXPECT_EQ(pager.Read(1)->bytes[5], 1);
    const std::vector<std::uint8_t> other(2 * pager.format().page_size, 99);
    pager.file().Write(pager.format().page_size, other);
    pager.file().Write(3 * pager.format().page_size, other);
    EXPECT_EQ(pager.Read(1)->bytes[5], 1);
    EXPECT_EQ(pager.page_count(), 3U);
    pager.Forget();
    EXPECT_EQ(pager.Read(1)->bytes[5], 99);
    EXPECT_EQ(pager.page_count(), 5U);
}

}  // namespace

}  // namespace ledgix::test
