#include "amount_edit.h"

#include <gtest/gtest.h>

#include <random>

#include "amount_keys.h"
#include "cases.h"
#include "conversions.h"
#include "pasted_amount.h"
#include "regions.h"
#include "text.h"

namespace ledgix::controls {
namespace {

using nlohmann::json;
using test::CaseName;
using test::Germany;

constexpr AmountRules kWhole{{0, false}};
constexpr AmountRules kCents{{2, false}};
constexpr AmountRules kSigned{{2, true}};
constexpr const char* kRefused = "refused";

// "12[3]4" is 1234 with its 3 selected; "12|34" has the caret behind the 2.
EditPoint At(const std::string& drawn) {
    if (const std::size_t caret = drawn.find('|'); caret != std::string::npos)
        return {drawn.substr(0, caret), "", drawn.substr(caret + 1)};
    const std::size_t open = drawn.find('[');
    const std::size_t close = drawn.find(']');
    return {drawn.substr(0, open), drawn.substr(open + 1, close - open - 1), drawn.substr(close + 1)};
}

std::string Typed(const std::string& drawn, char key, const AmountRules& rules) {
    return TypeKey(At(drawn), key, rules).value_or(kRefused);
}
std::string Pasted(const std::string& drawn, std::string_view text, const AmountRules& rules) {
    return PasteText(At(drawn), text, rules, runtime::UnitedStates()).value_or(kRefused);
}

TEST(TypedKey, ReplacesAZero) {
    EXPECT_EQ(Typed("0|", '7', kWhole), "7");
}

TEST(TypedKey, OfAMinusMovesToTheFront) {
    EXPECT_EQ(Typed("5|", '-', kSigned), "-5");
    EXPECT_EQ(Typed("5|", '-', kCents), kRefused);
}

TEST(TypedKey, OfAPointIsRefusedWithoutDecimals) {
    EXPECT_EQ(Typed("12|", '.', kWhole), kRefused);
}

TEST(TypedKey, OfAPointMayReplaceTheOldPoint) {
    EXPECT_EQ(Typed("12[.50]", '.', kCents), "12.");
    EXPECT_EQ(Typed("[12.50]", '.', kCents), kRefused);
}

TEST(TypedKey, OverEverythingThatIsNoNumberGivesZero) {
    EXPECT_EQ(Typed("[12]", '.', kCents), "0");
    EXPECT_EQ(Typed("[12]", '-', kSigned), "0");
}

TEST(TypedKey, DoesNotGoBeforeTheMinus) {
    EXPECT_EQ(Typed("|-5", '3', kSigned), kRefused);
    EXPECT_EQ(Typed("|-5", '.', kSigned), kRefused);
}

TEST(TypedKey, IsRefusedBeyondTheLength) {
    EXPECT_EQ(Typed("123|", '4', {{0, false}, 3}), kRefused);
    EXPECT_EQ(Typed("0|", '4', {{0, false}, 1}), "4");
}

TEST(TypedKey, IsRefusedBeyondADouble) {
    EXPECT_EQ(Typed("1" + std::string(308, '0') + "|", '0', kWhole), kRefused);
}

TEST(PastedText, ReplacesAZeroOrTheSelectedWhole) {
    EXPECT_EQ(Pasted("0|", "$1,234.50", kCents), "1234.50");
    EXPECT_EQ(Pasted("[99]", "$1,234.50", kCents), "1234.50");
    EXPECT_EQ(Pasted("[99]", "12.9", kWhole), "12");
}

TEST(PastedText, AmidDigitsIsDigits) {
    EXPECT_EQ(Pasted("12|", "34", kCents), "1234");
    EXPECT_EQ(Pasted("12|", ".5", kCents), "12.5");
    EXPECT_EQ(Pasted("1|.5", "2.5", kCents), kRefused);
    EXPECT_EQ(Pasted("12|", "1,234", kCents), kRefused);
    EXPECT_EQ(Pasted("12|", "-5", kSigned), kRefused);
    EXPECT_EQ(Pasted("|-5", "3", kSigned), kRefused);
}

TEST(PastedText, LosesAMinusThatIsNotAllowed) {
    EXPECT_EQ(Pasted("0|", "-5", kCents), "5");
    EXPECT_EQ(Pasted("0|", "-5", kSigned), "-5");
}

TEST(PastedText, InParenthesesIsRefusedWithoutNegatives) {
    EXPECT_EQ(Pasted("0|", "(5)", kCents), kRefused);
    EXPECT_EQ(Pasted("0|", "(5)", kSigned), "-5");
}

TEST(PastedText, ThatIsTooLongIsRefusedAndNotCut) {
    EXPECT_EQ(Pasted("0|", "12345", {{0, false}, 4}), kRefused);
    EXPECT_EQ(Pasted("0|", "12.345", {{2, false}, 5}), "12.34");
}

TEST(DroppedText, ReplacesTheAmount) {
    EXPECT_EQ(DropText("1.234,50 €", kCents, Germany()), "1234.50");
    EXPECT_EQ(DropText("apple", kCents, Germany()), std::nullopt);
}

// A box without a window: the caret is behind the text, or all of it is selected.
class Box {
public:
    explicit Box(const json& settings)
        : numeric_(settings.at("IsNumeric")),
          rules_{{settings.at("DecimalPlaces"), settings.at("AllowNegative")}},
          text_(settings.at("Text")) {}

    void Do(const json& step) {
        if (step.contains("focus"))
            all_selected_ = true;
        for (const char key : step.value("type", ""))
            Press(key);
        if (step.contains("set"))
            Change(numeric_ ? CleanAssignedAmount(step["set"].get<std::string>(), '.', rules_.limits)
                            : step["set"].get<std::string>());
    }

    const std::string& text() const { return text_; }
    int changes() const { return changes_; }

private:
    void Press(char key) {
        const EditPoint at = all_selected_ ? EditPoint{"", text_, ""} : EditPoint{text_, "", ""};
        if (key == '\b')
            Change(CleanAmount(at.before.substr(0, at.before.size() - (at.before.empty() ? 0 : 1)), rules_.limits));
        else if (const auto text = TypeKey(at, AmountKey(static_cast<char32_t>(key), false, '.'), rules_))
            Change(*text);
    }

    void Change(const std::string& text) {
        text_ = text;
        all_selected_ = false;
        ++changes_;
    }

    bool numeric_;
    AmountRules rules_;
    std::string text_;
    bool all_selected_ = false;
    int changes_ = 0;
};

class NumericBox : public testing::TestWithParam<json> {};
TEST_P(NumericBox, ShowsAndCountsAsListed) {
    Box box(GetParam());
    json texts = json::array();
    for (const json& step : GetParam().at("steps")) {
        box.Do(step);
        texts.push_back(box.text());
    }
    EXPECT_EQ(texts, GetParam().at("TextAfterEachStep"));
    EXPECT_EQ(AmountValue(box.text()), GetParam().at("Value").get<double>());
    EXPECT_EQ(box.changes(), GetParam().at("ChangeEvents").get<int>());
}
INSTANTIATE_TEST_SUITE_P(, NumericBox, testing::ValuesIn(test::CaseList(test::LoadCases("numeric_text_box.json"))),
                         CaseName);

// What a text may look like at any time: a number of the allowed form, or on its way to one.
void ExpectAdmissible(const std::string& text, const AmountLimits& limits) {
    ASSERT_FALSE(text.empty());
    const bool negative = text.front() == '-';
    EXPECT_TRUE(limits.allow_negative || !negative);
    const std::string digits = text.substr(negative ? 1 : 0);
    EXPECT_EQ(digits.find_first_not_of("0123456789."), std::string::npos);
    const std::size_t point = digits.find('.');
    EXPECT_EQ(point, digits.rfind('.'));
    EXPECT_TRUE(point == std::string::npos || limits.decimal_places > 0);
    const std::size_t decimals = point == std::string::npos ? 0 : digits.size() - point - 1;
    EXPECT_LE(decimals, static_cast<std::size_t>(limits.decimal_places));
    EXPECT_EQ(AmountValue(text), runtime::LeadingNumber(text));
}

class RandomEdits {
public:
    RandomEdits(unsigned seed, runtime::RegionalSettings region) : random_(seed), region_(std::move(region)) {}

    std::string Next(const std::string& text, const AmountRules& rules) {
        const std::size_t from = Below(text.size() + 1);
        const std::size_t count = Below(text.size() - from + 1);
        const EditPoint at{text.substr(0, from), text.substr(from, count), text.substr(from + count)};
        switch (Below(4)) {
            case 0:
                return PasteText(at, Junk(), rules, region_).value_or(text);
            case 1:
                return CleanAmount(at.before + at.after, rules.limits);
            case 2:
                return CleanAssignedAmount(Junk(), DecimalSeparator(region_), rules.limits);
            default:
                return TypeKey(at, Key(), rules).value_or(text);
        }
    }

    std::size_t Below(std::size_t bound) { return random_() % bound; }

private:
    char Key() { return AmountKey(Pick(), Below(2) == 0, DecimalSeparator(region_)); }
    char32_t Pick() {
        constexpr std::u32string_view kCharacters = U"0123456789012345678900..,,--+ '()$eE€\u202Fx";
        return kCharacters[Below(kCharacters.size())];
    }
    std::string Junk() {
        std::string junk;
        for (std::size_t i = Below(12); i > 0; --i)
            runtime::AppendUtf8(junk, Pick());
        return junk;
    }

    std::mt19937 random_;
    runtime::RegionalSettings region_;
};

TEST(AnyEdits, LeaveANumberThatTheTextShows) {
    constexpr unsigned kSeed = 20031;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    for (const auto& region : {runtime::UnitedStates(), Germany()}) {
        RandomEdits edits(kSeed, region);
        for (int box = 0; box < 400 && !testing::Test::HasFailure(); ++box) {
            const AmountRules rules{{static_cast<int>(edits.Below(5)), edits.Below(2) == 0}, edits.Below(2) * 9};
            std::string text = "0";
            for (int step = 0; step < 60 && !testing::Test::HasFailure(); ++step) {
                text = edits.Next(text, rules);
                SCOPED_TRACE(text);
                ExpectAdmissible(text, rules.limits);
            }
        }
    }
}

// Grouped as the region does it, an amount is pasted unchanged, whatever stands around it.
TEST(AnyAmount, SurvivesBeingWrittenAndPasted) {
    constexpr unsigned kSeed = 711;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    for (int i = 0; i < 2000; ++i) {
        const auto thousands = static_cast<int>(random() % 900) + 1;
        const auto rest = static_cast<int>(random() % 1000);
        const auto cents = static_cast<int>(random() % 100);
        char written[40];
        std::snprintf(written, sizeof written, "%d,%03d.%02d", thousands, rest, cents);
        const double amount = thousands * 1000 + rest + cents / 100.0;
        const auto here = DropText("$" + std::string(written), kCents, runtime::UnitedStates());
        const auto there = DropText(ExchangeSeparators(written, ',') + " €", kCents, Germany());
        ASSERT_EQ(AmountValue(here.value_or("")), amount) << written;
        ASSERT_EQ(AmountValue(there.value_or("")), amount) << written;
    }
}

}  // namespace
}  // namespace ledgix::controls
