#include "workspace.h"

#include <filesystem>

#include "clock.h"
#include "database_file.h"
#include "date_time.h"
#include "files.h"
#include "new_database.h"
#include "page_file.h"
#include "runtime_error.h"

namespace ledgix::dao {

std::unique_ptr<Database> Workspace::OpenDatabase(const std::string& path) {
    return std::make_unique<Database>(path, jet::OpenDatabaseFile(path));
}

Workspace& DefaultWorkspace() {
    static Workspace workspace;
    return workspace;
}

void CreateDatabase(const std::string& path, FileFormat format) {
    if (std::filesystem::exists(runtime::ToPath(path)))
        runtime::RaiseEngineError(runtime::ErrorNumber::kDatabaseExists, "The database exists already: " + path);
    const jet::Generation generation = format == FileFormat::kJet3 ? jet::Generation::kJet3 : jet::Generation::kJet4;
    const std::vector<std::uint8_t> content =
        jet::NewDatabase(generation, runtime::ToDate(runtime::SystemTime().Now()));
    runtime::WriteFile(path, {reinterpret_cast<const char*>(content.data()), content.size()});
}

}  // namespace ledgix::dao
