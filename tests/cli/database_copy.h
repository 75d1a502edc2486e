#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "cli_run.h"
#include "mdbtools_judge.h"
#include "recordset.h"
#include "scoped_environment.h"
#include "temporary_folder.h"
#include "workspace.h"

namespace ledgix::test {

// A database file to be changed, in a folder of its own, where the error log goes too.
class DatabaseCopy {
public:
    // Of one of the sample files, or with this content.
    explicit DatabaseCopy(const std::string& sample) : DatabaseCopy(0, Content(LEDGIX_TEST_DATA "/mdb/" + sample)) {}
    static DatabaseCopy Of(const std::string& content) { return {0, content}; }

    const std::string& path() const { return path_; }
    const TemporaryFolder& folder() const { return folder_; }
    std::string bytes() const { return Content(path_); }

    CommandResult Run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--database", path_});
        return RunCli(arguments);
    }

    nlohmann::json Exported() const { return nlohmann::json::parse(Run({"export"}).out); }

private:
    DatabaseCopy(int, const std::string& content) : path_(folder_.Write("copy.mdb", content)) {}

    TemporaryFolder folder_;
    ScopedEnvironment application_{"LEDGIX_FOLDER", folder_.path()};
    std::string path_;
};

// A new file with the tables of the current layout.
inline std::string NewHousehold(const std::string& format) {
    const TemporaryFolder folder;
    const std::string file = folder.File("new.mdb");
    EXPECT_EQ(RunCli({"create", file, "--format", format}).status, cli::kDone);
    EXPECT_EQ(RunCli({"--database", file, "upgrade"}).status, cli::kDone);
    return Content(file);
}

inline nlohmann::json Household() {
    return nlohmann::json::parse(Content(LEDGIX_TEST_DATA "/mdb/household.json"));
}

// Whether mdbtools reads the same tables with the same rows as we do.
inline testing::AssertionResult JudgeAgrees(const std::string& path) {
    if (!HaveMdbtools())
        return testing::AssertionSuccess() << "mdbtools is not installed";
    const auto database = dao::DefaultWorkspace().OpenDatabase(path);
    std::vector<std::string> ours;
    for (const dao::TableEntry& entry : database->Tables()) {
        if (entry.kind != dao::TableEntry::Kind::kUser)
            continue;
        ours.push_back(entry.name);
        std::vector<NamedRow> rows;
        const auto records = database->OpenRecordset(entry.name, dao::kOpenSnapshot);
        for (; !records->Eof(); records->MoveNext()) {
            NamedRow& row = rows.emplace_back();
            for (std::size_t i = 0; i < records->fields().Count(); ++i)
                row.emplace_back(records->fields()[i].name, (*records)[i]);
        }
        const testing::AssertionResult same = SameRows(JudgeRows(path, entry.name), rows);
        if (!same)
            return testing::AssertionFailure() << entry.name << ": " << same.message();
    }
    if (ours != JudgeTables(path, false))
        return testing::AssertionFailure() << "the tables differ";
    return testing::AssertionSuccess();
}

}  // namespace ledgix::test
