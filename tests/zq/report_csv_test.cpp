#include "report_csv.h"

#include <gtest/gtest.h>

#include "report_fixture.h"

namespace ledgix::zq {
namespace {

Document DocumentOf(std::initializer_list<std::vector<std::string>> bands) {
    Document document;
    for (const std::vector<std::string>& texts : bands) {
        PrintedBand band;
        band.name = texts[0];
        for (std::size_t i = 1; i < texts.size(); ++i)
            band.fields.push_back({"F" + std::to_string(i), texts[i]});
        document.bands.push_back(band);
    }
    return document;
}

TEST(ReportCsv, HasARecordForEachPrintedBand) {
    EXPECT_EQ(ToCsv(DocumentOf({{"Table", "Total Assets", "1", ""}, {"Blank"}, {"Heading", "x"}})),
              "Table,Total Assets,1,\r\nBlank\r\nHeading,x\r\n");
}

TEST(ReportCsv, QuotesCommasQuotesBreaksAndOuterBlanks) {
    EXPECT_EQ(ToCsv(DocumentOf({{"T", "$1,000.00", "say \"x\"", "a\r\nb", "  Per Month", "end "}})),
              "T,\"$1,000.00\",\"say \"\"x\"\"\",\"a\r\nb\",\"  Per Month\",\"end \"\r\n");
}

TEST(ReportCsv, LeavesOtherTextsAsTheyAre) {
    EXPECT_EQ(ToCsv(DocumentOf({{"T", "Z\xC3\xBCrich", "-13874", "it's; fine"}})),
              "T,Z\xC3\xBCrich,-13874,it's; fine\r\n");
}

TEST(ReportCsv, IsEmptyForNothing) {
    EXPECT_EQ(ToCsv(Document()), "");
}

class ReportCsvTest : public test::ReportFixture {};

TEST_F(ReportCsvTest, ListsFieldsInTemplateOrderWithPicturesAndWithoutLabels) {
    Open(
        "band Header\nline 5\nfield Title\nlabel \"fixed\"\npicture reportlogo height 5\nfield Profile from 50 to "
        "90\n");
    engine_.band("Header").field("reportlogo").LoadPicture("logo.bmp");
    Print("Header", "Profile", "Whitaker");
    EXPECT_EQ(ToCsv(engine_.document()), "Header,,logo.bmp,Whitaker\r\n");
}

}  // namespace
}  // namespace ledgix::zq
