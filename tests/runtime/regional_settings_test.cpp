#include "regional_settings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <list>

#include "formats.h"
#include "scoped_environment.h"
#include "scoped_region.h"
#include "temporary_folder.h"

#ifdef __GLIBC__
// The C library's newlocale never frees what it has split LOCPATH into.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:__argz_add_sep";
}
#endif

namespace ledgix::runtime {
namespace {

using test::ScopedEnvironment;

// The environment of a user who has chosen one locale for everything.
class UserOf {
public:
    explicit UserOf(const std::string& locale) : all_("LC_ALL", locale) {}

private:
    ScopedEnvironment all_;
};

void ExpectUnitedStates(const RegionalSettings& settings) {
    EXPECT_EQ(FormatCurrency(-1234567.5, settings), "-$1,234,567.50");
    EXPECT_EQ(settings.short_date, "m/d/yyyy");
    EXPECT_EQ(settings.month_abbreviations, UnitedStates().month_abbreviations);
    EXPECT_EQ(settings.paper, Paper::kLetter);
}

TEST(RegionalSettingsOfTheUser, AreThoseOfTheUnitedStatesInTheCLocale) {
    for (const char* locale : {"C", "POSIX", "C.UTF-8"}) {
        SCOPED_TRACE(locale);
        const UserOf user(locale);
        ExpectUnitedStates(ReadUserSettings());
    }
}

TEST(RegionalSettingsOfTheUser, AreThoseOfTheUnitedStatesWithoutALocale) {
    const ScopedEnvironment all("LC_ALL", std::nullopt);
    const ScopedEnvironment money("LC_MONETARY", std::nullopt);
    const ScopedEnvironment time("LC_TIME", std::nullopt);
    const ScopedEnvironment paper("LC_PAPER", std::nullopt);
    const ScopedEnvironment language("LANG", std::nullopt);
    ExpectUnitedStates(ReadUserSettings());
}

TEST(RegionalSettingsOfTheUser, AreThoseOfTheUnitedStatesInAnUnknownLocale) {
    const UserOf user("xx_YY.UTF-8");
    ExpectUnitedStates(ReadUserSettings());
}

TEST(Region, IsWhatWasInstalled) {
    RegionalSettings euro = UnitedStates();
    euro.currency_symbol = "€";
    const test::ScopedRegion outer;
    {
        const test::ScopedRegion region(euro);
        EXPECT_EQ(Region().currency_symbol, "€");
    }
    EXPECT_EQ(Region().currency_symbol, "$");
}

#ifdef __GLIBC__

constexpr const char* kNotBuilt = "localedef cannot build the locale";

// Locales that a test builds for itself from the system's descriptions of them.
class BuiltLocale : public testing::Test {
protected:
    // Makes `name` the user's locale. False when the system lacks what it takes to build it.
    bool Use(const std::string& name, const std::string& description, const std::string& encoding) {
        const std::string command =
            "localedef -i " + description + " -f " + encoding + " '" + folder_.File(name) + "' >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0)
            return false;
        variables_.emplace_back("LOCPATH", folder_.path());
        variables_.emplace_back("LC_ALL", name);
        return true;
    }

private:
    test::TemporaryFolder folder_;
    std::list<ScopedEnvironment> variables_;
};

TEST_F(BuiltLocale, OfGermanyHasEurosBehindTheAmount) {
    if (!Use("de_DE.UTF-8", "de_DE", "UTF-8"))
        GTEST_SKIP() << kNotBuilt;
    const RegionalSettings germany = ReadUserSettings();
    EXPECT_EQ(FormatCurrency(1234567.5, germany), "1.234.567,50 €");
    EXPECT_EQ(FormatCurrency(-1.5, germany), "-1,50 €");
    EXPECT_EQ(germany.short_date, "dd.mm.yyyy");
    EXPECT_EQ(germany.month_abbreviations[2], "Mär");
    EXPECT_EQ(germany.paper, Paper::kA4);
}

TEST_F(BuiltLocale, InAnEncodingOfItsOwnIsReadAsUtf8) {
    if (!Use("de_DE.ISO-8859-15", "de_DE@euro", "ISO-8859-15"))
        GTEST_SKIP() << kNotBuilt;
    const RegionalSettings germany = ReadUserSettings();
    EXPECT_EQ(germany.currency_symbol, "€");
    EXPECT_EQ(germany.month_abbreviations[2], "Mär");
}

TEST_F(BuiltLocale, OfIndiaGroupsByTwo) {
    if (!Use("en_IN.UTF-8", "en_IN", "UTF-8"))
        GTEST_SKIP() << kNotBuilt;
    const RegionalSettings india = ReadUserSettings();
    EXPECT_EQ(FormatCurrency(1234567, india), "₹12,34,567.00");
    EXPECT_EQ(india.short_date, "dd/mm/yy");
}

TEST_F(BuiltLocale, OfTheUnitedStatesPrintsOnLetterPaper) {
    if (!Use("en_US.UTF-8", "en_US", "UTF-8"))
        GTEST_SKIP() << kNotBuilt;
    const RegionalSettings states = ReadUserSettings();
    EXPECT_EQ(FormatCurrency(-1234.5, states), "-$1,234.50");
    EXPECT_EQ(states.short_date, "mm/dd/yyyy");
    EXPECT_EQ(states.paper, Paper::kLetter);
}

TEST_F(BuiltLocale, MayWriteItsDatesWithoutLeadingZeros) {
    if (!Use("cs_CZ.UTF-8", "cs_CZ", "UTF-8"))
        GTEST_SKIP() << kNotBuilt;
    EXPECT_EQ(ReadUserSettings().short_date, "d.m.yyyy");
}

#endif

}  // namespace
}  // namespace ledgix::runtime
