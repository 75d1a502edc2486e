#include "entry_mask.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

namespace ledgix::test {

namespace {

constexpr std::size_t kBytes = 37;

using Mask = std::vector<std::uint8_t>;

Mask MaskOf(const std::set<std::size_t>& marks) {
    Mask mask(kBytes);
    for (const std::size_t mark : marks)
        jet::Mark(mask, mark);
    return mask;
}

std::set<std::size_t> RandomMarks(std::mt19937& random) {
    std::set<std::size_t> marks;
    for (std::size_t count = random() % 20; count > 0; --count)
        marks.insert(1 + random() % (8 * kBytes - 1));
    return marks;
}

TEST(EntryMask, MarksOneBitForAPlace) {
    const Mask mask = MaskOf({9, 18});
    EXPECT_EQ(mask[1], 2);
    EXPECT_EQ(mask[2], 4);
    EXPECT_EQ(jet::CountMarks(mask), 2U);
}

TEST(EntryMask, WithoutMarksHasNoLastOne) {
    EXPECT_EQ(jet::LastMark(MaskOf({})), 0U);
    EXPECT_EQ(jet::MarkUpTo(MaskOf({}), 100), 0U);
    EXPECT_EQ(jet::CountMarks(MaskOf({})), 0U);
}

TEST(EntryMask, FindsMarksFromAnyPlace) {
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        const std::set<std::size_t> marks = RandomMarks(random);
        const Mask mask = MaskOf(marks);
        EXPECT_EQ(jet::LastMark(mask), marks.empty() ? 0 : *marks.rbegin());
        for (std::size_t place = 0; place < 8 * kBytes; ++place) {
            const auto next = marks.upper_bound(place);
            EXPECT_EQ(jet::MarkUpTo(mask, place), next == marks.begin() ? 0 : *std::prev(next));
            if (next != marks.end()) {
                EXPECT_EQ(jet::NextMark(mask, place), *next);
            }
        }
    }
}

TEST(EntryMask, MovesTheMarksBehindAPlaceOnAndBack) {
    std::mt19937 random(2);
    for (int round = 0; round < 2000; ++round) {
        const std::set<std::size_t> marks = RandomMarks(random);
        const std::size_t place = random() % (8 * kBytes);
        const std::size_t count = random() % (round % 2 == 0 ? 20 : 8 * kBytes);
        std::set<std::size_t> spread;
        std::set<std::size_t> closed;
        std::set<std::size_t> cut;
        for (const std::size_t mark : marks) {
            if (mark <= place) {
                spread.insert(mark);
                closed.insert(mark);
                cut.insert(mark);
                continue;
            }
            if (mark + count < 8 * kBytes)
                spread.insert(mark + count);
            if (mark > place + count)
                closed.insert(mark - count);
        }
        Mask mask = MaskOf(marks);
        jet::SpreadMarks(mask, place, count);
        EXPECT_EQ(mask, MaskOf(spread)) << place << " " << count;
        mask = MaskOf(marks);
        jet::CloseMarks(mask, place, count);
        EXPECT_EQ(mask, MaskOf(closed)) << place << " " << count;
        mask = MaskOf(marks);
        jet::CutMarks(mask, place);
        EXPECT_EQ(mask, MaskOf(cut)) << place;
    }
}

}  // namespace

}  // namespace ledgix::test
