#include <array>
#include <ostream>
#include <string>
#include <vector>

#include "commands.h"
#include "json_text.h"

namespace ledgix::cli {

namespace {

std::string TypeName(const dao::Field& field) {
    switch (field.type) {
        case dao::kBoolean:
            return "Boolean";
        case dao::kByte:
            return "Byte";
        case dao::kInteger:
            return "Integer";
        case dao::kLong:
            return "Long";
        case dao::kCurrency:
            return "Currency";
        case dao::kSingle:
            return "Single";
        case dao::kDouble:
            return "Double";
        case dao::kDate:
            return "Date/Time";
        case dao::kBinary:
            return "Binary " + std::to_string(field.size);
        case dao::kText:
            return "Text " + std::to_string(field.size);
        case dao::kLongBinary:
            return "OLE object";
        case dao::kMemo:
            return "Memo";
        case dao::kGuid:
            return "GUID";
        case dao::kDecimal:
            return "Decimal";
    }
    return "type " + std::to_string(field.type);
}

std::string IndexText(const dao::Index& index) {
    std::string text;
    for (const dao::IndexField& field : index.fields)
        text += (text.empty() ? "" : ", ") + field.name + (field.descending ? " descending" : "");
    const std::array<std::pair<bool, const char*>, 5> properties{{{index.primary, "primary"},
                                                                  {index.unique, "unique"},
                                                                  {index.required, "required"},
                                                                  {index.ignore_nulls, "ignores nulls"},
                                                                  {index.foreign, "relationship"}}};
    std::string marks;
    for (const auto& [holds, name] : properties)
        if (holds)
            marks += (marks.empty() ? "" : ", ") + std::string(name);
    return text + (marks.empty() ? "" : " (" + marks + ")");
}

std::string KindName(dao::TableEntry::Kind kind) {
    switch (kind) {
        case dao::TableEntry::Kind::kSystem:
            return "system";
        case dao::TableEntry::Kind::kLinked:
            return "linked";
        default:
            return "user";
    }
}

void PrintTable(dao::Database& database, const dao::TableEntry& entry, std::ostream& out) {
    out << "\nTable " << entry.name;
    if (entry.kind == dao::TableEntry::Kind::kLinked) {
        out << " (linked from another file)\n";
        return;
    }
    const dao::TableDef table = database.TableDefinition(entry.name);
    out << (entry.kind == dao::TableEntry::Kind::kSystem ? " (system)" : "") << "\n";
    out << "  rows: " << database.CountRows(entry.name) << "\n";
    for (const dao::Field& field : table.fields)
        out << "  column " << field.name << ": " << TypeName(field)
            << ((field.attributes & dao::kAutoIncrementField) != 0 ? ", numbered by the engine" : "") << "\n";
    for (const dao::Index& index : table.indexes)
        out << "  index " << index.name << ": " << IndexText(index) << "\n";
}

void PrintTableJson(dao::Database& database, const dao::TableEntry& entry, std::ostream& out) {
    out << "  {\"name\": " << JsonText(std::string_view(entry.name)) << ", \"kind\": \"" << KindName(entry.kind)
        << "\"";
    if (entry.kind != dao::TableEntry::Kind::kLinked) {
        const dao::TableDef table = database.TableDefinition(entry.name);
        out << ", \"rows\": " << database.CountRows(entry.name) << ",\n   \"columns\": [";
        for (std::size_t i = 0; i < table.fields.Count(); ++i)
            out << (i == 0 ? "" : ", ") << "{\"name\": " << JsonText(std::string_view(table.fields[i].name))
                << ", \"type\": " << JsonText(std::string_view(TypeName(table.fields[i]))) << "}";
        out << "],\n   \"indexes\": [";
        for (std::size_t i = 0; i < table.indexes.Count(); ++i)
            out << (i == 0 ? "" : ", ") << "{\"name\": " << JsonText(std::string_view(table.indexes[i].name))
                << ", \"on\": " << JsonText(std::string_view(IndexText(table.indexes[i]))) << "}";
        out << "]";
    }
    out << "}";
}

}  // namespace

void DescribeFile(dao::Database& database, Format format, bool system, std::ostream& out) {
    std::vector<dao::TableEntry> tables;
    for (const dao::TableEntry& entry : database.Tables())
        if (system || entry.kind != dao::TableEntry::Kind::kSystem)
            tables.push_back(entry);
    if (format == Format::kJson) {
        out << "{\"file\": " << JsonText(std::string_view(database.path())) << ", \"format\": \""
            << database.FormatName() << "\", \"codePage\": " << database.CodePage() << ",\n \"tables\": [";
        for (std::size_t i = 0; i < tables.size(); ++i) {
            out << (i == 0 ? "\n" : ",\n");
            PrintTableJson(database, tables[i], out);
        }
        out << "\n ]}\n";
        return;
    }
    out << "File       " << database.path() << "\nFormat     " << database.FormatName() << "\nCode page  "
        << database.CodePage() << "\nTables     " << tables.size() << "\n";
    for (const dao::TableEntry& entry : tables)
        PrintTable(database, entry, out);
}

}  // namespace ledgix::cli
