#include "database_location.h"

#include "application_folder.h"
#include "conversions.h"
#include "files.h"
#include "registry.h"
#include "text.h"

namespace ledgix::store {

namespace {

DatabaseLocation LocateNetworked(const LocationSurroundings& surroundings, const std::string& beside) {
    const std::string location = surroundings.setting("DatabaseLocation", beside);
    if (!location.empty() && surroundings.file_exists(location))
        return {location, {}};
    const std::string line_break(runtime::kLineBreak);
    return {beside,
            "Unable to access " + line_break + location + line_break + "Reverting back to " + line_break + beside};
}

}  // namespace

LocationSurroundings ProgramSurroundings() {
    return {runtime::ApplicationFolder(), runtime::PathSeparator(),
            [](const std::string& path) { return runtime::FindFile(path).has_value(); },
            [](const std::string& name, const std::string& fallback) {
                return services::GetRegistrySetting("Settings", name, fallback);
            }};
}

DatabaseLocation LocateDatabase(const LocationSurroundings& surroundings) {
    const std::string start = surroundings.application_folder + surroundings.separator;
    const std::string above = start + ".." + surroundings.separator;
    const std::string beside = start + "property.mdb";
    if (runtime::ToInt16(surroundings.setting("Networkable", "0")) != 0)
        return LocateNetworked(surroundings, beside);
    return {surroundings.file_exists(above + "property.mdb") ? above + "Property.mdb" : beside, {}};
}

}  // namespace ledgix::store
