#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "conversions.h"
#include "json_text.h"
#include "schema.h"

namespace ledgix::cli {

namespace {

constexpr std::string_view kOwner = "ProfileNumber";

// The columns of the current layout that the file holds, spelled as in the layout.
std::vector<std::string> HeldColumns(dao::Database& database, const store::SchemaTable& table) {
    std::vector<std::string> names;
    if (!database.HasTable(table.name))
        return names;
    const dao::TableDef stored = database.TableDefinition(table.name);
    for (const store::SchemaColumn& column : table.columns)
        if (stored.fields.Contains(column.name))
            names.emplace_back(column.name);
    return names;
}

// The rows of one table, one member after the other.
class TableReader {
public:
    TableReader(dao::Database& database, const store::SchemaTable& table) : columns_(HeldColumns(database, table)) {
        if (columns_.empty())
            return;
        std::string list;
        for (const std::string& column : columns_)
            list += (list.empty() ? "[" : ", [") + column + "]";
        rows_ = database.OpenRecordset("select " + list + " from [" + std::string(table.name) + "]",
                                       dao::kOpenForwardOnly, dao::kReadOnly);
    }

    bool AtRow() const { return rows_ && !rows_->Eof(); }
    void Next() { rows_->MoveNext(); }

    // Null where the column is missing.
    runtime::Variant Value(std::string_view column) const {
        return rows_->fields().Contains(column) ? (*rows_)[column] : runtime::Variant(runtime::Null{});
    }

    // "name": value for every column but `left_out`, each on a line of its own that starts with `indent`.
    std::string Members(const std::string& indent, std::string_view left_out = {}) const {
        std::string text;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (columns_[i] == left_out)
                continue;
            text += (text.empty() ? "" : ",\n") + indent + "\"" + columns_[i] + "\": " + JsonText((*rows_)[i]);
        }
        return text;
    }

private:
    std::vector<std::string> columns_;
    std::unique_ptr<dao::Recordset> rows_;
};

// What precedes the next element of a list: the first one follows the bracket directly.
std::string Separator(bool& first) {
    return std::exchange(first, false) ? "\n" : ",\n";
}

struct PropertyList {
    std::string elements;
    std::size_t count = 0;
};

// The elements of the member `properties`, by the number of the profile.
std::map<std::int32_t, PropertyList> PropertiesByProfile(dao::Database& database) {
    std::map<std::int32_t, PropertyList> lists;
    for (TableReader rows(database, store::ProfilePropertyTable()); rows.AtRow(); rows.Next()) {
        PropertyList& list = lists[runtime::ToInt32(rows.Value(kOwner))];
        list.elements += (list.count++ == 0 ? "\n" : ",\n");
        list.elements += "    {\n" + rows.Members("     ", kOwner) + "\n    }";
    }
    return lists;
}

void ExportProfiles(dao::Database& database, std::ostream& out, std::ostream& err) {
    std::map<std::int32_t, PropertyList> properties = PropertiesByProfile(database);
    bool first = true;
    out << " \"profiles\": [";
    for (TableReader rows(database, store::ProfilesTable()); rows.AtRow(); rows.Next()) {
        const PropertyList list = std::move(properties[runtime::ToInt32(rows.Value(kOwner))]);
        properties.erase(runtime::ToInt32(rows.Value(kOwner)));
        out << Separator(first) << "  {\n" << rows.Members("   ") << ",\n   \"properties\": [";
        out << list.elements << (list.count == 0 ? "]" : "\n   ]") << "\n  }";
    }
    out << (first ? "]" : "\n ]");
    std::size_t orphans = 0;
    for (const auto& [number, list] : properties)
        orphans += list.count;
    if (orphans != 0)
        err << "Rows of ProfileProperty that belong to no profile were left out: " << orphans << "\n";
}

void ExportTaxRates(dao::Database& database, std::ostream& out) {
    bool first = true;
    out << " \"taxRates\": [";
    for (TableReader rows(database, store::TaxRatesTable()); rows.AtRow(); rows.Next())
        out << Separator(first) << "  {\n" << rows.Members("   ") << "\n  }";
    out << (first ? "]" : "\n ]");
}

}  // namespace

void ExportContent(dao::Database& database, std::ostream& out, std::ostream& err) {
    out << "{\n";
    ExportProfiles(database, out, err);
    out << ",\n";
    ExportTaxRates(database, out);
    out << "\n}\n";
}

}  // namespace ledgix::cli
