#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "cls_profile.h"
#include "database.h"
#include "database_file.h"
#include "schema.h"
#include "schema_upgrade.h"
#include "side_by_side.h"
#include "table_writer.h"

// The store beside SQLite and mdb-export, on the disk of the current folder.
namespace {

using namespace ledgix;
using bench::Print;
using bench::RunSideBySide;

constexpr int kSaveRounds = 300;
constexpr int kBulkRounds = 5;
constexpr int kExportRounds = 5;
constexpr int kLookUpRounds = 200;
constexpr int kRows = 100000;
constexpr int kPropertiesOfProfile = 100;

[[noreturn]] void GiveUp(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(1);
}

// A SQLite database with its usual rollback journal and full durability.
class Sqlite {
public:
    explicit Sqlite(const std::string& path) {
        if (sqlite3_open(path.c_str(), &database_) != SQLITE_OK)
            GiveUp("cannot open " + path);
        Run("pragma journal_mode = delete");
        Run("pragma synchronous = full");
    }
    ~Sqlite() { sqlite3_close(database_); }
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;

    void Run(const std::string& sql) {
        if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            GiveUp(sqlite3_errmsg(database_));
    }

    sqlite3_stmt* Prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            GiveUp(sqlite3_errmsg(database_));
        return statement;
    }

    void Step(sqlite3_stmt* statement) {
        if (sqlite3_step(statement) != SQLITE_DONE)
            GiveUp(sqlite3_errmsg(database_));
        sqlite3_reset(statement);
    }

private:
    sqlite3* database_ = nullptr;
};

std::string SqliteType(const store::SchemaColumn& column) {
    switch (column.type) {
        case dao::kText:
            return "text";
        case dao::kDouble:
        case dao::kSingle:
        case dao::kDate:
            return "real";
        default:
            return "integer";
    }
}

std::string CreateStatement(const store::SchemaTable& table) {
    std::string sql = "create table " + std::string(table.name) + " (";
    for (const store::SchemaColumn& column : table.columns)
        sql += std::string(column.name) + " " + SqliteType(column) + ", ";
    sql += "primary key (";
    for (const std::string_view column : table.primary_key)
        sql += (column == table.primary_key.front() ? "" : ", ") + std::string(column);
    return sql + "))";
}

std::string InsertStatement(const store::SchemaTable& table) {
    std::string marks;
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        marks += i == 0 ? "?" : ", ?";
    return "insert into " + std::string(table.name) + " values (" + marks + ")";
}

// The row of a property with made-up figures, value by value.
template <class Integer, class Real, class Text>
void FillRow(int number, const Integer& integer, const Real& real, const Text& text) {
    const auto columns = store::ProfilePropertyTable().columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i == 0)
            integer(i, 1 + number / kPropertiesOfProfile);
        else if (i == 1)
            integer(i, number % kPropertiesOfProfile);
        else if (columns[i].type == dao::kText)
            text(i, "Property number " + std::to_string(number));
        else if (columns[i].type == dao::kBoolean)
            integer(i, number % 2);
        else if (columns[i].type == dao::kInteger)
            integer(i, 25);
        else
            real(i, 1000.25 * static_cast<double>(i) + number);
    }
}

void InsertIntoSqlite(const std::string& path) {
    std::filesystem::remove(path);
    Sqlite database(path);
    database.Run(CreateStatement(store::ProfilePropertyTable()));
    database.Run("begin");
    sqlite3_stmt* insert = database.Prepare(InsertStatement(store::ProfilePropertyTable()));
    for (int row = 0; row < kRows; ++row) {
        FillRow(
            row, [&](std::size_t i, int value) { sqlite3_bind_int(insert, static_cast<int>(i) + 1, value); },
            [&](std::size_t i, double value) { sqlite3_bind_double(insert, static_cast<int>(i) + 1, value); },
            [&](std::size_t i, const std::string& value) {
                sqlite3_bind_text(insert, static_cast<int>(i) + 1, value.c_str(), -1, SQLITE_TRANSIENT);
            });
        database.Step(insert);
    }
    sqlite3_finalize(insert);
    database.Run("commit");
}

void NewHousehold(const std::string& path) {
    store::gDatabase.reset();
    std::filesystem::remove(path);
    dao::CreateDatabase(path, dao::FileFormat::kJet4);
    store::OpenDatabaseFile(path);
    store::UpgradeSchema([] {});
}

// Through the recordset, as the program itself writes.
void AddProperties(int from, int to) {
    const std::unique_ptr<dao::Recordset> rows =
        store::gDatabase->OpenRecordset("select * from ProfileProperty where ProfileNumber = -1", dao::kOpenDynaset);
    std::vector<std::string> names;
    for (const dao::Field& field : rows->fields())
        names.push_back(field.name);
    for (int row = from; row < to; ++row) {
        rows->AddNew();
        const auto set = [&](std::size_t i, const runtime::Variant& value) { rows->Set(names[i], value); };
        FillRow(
            row, [&](std::size_t i, int value) { set(i, value); }, [&](std::size_t i, double value) { set(i, value); },
            [&](std::size_t i, const std::string& value) { set(i, value); });
        rows->Update();
    }
}

void InsertIntoHousehold(const std::string& path) {
    NewHousehold(path);
    dao::Transaction change(*store::gDatabase);
    AddProperties(0, kRows);
    change.Commit();
}

// The table writer beneath, as a compacted file is made.
void InsertIntoTable(const std::string& path) {
    NewHousehold(path);
    store::gDatabase.reset();
    jet::DatabaseFile file(path, jet::OpenMode::kReadWrite);
    jet::Transaction change(file);
    jet::TableWriter writer(file, file.ReadTableDefinition(file.FindTable("ProfileProperty").value().DefinitionPage()));
    std::vector<runtime::Variant> values(writer.table().columns.size());
    for (int row = 0; row < kRows; ++row) {
        const auto real = [&](std::size_t i, double value) {
            if (writer.table().columns[i].type == jet::ColumnType::kSingle)
                values[i] = static_cast<float>(value);
            else
                values[i] = value;
        };
        const auto integer = [&](std::size_t i, int value) {
            if (writer.table().columns[i].type == jet::ColumnType::kBoolean)
                values[i] = value != 0;
            else if (writer.table().columns[i].type == jet::ColumnType::kInt16)
                values[i] = static_cast<std::int16_t>(value);
            else
                values[i] = value;
        };
        FillRow(row, integer, real, [&](std::size_t i, std::string value) { values[i] = std::move(value); });
        writer.Insert(values);
    }
    change.Commit();
}

void CompareSaves() {
    NewHousehold("save.mdb");
    model::clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ProfileName = "Hannah and Tom Whitaker";
    profile.Save();

    std::filesystem::remove("save.sqlite");
    Sqlite sqlite("save.sqlite");
    const store::SchemaTable& table = store::ProfilesTable();
    sqlite.Run(CreateStatement(table));
    sqlite.Run("insert into Profiles (ProfileNumber) values (1)");
    std::string sql = "update Profiles set ";
    for (std::size_t i = 1; i < table.columns.size(); ++i)
        sql += (i == 1 ? "" : ", ") + std::string(table.columns[i].name) + " = ?";
    sqlite3_stmt* update = sqlite.Prepare(sql + " where ProfileNumber = 1");
    double amount = 0;
    Print("save of a profile", "SQLite, durable update of one row",
          RunSideBySide(
              [&] {
                  profile.IncSalary = ++amount;
                  profile.Save();
              },
              [&] {
                  sqlite3_bind_text(update, 1, "Hannah and Tom Whitaker", -1, SQLITE_STATIC);
                  for (std::size_t i = 2; i < table.columns.size(); ++i)
                      sqlite3_bind_double(update, static_cast<int>(i), ++amount);
                  sqlite.Step(update);
              },
              kSaveRounds, 5));
    sqlite3_finalize(update);
}

void CompareBulkInserts() {
    Print("insert of 100,000 properties, one transaction", "SQLite, the same, prepared",
          RunSideBySide([] { InsertIntoTable("bulk.mdb"); }, [] { InsertIntoSqlite("bulk.sqlite"); }, kBulkRounds, 1));
    Print("the same through recordsets", "SQLite, the same, prepared",
          RunSideBySide([] { InsertIntoHousehold("bulk.mdb"); }, [] { InsertIntoSqlite("bulk.sqlite"); }, kBulkRounds,
                        1));
}

void CompareExports() {
    InsertIntoHousehold("export.mdb");
    {
        dao::Transaction change(*store::gDatabase);
        for (int number = 1; number <= kRows / kPropertiesOfProfile; ++number)
            store::gDatabase->Execute("insert into Profiles (ProfileNumber, profile_name) values (" +
                                      std::to_string(number) + ", 'Profile')");
        change.Commit();
    }
    store::gDatabase.reset();
    const bench::Command peer{"mdb-export", "export.mdb", "ProfileProperty"};
    const bench::Command csv{LEDGIX_CLI, "--database", "export.mdb", "sql", "select * from ProfileProperty",
                             "--format", "csv"};
    const bench::Command json{LEDGIX_CLI, "--database", "export.mdb", "export"};
    Print("ledgix-cli sql ... --format csv, 100,000 rows", "mdb-export ProfileProperty",
          RunSideBySide(bench::Process(csv), bench::Process(peer), kExportRounds, 1));
    Print("ledgix-cli export, 100,000 rows", "mdb-export ProfileProperty",
          RunSideBySide(bench::Process(json), bench::Process(peer), kExportRounds, 1));
}

// A file of about so many megabytes, most of them properties.
void MakeHousehold(const std::string& path, int megabytes) {
    NewHousehold(path);
    constexpr int kRowsOfStep = 20000;
    const std::uint64_t size = std::uint64_t{1000000} * static_cast<std::uint64_t>(megabytes);
    for (int row = 0; std::filesystem::file_size(path) < size; row += kRowsOfStep) {
        dao::Transaction change(*store::gDatabase);
        AddProperties(row, row + (megabytes == 1 ? 3000 : kRowsOfStep));
        for (int profile = row / kPropertiesOfProfile; profile < (row + kRowsOfStep) / kPropertiesOfProfile; ++profile)
            store::gDatabase->Execute("insert into Profiles (ProfileNumber, profile_name) values (" +
                                      std::to_string(profile) + ", 'Profile')");
        change.Commit();
    }
    store::gDatabase.reset();
}

void OpenAndReadOne(const std::string& path) {
    store::OpenDatabaseFile(path);
    const auto rows =
        store::gDatabase->OpenRecordset("select * from Profiles where ProfileNumber = 77", dao::kOpenForwardOnly);
    if (rows->Eof())
        GiveUp("no profile 77 in " + path);
    store::gDatabase.reset();
}

void CompareSizes() {
    MakeHousehold("1.mdb", 1);
    for (const int megabytes : {50, 500}) {
        const std::string path = std::to_string(megabytes) + ".mdb";
        MakeHousehold(path, megabytes);
        Print("open and read one profile, " + std::to_string(megabytes) + " MB", "the same, 1 MB",
              RunSideBySide([&] { OpenAndReadOne(path); }, [] { OpenAndReadOne("1.mdb"); }, kLookUpRounds, 5));
        std::filesystem::remove(path);
    }
}

}  // namespace

int main() {
    std::filesystem::create_directory("storage_bench_files");
    std::filesystem::current_path("storage_bench_files");
    CompareSaves();
    CompareBulkInserts();
    CompareExports();
    CompareSizes();
    store::gDatabase.reset();
    std::filesystem::current_path("..");
    std::filesystem::remove_all("storage_bench_files");
    return 0;
}
