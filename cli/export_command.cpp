#include <algorithm>
#include <functional>
#include <map>
#include <ostream>
#include <span>
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

// Hands out the rows of one table; there are none where the file lacks the table.
class TableReader {
public:
    TableReader(dao::Database& database, const store::SchemaTable& table)
        : database_(database), table_(table.name), columns_(HeldColumns(database, table)) {}

    // Leaves out columns of this name when members are made.
    void LeaveOut(std::string_view column) { left_out_ = column; }

    // Each member stands on a line of its own that starts with `indent`.
    void Indent(const std::string& indent) {
        for (const std::string& column : columns_) {
            const bool first =
                std::all_of(starts_.begin(), starts_.end(), [](const auto& start) { return start.empty(); });
            std::string start = first ? "" : ",\n";
            start += indent + "\"" + column + "\": ";
            starts_.push_back(column == left_out_ ? "" : start);
        }
    }

    void Visit(const std::function<void(std::span<const runtime::Variant> values)>& visit) const {
        if (columns_.empty())
            return;
        std::string list;
        for (const std::string& column : columns_)
            list += (list.empty() ? "[" : ", [") + column + "]";
        database_.VisitRows("select " + list + " from [" + table_ + "]",
                            [&](const auto&, std::span<const runtime::Variant> values) { visit(values); });
    }

    // Null where the column is missing.
    runtime::Variant Value(std::string_view column, std::span<const runtime::Variant> values) const {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (columns_[i] == column)
                return values[i];
        }
        return runtime::Null{};
    }

    // "name": value for every column that is not left out.
    void AppendMembers(std::string& json, std::span<const runtime::Variant> values) const {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (starts_[i].empty())
                continue;
            json += starts_[i];
            AppendJson(json, values[i]);
        }
    }

private:
    dao::Database& database_;
    std::string table_;
    std::vector<std::string> columns_;
    std::vector<std::string> starts_;  // what stands before the value of a column
    std::string_view left_out_;
};

// What precedes the next element of a list: the first one follows the bracket directly.
const char* Separator(bool& first) {
    return std::exchange(first, false) ? "\n" : ",\n";
}

struct PropertyList {
    std::string elements;
    std::size_t count = 0;
};

// The elements of the member `properties`, by the number of the profile.
std::map<std::int32_t, PropertyList> PropertiesByProfile(dao::Database& database) {
    TableReader rows(database, store::ProfilePropertyTable());
    rows.LeaveOut(kOwner);
    rows.Indent("     ");
    std::map<std::int32_t, PropertyList> lists;
    rows.Visit([&](std::span<const runtime::Variant> values) {
        PropertyList& list = lists[runtime::ToInt32(rows.Value(kOwner, values))];
        list.elements += list.count++ == 0 ? "\n    {\n" : ",\n    {\n";
        rows.AppendMembers(list.elements, values);
        list.elements += "\n    }";
    });
    return lists;
}

void ExportProfiles(dao::Database& database, std::ostream& out, std::ostream& err) {
    std::map<std::int32_t, PropertyList> properties = PropertiesByProfile(database);
    TableReader rows(database, store::ProfilesTable());
    rows.Indent("   ");
    bool first = true;
    out << " \"profiles\": [";
    rows.Visit([&](std::span<const runtime::Variant> values) {
        const auto found = properties.find(runtime::ToInt32(rows.Value(kOwner, values)));
        const PropertyList list = found == properties.end() ? PropertyList() : std::move(found->second);
        if (found != properties.end())
            properties.erase(found);
        std::string members;
        rows.AppendMembers(members, values);
        out << Separator(first) << "  {\n" << members << ",\n   \"properties\": [";
        out << list.elements << (list.count == 0 ? "]" : "\n   ]") << "\n  }";
    });
    out << (first ? "]" : "\n ]");
    std::size_t orphans = 0;
    for (const auto& [number, list] : properties)
        orphans += list.count;
    if (orphans != 0)
        err << "Rows of ProfileProperty that belong to no profile were left out: " << orphans << "\n";
}

void ExportTaxRates(dao::Database& database, std::ostream& out) {
    TableReader rows(database, store::TaxRatesTable());
    rows.Indent("   ");
    bool first = true;
    out << " \"taxRates\": [";
    rows.Visit([&](std::span<const runtime::Variant> values) {
        std::string members;
        rows.AppendMembers(members, values);
        out << Separator(first) << "  {\n" << members << "\n  }";
    });
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
