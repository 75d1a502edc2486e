#include "placeholders.h"

#include <gtest/gtest.h>

namespace ledgix::zq {
namespace {

std::string Expand(const std::string& text) {
    return ExpandPlaceholders(text, [](std::string_view name) -> std::optional<std::string> {
        if (name == "page")
            return "1";
        if (name == "brace")
            return "{page}";
        return std::nullopt;
    });
}

TEST(ExpandPlaceholders, PutsInWhatStandsForTheName) {
    EXPECT_EQ(Expand("Page {page} of {page}"), "Page 1 of 1");
}

TEST(ExpandPlaceholders, LeavesUnknownNamesAndOpenBraces) {
    EXPECT_EQ(Expand("{other} {page"), "{other} {page");
    EXPECT_EQ(Expand("{} }{"), "{} }{");
    EXPECT_EQ(Expand(""), "");
}

TEST(ExpandPlaceholders, DoesNotExpandWhatItPutIn) {
    EXPECT_EQ(Expand("{brace}"), "{page}");
}

}  // namespace
}  // namespace ledgix::zq
