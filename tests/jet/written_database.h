#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "database_file.h"
#include "jet_test.h"
#include "schema_writer.h"
#include "structure_check.h"
#include "table_writer.h"

namespace ledgix::test {

using RowValues = std::vector<runtime::Variant>;

// What the structural check finds in a file that the engine wrote, one finding a line; empty when it is sound. With
// another strictness: in a file of other software.
std::string Faults(jet::DatabaseFile& file, jet::Strictness strictness = jet::Strictness::kOwnFiles);

// The error of a change, which is given up when there is one.
int ErrorOfChange(jet::DatabaseFile& file, const std::function<void()>& change);

// All bytes of a file.
std::vector<std::uint8_t> ContentOf(jet::DatabaseFile& file);

// The rows that each entry of an index leads to, in the order of the index.
std::vector<RowValues> RowsByIndex(jet::DatabaseFile& file, const jet::TableDefinition& table,
                                   const std::string& index);

// A new database in memory, to be changed, and a table "T" in it.
class WrittenDatabase : public testing::TestWithParam<jet::Generation> {
protected:
    WrittenDatabase();

    void TearDown() override {
        if (sound_) {
            EXPECT_EQ(Faults(file()), "");
        }
    }

    // The test leaves a file that breaks rules, on purpose.
    void LeaveUnsound() { sound_ = false; }

    bool IsJet4() const { return GetParam() == jet::Generation::kJet4; }
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }
    jet::DatabaseFile& file() { return *file_; }
    jet::Pager& pager() { return file_->pager(); }

    // From now on another file.
    void Open(std::vector<std::uint8_t> content);

    void Change(const std::function<void()>& change);
    int ErrorChanging(const std::function<void()>& change) { return ErrorOfChange(file(), change); }

    void MakeTable(const std::vector<jet::NewColumn>& columns);
    void AddColumn(const jet::NewColumn& column);
    void AddIndex(const jet::NewIndex& index);
    void AddPrimaryKey(const std::string& column);
    jet::TableDefinition Table(const std::string& name = "T");
    jet::Index IndexOf(const std::string& name) { return *Table().FindIndex(name); }

    // Each in a transaction of its own.
    jet::RowId Insert(const RowValues& values);
    void Update(jet::RowId row, const std::vector<jet::TableWriter::Assignment>& assignments);
    void Delete(jet::RowId row);
    int ErrorInserting(const RowValues& values);
    int ErrorUpdating(jet::RowId row, const std::vector<jet::TableWriter::Assignment>& assignments);

    // In file order.
    std::vector<RowValues> Rows();
    // One row; none when it is gone.
    RowValues Row(jet::RowId id);
    // Where its bytes are, when it is not at home.
    std::vector<jet::RowId> Moves(jet::RowId id);

private:
    std::unique_ptr<jet::DatabaseFile> file_;
    bool sound_ = true;
};

}  // namespace ledgix::test
