#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dao_database.h"
#include "temporary_folder.h"
#include "workspace.h"

namespace ledgix::dao {

// A new database of either format, with a table "Things": Number, a long and the primary key; Name, 10 characters;
// Price, a double; Sold, a boolean; Day, a date.
class FreshDatabase : public testing::TestWithParam<FileFormat> {
protected:
    FreshDatabase() {
        CreateDatabase(path, GetParam());
        database = DefaultWorkspace().OpenDatabase(path);
        TableDef things{"Things", {}, {}, 0};
        things.fields.Append({"Number", kLong, 0, 0});
        things.fields.Append({"Name", kText, 10, 0});
        things.fields.Append({"Price", kDouble, 0, 0});
        things.fields.Append({"Sold", kBoolean, 0, 0});
        things.fields.Append({"Day", kDate, 0, 0});
        Index key{"PrimaryKey", {{"Number"}}};
        key.primary = true;
        things.indexes.Append(key);
        database->CreateTable(things);
    }

    // What another program sees in the file.
    std::unique_ptr<Database> OpenAgain() const { return DefaultWorkspace().OpenDatabase(path); }

    // The values of the first field of all rows.
    std::vector<runtime::Variant> Values(const std::string& statement) const {
        std::vector<runtime::Variant> values;
        const auto other = OpenAgain();
        for (const auto rows = other->OpenRecordset(statement); !rows->Eof(); rows->MoveNext())
            values.push_back((*rows)[std::size_t{0}]);
        return values;
    }

    test::TemporaryFolder folder;
    const std::string path = folder.File("things.mdb");
    std::unique_ptr<Database> database;
};

template <class... Value>
std::vector<runtime::Variant> List(Value... values) {
    return {runtime::Variant(values)...};
}

inline runtime::Variant Words(const char* text) {
    return std::string(text);
}

inline std::string NameOf(const testing::TestParamInfo<FileFormat>& info) {
    return info.param == FileFormat::kJet3 ? "Jet3" : "Jet4";
}

}  // namespace ledgix::dao

#define FOR_BOTH_FORMATS(Suite) \
    INSTANTIATE_TEST_SUITE_P(Formats, Suite, testing::Values(FileFormat::kJet3, FileFormat::kJet4), NameOf)
