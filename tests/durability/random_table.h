#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "database_file.h"
#include "model_rows.h"
#include "random_values.h"
#include "table_writer.h"

namespace ledgix::test {

// A table that is changed at random, together with a model that says what it should hold. Two programs have the file
// open and change it in turn.
class RandomTable {
public:
    // Makes the table in a new database that is at the path. `files` must outlive this.
    RandomTable(jet::FileSystem& files, std::string path, std::uint32_t seed);
    ~RandomTable();

    // Changes it, in transactions of random length; some of them are given up.
    void Change(std::size_t operations);

    // Where the file, as both programs see it, differs from the model, or breaks a rule of the format; empty where it
    // does not.
    std::string Differences();

    jet::DatabaseFile& file() { return *openers_[0]; }
    const ModelRows& model() const { return model_; }
    void Reopen();

    // What was done so far, those included that were taken back.
    struct Counts {
        std::size_t inserted = 0;
        std::size_t updated = 0;
        std::size_t deleted = 0;
        std::size_t refused = 0;
        std::size_t columns = 0;
        std::size_t indexes = 0;
    };
    const Counts& counts() const { return counts_; }

private:
    // The table during one transaction.
    struct Work {
        explicit Work(jet::DatabaseFile& database);
        void Learn();

        jet::DatabaseFile& file;
        jet::TableDefinition table;
        std::optional<jet::TableWriter> writer;
    };

    void MakeTable();
    void Transact(std::size_t operations);
    void Step(Work& work);
    void StepInLevel(Work& work);
    void Insert(Work& work);
    void Update(Work& work);
    void ChangeKey(Work& work);
    void Delete(Work& work);
    void TryWhatIsRefused(Work& work);
    void AddColumn(Work& work);
    void AddIndex(Work& work);
    void TryRefusedIndex(Work& work);

    int AnyNumber();
    int FreeNumber();
    runtime::Variant FreeCode();
    ModelRow DrawRow();
    void ExpectRefusal(Work& work, int error, const std::function<void(jet::TableWriter&)>& attempt);
    std::string DifferencesOf(jet::DatabaseFile& file);
    std::string RowDifferences(jet::DatabaseFile& file, const jet::TableDefinition& table);

    jet::FileSystem& files_;
    std::string path_;
    RandomValues random_;
    ModelRows model_;
    std::array<std::unique_ptr<jet::DatabaseFile>, 2> openers_;
    bool growing_ = true;
    int next_name_ = 0;
    Counts counts_;
    std::string refusals_;  // those that did not come as expected
};

}  // namespace ledgix::test
