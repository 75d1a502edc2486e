#include "random_table.h"

#include <algorithm>
#include <set>

#include "error_of.h"
#include "index_cursor.h"
#include "pets.h"
#include "row_reader.h"
#include "schema_writer.h"
#include "table_scan.h"

namespace ledgix::test {

namespace {

using jet::ColumnType;
using runtime::Null;
using runtime::Variant;

constexpr char kTable[] = "Everything";
constexpr std::size_t kCode = 1;  // position of the text that is unique
constexpr std::size_t kMostColumns = 24;
constexpr std::size_t kMostIndexes = 9;
constexpr std::size_t kManyRows = 1000;
constexpr std::size_t kFewRows = 300;
constexpr int kDuplicate = 3022;
constexpr int kNullInKey = 3058;

std::vector<ModelColumn> FirstColumns() {
    return {{"Id"},
            {"Code", ColumnType::kText, 20},
            {"Name", ColumnType::kText, 80},
            {"Amount", ColumnType::kDouble},
            {"Flag", ColumnType::kBoolean},
            {"Day", ColumnType::kDate},
            {"Note", ColumnType::kMemo}};
}

jet::NewColumn NewColumnOf(const ModelColumn& column) {
    return {.name = column.name, .type = column.type, .size = column.size};
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

bool IsIndexable(const ModelColumn& column) {
    return !jet::IsLongValue(column.type);
}

}  // namespace

RandomTable::Work::Work(jet::DatabaseFile& database) : file(database) {
    Learn();
}

void RandomTable::Work::Learn() {
    table = file.ReadTableDefinition(file.FindTable(kTable).value().DefinitionPage());
    writer.emplace(file, table);
}

RandomTable::RandomTable(jet::FileSystem& files, std::string path, std::uint32_t seed)
    : files_(files), path_(std::move(path)), random_(seed), model_(FirstColumns()) {
    Reopen();
    MakeTable();
}

RandomTable::~RandomTable() = default;

void RandomTable::Reopen() {
    for (auto& opener : openers_)
        opener = std::make_unique<jet::DatabaseFile>(path_, jet::OpenMode::kReadWrite, files_);
}

void RandomTable::MakeTable() {
    jet::Transaction change(file());
    std::vector<jet::NewColumn> columns;
    for (const ModelColumn& column : model_.columns())
        columns.push_back(NewColumnOf(column));
    jet::TableDefinition table = jet::CreateTable(file(), kTable, columns);
    table = jet::CreateIndex(file(), table, {.name = "PrimaryKey", .parts = {{.column = "Id"}}, .primary = true});
    table = jet::CreateIndex(file(), table,
                             {.name = "Code", .parts = {{.column = "Code"}}, .unique = true, .ignore_nulls = true});
    jet::CreateIndex(file(), table,
                     {.name = "NameAndDay", .parts = {{.column = "Name"}, {.column = "Day", .ascending = false}}});
    change.Commit();
}

void RandomTable::Change(std::size_t operations) {
    while (operations > 0) {
        const std::size_t now = std::min(operations, 1 + random_.Below(200));
        Transact(now);
        operations -= now;
        if (random_.OneOf(50))
            Reopen();
    }
}

void RandomTable::Transact(std::size_t operations) {
    jet::DatabaseFile& file = *openers_[random_.OneOf(4) ? 1 : 0];
    jet::Transaction change(file);
    model_.Begin();
    Work work(file);
    for (std::size_t i = 0; i < operations; ++i)
        Step(work);
    if (random_.OneOf(8)) {
        model_.TakeBack();
        return;
    }
    change.Commit();
    model_.Keep();
}

void RandomTable::Step(Work& work) {
    if (model_.rows().size() > kManyRows)
        growing_ = false;
    if (model_.rows().size() < kFewRows)
        growing_ = true;
    const std::size_t choice = random_.Below(10000);
    if (choice < 4)
        AddColumn(work);
    else if (choice < 6)
        AddIndex(work);
    else if (choice < 8)
        TryRefusedIndex(work);
    else if (choice < 100)
        StepInLevel(work);
    else if (choice < 500)
        TryWhatIsRefused(work);
    else if (choice < 1000)
        ChangeKey(work);
    else if (choice < 5000)
        Update(work);
    else if (choice < (growing_ ? 8500 : 6500))
        Insert(work);
    else
        Delete(work);
}

// In a transaction within the transaction.
void RandomTable::StepInLevel(Work& work) {
    {
        jet::Transaction inner(work.file);
        model_.Begin();
        Work inner_work(work.file);
        for (std::size_t i = 1 + random_.Below(5); i > 0; --i)
            Step(inner_work);
        if (random_.OneOf(2)) {
            inner.Commit();
            model_.Keep();
        } else {
            model_.TakeBack();
        }
    }
    work.Learn();
}

int RandomTable::AnyNumber() {
    auto row = model_.rows().begin();
    std::advance(row, random_.Below(model_.rows().size()));
    return row->first;
}

int RandomTable::FreeNumber() {
    for (;;) {
        const int number = static_cast<int>(random_.Below(20000)) - 5000;
        if (!model_.rows().contains(number))
            return number;
    }
}

// A code that no row has: they are long enough never to meet by chance.
Variant RandomTable::FreeCode() {
    return random_.OneOf(4) ? Variant() : Variant(random_.Word(9 + random_.Below(12)));
}

ModelRow RandomTable::DrawRow() {
    ModelRow row{FreeNumber(), FreeCode()};
    for (std::size_t i = row.size(); i < model_.columns().size(); ++i)
        row.push_back(random_.Draw(model_.columns()[i]));
    return row;
}

void RandomTable::Insert(Work& work) {
    ModelRow row = DrawRow();
    work.writer->Insert(row);
    const int number = std::get<std::int32_t>(row[0]);
    model_.Put(number, std::move(row));
    ++counts_.inserted;
}

void RandomTable::Update(Work& work) {
    if (model_.rows().empty())
        return;
    const int number = AnyNumber();
    ModelRow row = model_.rows().at(number);
    row.resize(model_.columns().size());
    std::vector<jet::TableWriter::Assignment> assignments;
    for (std::size_t i = random_.Below(4); i > 0; --i) {
        const std::size_t column = 1 + random_.Below(row.size() - 1);
        row[column] = column == kCode ? FreeCode() : random_.Draw(model_.columns()[column]);
        assignments.push_back({.column = column, .value = row[column]});
    }
    work.writer->Update(jet::FindRows(work.file, work.table, *work.table.PrimaryKey(), {number}).at(0), assignments);
    model_.Put(number, std::move(row));
    ++counts_.updated;
}

void RandomTable::ChangeKey(Work& work) {
    if (model_.rows().empty())
        return;
    const int number = AnyNumber();
    const int wanted = FreeNumber();
    ModelRow row = model_.rows().at(number);
    row[0] = wanted;
    work.writer->Update(jet::FindRows(work.file, work.table, *work.table.PrimaryKey(), {number}).at(0),
                        {{.column = 0, .value = wanted}});
    model_.Remove(number);
    model_.Put(wanted, std::move(row));
    ++counts_.updated;
}

void RandomTable::Delete(Work& work) {
    if (model_.rows().empty())
        return;
    const int number = AnyNumber();
    work.writer->Delete(jet::FindRows(work.file, work.table, *work.table.PrimaryKey(), {number}).at(0));
    model_.Remove(number);
    ++counts_.deleted;
}

void RandomTable::ExpectRefusal(Work& work, int error, const std::function<void(jet::TableWriter&)>& attempt) {
    const int got = ErrorOf([&] {
        jet::Transaction inner(work.file);
        jet::TableWriter writer(work.file, work.table);
        attempt(writer);
        inner.Commit();
    });
    if (got != error)
        refusals_ += "error " + std::to_string(got) + " in place of " + std::to_string(error) + "\n";
    ++counts_.refused;
}

void RandomTable::TryWhatIsRefused(Work& work) {
    if (model_.rows().size() < 2)
        return;
    const int number = AnyNumber();
    ModelRow row = DrawRow();
    const auto home = [&] { return jet::FindRows(work.file, work.table, *work.table.PrimaryKey(), {row[0]}).at(0); };
    switch (random_.Below(4)) {
        case 0:
            row[0] = number;
            ExpectRefusal(work, kDuplicate, [&](jet::TableWriter& writer) { writer.Insert(row); });
            return;
        case 1:
            row[0] = Null{};
            ExpectRefusal(work, kNullInKey, [&](jet::TableWriter& writer) { writer.Insert(row); });
            return;
        case 2: {
            const Variant code = model_.rows().at(number)[kCode];
            if (runtime::IsNull(code))
                return;
            row[kCode] = Lower(std::get<std::string>(code));
            ExpectRefusal(work, kDuplicate, [&](jet::TableWriter& writer) { writer.Insert(row); });
            return;
        }
        default: {
            row[0] = number;
            const int other = AnyNumber();
            if (other == number)
                return;
            ExpectRefusal(work, kDuplicate, [&](jet::TableWriter& writer) {
                writer.Update(home(), {{.column = 2, .value = "changed"}, {.column = 0, .value = other}});
            });
        }
    }
}

void RandomTable::AddColumn(Work& work) {
    constexpr ColumnType kTypes[]{ColumnType::kText,     ColumnType::kText,  ColumnType::kBoolean, ColumnType::kInt32,
                                  ColumnType::kCurrency, ColumnType::kInt16, ColumnType::kMemo,    ColumnType::kOle};
    if (model_.columns().size() >= kMostColumns)
        return;
    ModelColumn column{.name = "Added " + std::to_string(next_name_++),
                       .type = kTypes[random_.Below(std::size(kTypes))]};
    if (column.type == ColumnType::kText)
        column.size = 90;
    jet::AddColumn(work.file, work.table, NewColumnOf(column));
    work.Learn();
    model_.AddColumn(std::move(column));
    ++counts_.columns;
}

void RandomTable::AddIndex(Work& work) {
    if (work.table.indexes.size() >= kMostIndexes)
        return;
    jet::NewIndex index;
    index.name = "Index " + std::to_string(next_name_++);
    index.ignore_nulls = random_.OneOf(2);
    for (std::size_t i = 1 + random_.Below(3); i > 0; --i) {
        const ModelColumn& column = model_.columns()[random_.Below(model_.columns().size())];
        const bool named = std::any_of(index.parts.begin(), index.parts.end(),
                                       [&](const jet::NewIndex::Part& part) { return part.column == column.name; });
        if (IsIndexable(column) && !named)
            index.parts.push_back({.column = column.name, .ascending = random_.OneOf(2)});
    }
    if (index.parts.empty())
        return;
    jet::CreateIndex(work.file, work.table, index);
    work.Learn();
    ++counts_.indexes;
}

// A unique index over the booleans of three rows or more.
void RandomTable::TryRefusedIndex(Work& work) {
    if (model_.rows().size() < 3)
        return;
    ExpectRefusal(work, kDuplicate, [&](jet::TableWriter&) {
        jet::CreateIndex(work.file, work.table, {.name = "Refused", .parts = {{.column = "Flag"}}, .unique = true});
    });
}

std::string RandomTable::Differences() {
    std::string text = refusals_;
    for (const auto& opener : openers_)
        text += DifferencesOf(*opener);
    return text + Findings(file());
}

std::string RandomTable::DifferencesOf(jet::DatabaseFile& file) {
    const jet::ReadAccess access(file);
    const jet::TableDefinition table = file.ReadTableDefinition(file.FindTable(kTable).value().DefinitionPage());
    std::string text;
    if (table.row_count != model_.rows().size())
        text += "the table counts " + std::to_string(table.row_count) + " rows\n";
    if (table.columns.size() != model_.columns().size())
        return text + "there are " + std::to_string(table.columns.size()) + " columns\n";
    auto wanted = model_.rows().begin();
    jet::RowReader reader(file, table);
    for (jet::IndexCursor cursor(file, table, *table.PrimaryKey()); cursor.Next(); ++wanted) {
        if (wanted == model_.rows().end() || !reader.Load(cursor.row()) || reader.Value(0) != Variant(wanted->first))
            return text + "the primary key leads elsewhere\n";
    }
    return text + RowDifferences(file, table);
}

std::string RandomTable::RowDifferences(jet::DatabaseFile& file, const jet::TableDefinition& table) {
    std::string text;
    std::set<int> seen;
    for (jet::TableScan scan(file, table); scan.Next();) {
        const int number = std::get<std::int32_t>(scan.Value(0));
        const auto row = model_.rows().find(number);
        if (row == model_.rows().end() || !seen.insert(number).second) {
            text += "there is a row " + std::to_string(number) + " too many\n";
            continue;
        }
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            if (scan.Value(i) != model_.Value(row->second, i))
                text += "row " + std::to_string(number) + ": another " + table.columns[i].name + "\n";
        }
    }
    return seen.size() == model_.rows().size() ? text : text + "rows are missing\n";
}

}  // namespace ledgix::test
