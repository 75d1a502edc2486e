#include "database.h"

#include <utility>

#include "database_location.h"
#include "error_log.h"
#include "files.h"
#include "message_box.h"
#include "resume_next.h"
#include "runtime_error.h"
#include "sql_quotes.h"

namespace ledgix::store {

dao::Workspace* gWorkspace = nullptr;
std::unique_ptr<dao::Database> gDatabase;

namespace {

// Runs the routine under its error trap. What it gives back when it fails is false.
template <class Routine>
bool Trapped(const std::string& label, Routine&& routine) {
    try {
        return std::forward<Routine>(routine)();
    } catch (const runtime::RuntimeError& error) {
        services::DatabaseErrorHandler(label, error);
        return false;
    }
}

dao::Recordset& Set(const RecordsetPtr& recordset) {
    if (!recordset)
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    return *recordset;
}

dao::Database& OpenedDatabase() {
    if (!gDatabase)
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    return *gDatabase;
}

}  // namespace

void StartADO() {
    Trapped("Start ADO", [] {
        const DatabaseLocation location = LocateDatabase(ProgramSurroundings());
        if (!location.notice.empty())
            runtime::MsgBox(location.notice);
        OpenDatabaseFile(runtime::FindFile(location.path).value_or(location.path));
        return true;
    });
}

void OpenDatabaseFile(const std::string& path) {
    gWorkspace = &dao::DefaultWorkspace();
    gDatabase = gWorkspace->OpenDatabase(path);
}

void DataCreateSet(RecordsetPtr& recordset, std::string& sql, std::int16_t type, std::int16_t options) {
    Trapped("Data Create Set", [&] {
        FixSQLQuotes(sql);
        recordset = OpenedDatabase().OpenRecordset(sql, static_cast<dao::RecordsetType>(type), options);
        return true;
    });
}

bool ExecuteSQL(std::string& sql) {
    return Trapped("Execute SQL", [&] {
        FixSQLQuotes(sql);
        OpenedDatabase().Execute(sql);
        return true;
    });
}

std::unique_ptr<dao::Transaction> BeginChange() {
    std::unique_ptr<dao::Transaction> change;
    const auto begin = [&] { change = std::make_unique<dao::Transaction>(OpenedDatabase()); };
    runtime::ResumeNext(begin, [](const runtime::RuntimeError&) {});
    return change;
}

bool DataEOF(const RecordsetPtr& recordset) {
    return Trapped("Data EOF", [&] { return !recordset || recordset->Eof(); });
}

bool DataIsEmpty(const RecordsetPtr& recordset) {
    return Trapped("Data Is Empty", [&] { return !recordset || (recordset->Eof() && recordset->Bof()); });
}

void DataMoveNext(const RecordsetPtr& recordset) {
    Trapped("Move Next", [&] {
        Set(recordset).MoveNext();
        return true;
    });
}

void DataClose(RecordsetPtr& recordset) {
    Trapped("Data Close", [&] {
        if (recordset)
            recordset->Close();
        recordset.reset();
        return true;
    });
}

runtime::Variant NullToValue(const runtime::Variant& value, const runtime::Variant& fallback) {
    return runtime::IsNull(value) ? fallback : value;
}

dao::Recordset* ClosingRecordset::operator->() const {
    return &Set(recordset_);
}

const runtime::Variant& ClosingRecordset::operator[](std::string_view field) const {
    return Set(recordset_)[field];
}

}  // namespace ledgix::store
