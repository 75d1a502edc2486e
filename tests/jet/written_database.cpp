#include "written_database.h"

#include "index_cursor.h"
#include "new_database.h"
#include "row_reader.h"
#include "table_scan.h"

namespace ledgix::test {

namespace {

constexpr runtime::Date kSomeDay{45000};

RowValues ValuesOf(jet::RowReader& reader, std::size_t columns) {
    RowValues values;
    for (std::size_t i = 0; i < columns; ++i)
        values.push_back(reader.Value(i));
    return values;
}

}  // namespace

std::string Faults(jet::DatabaseFile& file, jet::Strictness strictness) {
    const jet::ReadAccess access(file);
    std::string text;
    for (const jet::Finding& finding : jet::CheckStructure(file.pager(), strictness))
        text += finding.code + " " + finding.text + "\n";
    return text;
}

int ErrorOfChange(jet::DatabaseFile& file, const std::function<void()>& change) {
    return ErrorOf([&] {
        jet::Transaction transaction(file);
        change();
        transaction.Commit();
    });
}

std::vector<std::uint8_t> ContentOf(jet::DatabaseFile& file) {
    std::vector<std::uint8_t> content(file.pager().file().size());
    file.pager().file().Read(0, content);
    return content;
}

std::vector<RowValues> RowsByIndex(jet::DatabaseFile& file, const jet::TableDefinition& table,
                                   const std::string& index) {
    std::vector<RowValues> rows;
    jet::RowReader reader(file, table);
    for (jet::IndexCursor cursor(file, table, *table.FindIndex(index)); cursor.Next();) {
        EXPECT_TRUE(reader.Load(cursor.row()));
        rows.push_back(ValuesOf(reader, table.columns.size()));
    }
    return rows;
}

WrittenDatabase::WrittenDatabase() {
    Open(jet::NewDatabase(GetParam(), kSomeDay));
}

void WrittenDatabase::Open(std::vector<std::uint8_t> content) {
    file_ = std::make_unique<jet::DatabaseFile>(jet::MakeMemoryFile(std::move(content)));
}

void WrittenDatabase::Change(const std::function<void()>& change) {
    jet::Transaction transaction(file());
    change();
    transaction.Commit();
}

void WrittenDatabase::MakeTable(const std::vector<jet::NewColumn>& columns) {
    Change([&] { jet::CreateTable(file(), "T", columns); });
}

void WrittenDatabase::AddColumn(const jet::NewColumn& column) {
    Change([&] { jet::AddColumn(file(), Table(), column); });
}

void WrittenDatabase::AddIndex(const jet::NewIndex& index) {
    Change([&] { jet::CreateIndex(file(), Table(), index); });
}

void WrittenDatabase::AddPrimaryKey(const std::string& column) {
    AddIndex({.name = "PrimaryKey", .parts = {{.column = column}}, .primary = true});
}

jet::TableDefinition WrittenDatabase::Table(const std::string& name) {
    return file().ReadTableDefinition(file().FindTable(name).value().DefinitionPage());
}

jet::RowId WrittenDatabase::Insert(const RowValues& values) {
    jet::RowId row;
    Change([&] { row = jet::TableWriter(file(), Table()).Insert(values); });
    return row;
}

void WrittenDatabase::Update(jet::RowId row, const std::vector<jet::TableWriter::Assignment>& assignments) {
    Change([&] { jet::TableWriter(file(), Table()).Update(row, assignments); });
}

void WrittenDatabase::Delete(jet::RowId row) {
    Change([&] { jet::TableWriter(file(), Table()).Delete(row); });
}

int WrittenDatabase::ErrorInserting(const RowValues& values) {
    return ErrorChanging([&] { jet::TableWriter(file(), Table()).Insert(values); });
}

int WrittenDatabase::ErrorUpdating(jet::RowId row, const std::vector<jet::TableWriter::Assignment>& assignments) {
    return ErrorChanging([&] { jet::TableWriter(file(), Table()).Update(row, assignments); });
}

std::vector<RowValues> WrittenDatabase::Rows() {
    const jet::TableDefinition table = Table();
    std::vector<RowValues> rows;
    for (jet::TableScan scan(file(), table); scan.Next();) {
        RowValues& row = rows.emplace_back();
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            row.push_back(scan.Value(i));
    }
    return rows;
}

RowValues WrittenDatabase::Row(jet::RowId id) {
    const jet::TableDefinition table = Table();
    jet::RowReader reader(file(), table);
    return reader.Load(id) ? ValuesOf(reader, table.columns.size()) : RowValues();
}

std::vector<jet::RowId> WrittenDatabase::Moves(jet::RowId id) {
    const jet::TableDefinition table = Table();
    jet::RowReader reader(file(), table);
    EXPECT_TRUE(reader.Load(id));
    return reader.moves();
}

}  // namespace ledgix::test
