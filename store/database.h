#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "dao_database.h"
#include "dao_transaction.h"
#include "recordset.h"
#include "variant.h"
#include "workspace.h"

// The program's one database and the record routines that every part of it reads with. Each routine traps its errors
// and hands them to DatabaseErrorHandler, so that no exception leaves this module but from NullToValue and
// OpenDatabaseFile.
namespace ledgix::store {

using RecordsetPtr = std::unique_ptr<dao::Recordset>;

// The engine's workspace and the open property.mdb, for the life of the program. Nothing before they are opened, or
// when opening failed.
extern dao::Workspace* gWorkspace;
extern std::unique_ptr<dao::Database> gDatabase;

// Finds property.mdb by the settings and opens it. Leaves gDatabase as it was when that fails.
void StartADO();

// Opens the file of this path instead. Errors pass to the caller.
void OpenDatabaseFile(const std::string& path);

// Rewrites `sql` by FixSQLQuotes and opens a recordset on it. Leaves `recordset` as it was when that fails.
void DataCreateSet(RecordsetPtr& recordset, std::string& sql, std::int16_t type, std::int16_t options);

// Rewrites `sql` by FixSQLQuotes and runs it; false when that fails.
bool ExecuteSQL(std::string& sql);

// Makes what follows one change of the file, until the result is committed or dropped; nothing where the database is
// not open or may not be written, and then each statement stands for itself. Raises nothing.
std::unique_ptr<dao::Transaction> BeginChange();

// True for nothing and at the end. False when the test itself fails.
bool DataEOF(const RecordsetPtr& recordset);

// True for nothing and when there is no row. False when the test itself fails.
bool DataIsEmpty(const RecordsetPtr& recordset);

void DataMoveNext(const RecordsetPtr& recordset);

// Leaves nothing in `recordset`, unless closing failed.
void DataClose(RecordsetPtr& recordset);

// `value`, or `fallback` for Null.
runtime::Variant NullToValue(const runtime::Variant& value, const runtime::Variant& fallback);

// Closes the recordset on every way out of a routine.
class ClosingRecordset {
public:
    ClosingRecordset() = default;
    ~ClosingRecordset() { DataClose(recordset_); }
    ClosingRecordset(const ClosingRecordset&) = delete;
    ClosingRecordset& operator=(const ClosingRecordset&) = delete;

    RecordsetPtr& get() { return recordset_; }
    // Error 91 when there is no recordset.
    dao::Recordset* operator->() const;
    // The value of a field of the current row. Error 91 when there is no recordset.
    const runtime::Variant& operator[](std::string_view field) const;

private:
    RecordsetPtr recordset_;
};

}  // namespace ledgix::store
