#include "gradient_bands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>

#include "cases.h"

namespace ledgix::controls {
namespace {

using test::Json;

constexpr std::int32_t kBlack = 0;
constexpr std::int32_t kYellow = 0xFFFF;

Gradient Between(std::int32_t start, std::int32_t end) {
    Gradient gradient;
    gradient.SetStartColour(start);
    gradient.SetEndColour(end);
    return gradient;
}

class GradientColours : public testing::TestWithParam<Json> {};
TEST_P(GradientColours, AreAsListed) {
    const Gradient gradient = Between(GetParam().at("StartColour").get<int>(), GetParam().at("EndColour").get<int>());
    const int count = GetParam().at("ColourBandCount").get<int>();
    std::vector<int> colours;
    for (int band = 0; band <= count; ++band) {
        colours.push_back(gradient.BandColour(band, count));
    }
    EXPECT_EQ(colours, GetParam().at("bands").get<std::vector<int>>());
}
INSTANTIATE_TEST_SUITE_P(, GradientColours,
                         testing::ValuesIn(test::CaseList(test::LoadCases("gradient.json").at("bands"))),
                         test::CaseName);

class GradientDepth : public testing::TestWithParam<Json> {};
TEST_P(GradientDepth, DecidesAsListed) {
    const int depth = ColourDepth(GetParam().at("bitsPerPixel").get<int>(), GetParam().at("planes").get<int>());
    EXPECT_EQ(PaintsGradient(depth), GetParam().at("painted").get<bool>());
}
INSTANTIATE_TEST_SUITE_P(, GradientDepth,
                         testing::ValuesIn(test::CaseList(test::LoadCases("gradient.json").at("painted"))),
                         test::CaseName);

TEST(Gradient, ShadesFromBlackToYellowByDefault) {
    const Gradient gradient;
    EXPECT_EQ(gradient.BandColour(0), kBlack);
    EXPECT_EQ(gradient.BandColour(0.5), 0x8080);
    EXPECT_EQ(gradient.BandColour(1), kYellow);
}

TEST(Gradient, IsFlatBetweenEqualColours) {
    const Gradient gradient = Between(0x336699, 0x336699);
    for (int band = 0; band <= 100; ++band) {
        EXPECT_EQ(gradient.BandColour(band, 100), 0x336699);
    }
}

TEST(Gradient, HasRedInTheLowByte) {
    EXPECT_EQ(Between(0x0000FF, 0xFF0000).BandColour(0.25), 0x4000BF);
}

TEST(Gradient, TakesHalvesToTheEvenNumber) {
    EXPECT_EQ(Between(0, 1).BandColour(0.5), 0);
    EXPECT_EQ(Between(0, 3).BandColour(0.5), 2);
    EXPECT_EQ(Between(3, 0).BandColour(0.5), 2);
}

TEST(Gradient, IgnoresTheHighByte) {
    EXPECT_EQ(Between(static_cast<std::int32_t>(0x80123456), 0).BandColour(0), 0x123456);
}

TEST(Gradient, IsNotPaintedIn256Colours) {
    EXPECT_FALSE(PaintsGradient(ColourDepth(8, 1)));
    EXPECT_TRUE(PaintsGradient(ColourDepth(16, 1)));
}

TEST(BandDirection, IsAnotherForEachStyle) {
    const std::set<BandDirection> directions{DirectionOf(0), DirectionOf(1), DirectionOf(2), DirectionOf(3),
                                             DirectionOf(4)};
    EXPECT_EQ(directions.size(), 5U);
}

TEST(BandDirection, OfAllOtherStylesIsTheSame) {
    EXPECT_EQ(DirectionOf(-1), DirectionOf(4));
    EXPECT_EQ(DirectionOf(2147483647), DirectionOf(4));
}

TEST(BandThickness, IsTheWholeShareOfABand) {
    EXPECT_EQ(BandThickness(4500, 100), 45);
    EXPECT_EQ(BandThickness(4530, 100), 45);
    EXPECT_EQ(BandThickness(4450, 100), 44);
    EXPECT_EQ(BandThickness(4550, 100), 46);
    EXPECT_EQ(BandThickness(30, 100), 0);
}

TEST(BandThickness, StaysWithin16Bits) {
    EXPECT_EQ(BandThickness(60000, 1), 32767);
}

// Where the strips of a direction begin and end along the way that they run, in the order of the container.
std::vector<std::pair<double, double>> Spans(BandDirection direction, double width, double height, int count) {
    const bool across = direction == BandDirection::kRight || direction == BandDirection::kLeft;
    std::vector<std::pair<double, double>> spans;
    for (const BandStrip& strip : BandStrips(direction, width, height, count)) {
        EXPECT_EQ(across ? strip.top : strip.left, 0);
        EXPECT_EQ(across ? strip.height : strip.width, across ? height : width);
        const double from = across ? strip.left : strip.top;
        spans.emplace_back(from, from + (across ? strip.width : strip.height));
    }
    std::sort(spans.begin(), spans.end());
    return spans;
}

class EveryDirection : public testing::TestWithParam<int> {};
TEST_P(EveryDirection, CoversAContainerOfAnySizeWithoutGap) {
    const BandDirection direction = DirectionOf(GetParam());
    for (const double size : {1.0, 15.0, 40.0, 1049.0, 1060.0, 4500.0, 28800.0, 57600.0}) {
        for (const int count : {1, 2, 3, 100, 32767}) {
            const auto spans = Spans(direction, size, size, count);
            ASSERT_EQ(spans.size(), static_cast<std::size_t>(count + 1) * (GetParam() == 4 ? 2 : 1));
            EXPECT_EQ(spans.front().first, 0);
            EXPECT_NEAR(spans.back().second, size, 1e-6);
            for (std::size_t i = 1; i < spans.size(); ++i) {
                ASSERT_NEAR(spans[i].first, spans[i - 1].second, 1e-6) << size << " " << count;
            }
        }
    }
}
INSTANTIATE_TEST_SUITE_P(, EveryDirection, testing::Range(0, 5));

TEST(BandStrips, BeginAtTheStartEdgeAndEndAtTheFarOne) {
    const auto down = BandStrips(BandDirection::kDown, 300, 500, 10);
    EXPECT_EQ(down.front(), (BandStrip{0, 0, 0, 300, 45}));
    EXPECT_EQ(down.back(), (BandStrip{10, 0, 450, 300, 50}));
    EXPECT_EQ(BandStrips(BandDirection::kUp, 300, 500, 10).front(), (BandStrip{0, 0, 455, 300, 45}));
    EXPECT_EQ(BandStrips(BandDirection::kRight, 500, 300, 10).front(), (BandStrip{0, 0, 0, 45, 300}));
    EXPECT_EQ(BandStrips(BandDirection::kLeft, 500, 300, 10).front(), (BandStrip{0, 455, 0, 45, 300}));
}

TEST(BandStrips, ShowBothColoursWithASingleBand) {
    const std::vector<BandStrip> halves{{0, 0, 0, 300, 250}, {1, 0, 250, 300, 250}};
    EXPECT_EQ(BandStrips(BandDirection::kDown, 300, 500, 1), halves);
}

TEST(BandStrips, RunBothWaysFromTheMiddle) {
    const auto strips = BandStrips(BandDirection::kFromMiddle, 300, 500, 10);
    EXPECT_EQ(strips[0], (BandStrip{0, 0, 227.5, 300, 22.5}));
    EXPECT_EQ(strips[1], (BandStrip{0, 0, 250, 300, 22.5}));
    EXPECT_EQ(strips[20], (BandStrip{10, 0, 0, 300, 25}));
    EXPECT_EQ(strips[21], (BandStrip{10, 0, 475, 300, 25}));
}

TEST(BandStrips, ComeInTheOrderOfTheBands) {
    int band = 0;
    for (const BandStrip& strip : BandStrips(BandDirection::kLeft, 500, 300, 100)) {
        EXPECT_EQ(strip.band, band++);
    }
    EXPECT_EQ(band, 101);
}

TEST(BandStrips, AreNoneWithoutBandsOrRoom) {
    EXPECT_TRUE(BandStrips(BandDirection::kDown, 300, 300, 0).empty());
    EXPECT_TRUE(BandStrips(BandDirection::kDown, 300, 300, -1).empty());
    EXPECT_TRUE(BandStrips(BandDirection::kDown, 0, 300, 10).empty());
    EXPECT_TRUE(BandStrips(BandDirection::kRight, 300, 0, 10).empty());
}

}  // namespace
}  // namespace ledgix::controls
