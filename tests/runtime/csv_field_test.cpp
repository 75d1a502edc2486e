#include "csv_field.h"

#include <gtest/gtest.h>

namespace ledgix::runtime {
namespace {

TEST(CsvField, OfPlainTextIsTheText) {
    EXPECT_EQ(CsvField(""), "");
    EXPECT_EQ(CsvField("7.5% a year"), "7.5% a year");
}

TEST(CsvField, IsQuotedWhereTheTextWouldBreakTheRecord) {
    EXPECT_EQ(CsvField("Unit 3, 88 Kowhai Road"), "\"Unit 3, 88 Kowhai Road\"");
    EXPECT_EQ(CsvField("two\r\nlines"), "\"two\r\nlines\"");
    EXPECT_EQ(CsvField("two\nlines"), "\"two\nlines\"");
}

TEST(CsvField, DoublesQuotationMarks) {
    EXPECT_EQ(CsvField("the \"old\" bakery"), "\"the \"\"old\"\" bakery\"");
}

TEST(CsvField, KeepsBlanksAtBothEnds) {
    EXPECT_EQ(CsvField("  Per Month"), "\"  Per Month\"");
    EXPECT_EQ(CsvField("surplus "), "\"surplus \"");
}

}  // namespace
}  // namespace ledgix::runtime
