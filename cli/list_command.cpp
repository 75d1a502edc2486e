#include <iomanip>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "commands.h"
#include "conversions.h"
#include "database.h"
#include "json_text.h"
#include "layout_check.h"

namespace ledgix::cli {

namespace {

struct Named {
    std::int32_t number = 0;
    std::string name;
};

using PropertyNames = std::map<std::int32_t, std::vector<Named>>;

std::string NameText(const runtime::Variant& name) {
    return runtime::ToText(store::NullToValue(name, std::string()));
}

std::vector<Named> ReadProfiles(dao::Database& database) {
    std::vector<Named> profiles;
    const auto rows = database.OpenRecordset("select ProfileNumber, profile_name from Profiles", dao::kOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext())
        profiles.push_back({runtime::ToInt32((*rows)[0]), NameText((*rows)[1])});
    return profiles;
}

PropertyNames ReadProperties(dao::Database& database) {
    PropertyNames properties;
    const auto rows = database.OpenRecordset("select ProfileNumber, PropertyNumber, PropertyName from ProfileProperty",
                                             dao::kOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext())
        properties[runtime::ToInt32((*rows)[0])].push_back({runtime::ToInt32((*rows)[1]), NameText((*rows)[2])});
    return properties;
}

void PrintText(const std::vector<Named>& profiles, PropertyNames& properties, std::ostream& out) {
    for (const Named& profile : profiles) {
        out << std::setw(5) << profile.number << "  " << profile.name << "\n";
        for (const Named& property : properties[profile.number])
            out << std::setw(12) << property.number << "  " << property.name << "\n";
    }
}

void PrintJson(const std::vector<Named>& profiles, PropertyNames& properties, std::ostream& out) {
    out << "{\"profiles\": [";
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        out << (i == 0 ? "\n" : ",\n") << " {\"ProfileNumber\": " << profiles[i].number
            << ", \"profile_name\": " << JsonText(std::string_view(profiles[i].name)) << ", \"properties\": [";
        bool first = true;
        for (const Named& property : properties[profiles[i].number]) {
            out << (first ? "\n" : ",\n") << "  {\"PropertyNumber\": " << property.number
                << ", \"PropertyName\": " << JsonText(std::string_view(property.name)) << "}";
            first = false;
        }
        out << "]}";
    }
    out << "]}\n";
}

}  // namespace

void ListProfiles(dao::Database& database, Format format, std::ostream& out) {
    if (!database.HasTable(store::ProfilesTable().name))
        RequireLayout(database, {&store::ProfilesTable()});
    const std::vector<Named> profiles = ReadProfiles(database);
    PropertyNames properties;
    if (database.HasTable(store::ProfilePropertyTable().name))
        properties = ReadProperties(database);
    if (format == Format::kJson)
        PrintJson(profiles, properties, out);
    else
        PrintText(profiles, properties, out);
}

}  // namespace ledgix::cli
