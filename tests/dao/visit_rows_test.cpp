#include <gtest/gtest.h>

#include "error_of.h"
#include "fresh_database.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Variant;

class VisitRows : public FreshDatabase {
protected:
    VisitRows() {
        for (const char* name : {"bee", "ant", "cow"})
            database->Execute("insert into Things (Number, Name) values (" + std::to_string(++count_) + ", '" + name +
                              "')");
    }

    // The first values of the rows handed out.
    std::vector<Variant> Visited(const std::string& source) {
        std::vector<Variant> values;
        database->VisitRows(source,
                            [&](const Collection<Field>&, std::span<const Variant> row) { values.push_back(row[0]); });
        return values;
    }

private:
    int count_ = 0;
};

TEST_P(VisitRows, HandsOutWhatARecordsetHas) {
    for (const char* source :
         {"Things", "select Name from Things", "select Number * 2 from Things where Name > 'b'",
          "select Name from Things order by Name desc", "select Name from Things where Number = 9"})
        EXPECT_EQ(Visited(source), Values(source)) << source;
}

TEST_P(VisitRows, NamesTheFields) {
    database->VisitRows("select Number as Id, Name from Things", [&](const auto& fields, const auto& values) {
        EXPECT_EQ(fields[0].name, "Id");
        EXPECT_EQ(fields[1].type, kText);
        EXPECT_EQ(values.size(), 2U);
    });
}

TEST_P(VisitRows, MayReadAnotherTableMeanwhile) {
    std::size_t inner = 0;
    database->VisitRows("Things", [&](const auto&, const auto&) { inner += Visited("Things").size(); });
    EXPECT_EQ(inner, 9U);
}

TEST_P(VisitRows, EndsWithTheErrorOfTheVisitor) {
    EXPECT_ERROR(
        database->VisitRows("Things", [](const auto&, const auto&) { runtime::RaiseError(ErrorNumber::kOverflow); }),
        ErrorNumber::kOverflow);
    EXPECT_EQ(database->Execute("delete from Things"), 3U);
}

TEST_P(VisitRows, RefusesUnknownTablesAndColumns) {
    EXPECT_ERROR(Visited("Nothing"), ErrorNumber::kTableNotFound);
    EXPECT_ERROR(Visited("select Colour from Things"), ErrorNumber::kTooFewParameters);
}

FOR_BOTH_FORMATS(VisitRows);

}  // namespace
}  // namespace ledgix::dao
