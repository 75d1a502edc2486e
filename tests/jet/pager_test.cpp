#include "pager.h"

#include <gtest/gtest.h>

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

}  // namespace

}  // namespace ledgix::test
