#include "fault_trial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include "database.h"
#include "database_file.h"
#include "fixed_clock.h"
#include "household_file.h"
#include "json_text.h"
#include "pets.h"

namespace ledgix::test {

namespace {

constexpr std::size_t kMostOperations = 400;

std::string Definition(const dao::TableDef& table) {
    std::string text = table.name;
    for (const dao::Field& field : table.fields)
        text += " " + field.name + ":" + std::to_string(field.type) + ":" + std::to_string(field.size);
    for (const dao::Index& index : table.indexes) {
        text += " [" + index.name;
        for (const dao::IndexField& field : index.fields)
            text += " " + field.name;
        text += "]";
    }
    return text + "\n";
}

std::multiset<std::string> Rows(dao::Database& database, const std::string& table) {
    std::multiset<std::string> lines;
    for (const auto rows = database.OpenRecordset(table, dao::kOpenSnapshot); !rows->Eof(); rows->MoveNext()) {
        std::string line;
        for (std::size_t i = 0; i < rows->fields().Count(); ++i)
            line += " " + cli::JsonText((*rows)[i]);
        lines.insert(line + "\n");
    }
    return lines;
}

// One attempt on a file of its own.
class Attempt {
public:
    Attempt(const FaultTrial& trial, const std::string& wanted, std::size_t operation, Fault fault)
        : trial_(trial), wanted_(wanted), file_(trial.content) {
        store::gDatabase = std::make_unique<dao::Database>(
            file_.path(), std::make_unique<jet::DatabaseFile>(file_.path(), jet::OpenMode::kReadWrite, files_));
        files_.FailAt(operation, fault);
        said_ = trial.change();
    }

    bool Disturbed() const { return files_.failed(); }
    bool Reported() const { return !said_.empty() || !messages_.messages().empty(); }
    bool Says(const std::string& number) const {
        return said_.find(number) != std::string::npos ||
               std::any_of(messages_.messages().begin(), messages_.messages().end(),
                           [&](const auto& message) { return message.text.starts_with(number); }) ||
               std::ranges::count(diagnoses_.Numbers(), std::stoi(number)) > 0;
    }

    // Whoever still has the file open sees what it holds, and can go on.
    void GoOn() {
        files_.FailAt(0, Fault::kOnce);
        EXPECT_EQ(StateOf(*store::gDatabase), Stored());
        trial_.change();
        EXPECT_EQ(StateOf(*store::gDatabase), wanted_);
        EXPECT_EQ(Stored(), wanted_);
        Close();
    }

    void Close() { store::gDatabase.reset(); }
    std::string Stored() const { return StateOf(*dao::DefaultWorkspace().OpenDatabase(file_.path())); }
    std::string path() const { return file_.path(); }

private:
    const FaultTrial& trial_;
    const std::string& wanted_;
    FixedClock clock_{{2026, 11, 7, 9, 5, 3}};
    MessageRecorder messages_;
    DiagnosisRecorder diagnoses_;
    HouseholdFile file_;
    FaultyFiles files_;
    std::string said_;
};

// Files of other makers break some rules without harm.
std::string NewFindings(const std::string& path, const std::string& before) {
    std::istringstream found(FindingsIn(path));
    std::string lines;
    for (std::string line; std::getline(found, line);) {
        line += "\n";
        if (before.find(line) == std::string::npos)
            lines += line;
    }
    return lines;
}

void ExpectSound(const Attempt& attempt, const std::string& findings_before) {
    EXPECT_EQ(NewFindings(attempt.path(), findings_before), "");
    EXPECT_FALSE(std::filesystem::exists(attempt.path() + ".journal"));
}

void ExpectReported(const FaultTrial& trial, const Attempt& attempt, Fault fault) {
    EXPECT_TRUE(attempt.Reported());
    if (fault == Fault::kFull && trial.says_when_full) {
        EXPECT_TRUE(attempt.Says("3026"));
    }
}

}  // namespace

std::string StateOf(dao::Database& database) {
    std::string text;
    for (const dao::TableEntry& entry : database.Tables()) {
        if (entry.kind != dao::TableEntry::Kind::kUser)
            continue;
        text += Definition(database.TableDefinition(entry.name));
        for (const std::string& row : Rows(database, entry.name))
            text += row;
    }
    return text;
}

std::string StateAfter(const std::string& content, const DatabaseChange& change) {
    const FixedClock clock({2026, 11, 7, 9, 5, 3});
    const MessageRecorder messages;
    const HouseholdFile file(content);
    file.Open();
    EXPECT_EQ(change(), "");
    EXPECT_TRUE(messages.messages().empty());
    file.Close();
    return StateOf(*dao::DefaultWorkspace().OpenDatabase(file.path()));
}

std::string FindingsIn(const std::string& path) {
    jet::DatabaseFile file(path, jet::OpenMode::kReadWrite);
    return Findings(file);
}

void FailAtEveryOperation(const FaultTrial& trial, Fault fault) {
    const std::string before = StateAfter(trial.content, [] { return std::string(); });
    const std::string after = StateAfter(trial.content, trial.change);
    ASSERT_NE(before, after);
    const std::string findings_before = FindingsIn(HouseholdFile(trial.content).path());
    std::set<std::string> allowed(trial.between.begin(), trial.between.end());
    allowed.insert({before, after});
    bool disturbed = true;
    std::size_t undone = 0;
    for (std::size_t operation = 1; disturbed; ++operation) {
        SCOPED_TRACE("operation " + std::to_string(operation));
        ASSERT_LT(operation, kMostOperations);
        Attempt attempt(trial, after, operation, fault);
        disturbed = attempt.Disturbed();
        if (fault != Fault::kOnce)
            attempt.Close();
        const std::string stored = attempt.Stored();
        ASSERT_TRUE(allowed.contains(stored)) << stored;
        if (stored != after) {
            ++undone;
            ASSERT_TRUE(disturbed);
            ExpectReported(trial, attempt, fault);
        }
        if (fault == Fault::kOnce)
            attempt.GoOn();
        ExpectSound(attempt, findings_before);
    }
    EXPECT_GT(undone, 1U) << "the faults never came in time";
}

}  // namespace ledgix::test
