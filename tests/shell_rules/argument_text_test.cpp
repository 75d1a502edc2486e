#include "argument_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace ledgix::shell {
namespace {

std::string TextOf(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "ledgix");
    return ArgumentText(static_cast<int>(arguments.size()), arguments.data());
}

TEST(ArgumentText, IsEmptyWithoutArguments) {
    EXPECT_EQ(TextOf({}), "");
    EXPECT_EQ(ArgumentText(0, nullptr), "");
}

TEST(ArgumentText, JoinsArgumentsByBlanks) {
    EXPECT_EQ(TextOf({"one"}), "one");
    EXPECT_EQ(TextOf({"one", "two words", "-three"}), "one two words -three");
}

TEST(ArgumentText, IsNotEmptyWithAnyArgumentAtAll) {
    EXPECT_EQ(TextOf({" "}), " ");
    EXPECT_EQ(TextOf({""}), "\"\"");
    EXPECT_EQ(TextOf({"", ""}), "\"\" \"\"");
}

}  // namespace
}  // namespace ledgix::shell
