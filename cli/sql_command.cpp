#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "commands.h"
#include "csv_field.h"
#include "json_text.h"
#include "text.h"
#include "text_table.h"

namespace ledgix::cli {

namespace {

std::vector<std::string> FieldNames(const dao::Recordset& rows) {
    std::vector<std::string> names;
    for (const dao::Field& field : rows.fields())
        names.push_back(field.name);
    return names;
}

std::vector<runtime::Variant> RowValues(const dao::Recordset& rows) {
    std::vector<runtime::Variant> values;
    for (std::size_t i = 0; i < rows.fields().Count(); ++i)
        values.push_back(rows[i]);
    return values;
}

void PrintCsvRecord(const std::vector<std::string>& fields, std::ostream& out) {
    for (std::size_t i = 0; i < fields.size(); ++i)
        out << (i == 0 ? "" : ",") << runtime::CsvField(fields[i]);
    out << "\r\n";
}

void PrintText(dao::Recordset& rows, std::ostream& out) {
    TextTable table(FieldNames(rows));
    for (; !rows.Eof(); rows.MoveNext())
        table.AddRow(RowValues(rows));
    table.Print(out);
}

void PrintCsv(dao::Recordset& rows, std::ostream& out) {
    PrintCsvRecord(FieldNames(rows), out);
    for (; !rows.Eof(); rows.MoveNext()) {
        std::vector<std::string> fields;
        for (const runtime::Variant& value : RowValues(rows))
            fields.push_back(CellText(value));
        PrintCsvRecord(fields, out);
    }
}

void PrintJson(dao::Recordset& rows, std::ostream& out) {
    out << "[";
    for (bool first = true; !rows.Eof(); rows.MoveNext(), first = false) {
        out << (first ? "\n {" : ",\n {");
        for (std::size_t i = 0; i < rows.fields().Count(); ++i)
            out << (i == 0 ? "" : ", ") << JsonText(std::string_view(rows.fields()[i].name)) << ": "
                << JsonText(rows[i]);
        out << "}";
    }
    out << "\n]\n";
}

bool IsAction(const std::string& statement) {
    const std::size_t begin = std::min(statement.find_first_not_of(" \t\r\n"), statement.size());
    const std::size_t end = std::min(statement.find_first_of(" \t\r\n[", begin), statement.size());
    const std::string verb = runtime::FoldCase(statement.substr(begin, end - begin));
    return verb == "insert" || verb == "update" || verb == "delete";
}

void PrintCount(std::size_t rows, Format format, std::ostream& out) {
    if (format == Format::kCsv)
        out << "rowsAffected\r\n" << rows << "\r\n";
    else if (format == Format::kJson)
        out << "{\"rowsAffected\": " << rows << "}\n";
    else
        out << rows << " rows changed.\n";
}

}  // namespace

void RunSql(dao::Database& database, const std::string& statement, Format format, std::ostream& out) {
    if (IsAction(statement))
        return PrintCount(database.Execute(statement), format, out);
    const std::unique_ptr<dao::Recordset> rows =
        database.OpenRecordset(statement, dao::kOpenForwardOnly, dao::kReadOnly);
    if (format == Format::kCsv)
        PrintCsv(*rows, out);
    else if (format == Format::kJson)
        PrintJson(*rows, out);
    else
        PrintText(*rows, out);
}

}  // namespace ledgix::cli
