#include "workspace.h"

#include "database_file.h"
#include "page_file.h"

namespace ledgix::dao {

std::unique_ptr<Database> Workspace::OpenDatabase(const std::string& path) {
    return std::make_unique<Database>(path, std::make_unique<jet::DatabaseFile>(jet::OpenPageFile(path)));
}

Workspace& DefaultWorkspace() {
    static Workspace workspace;
    return workspace;
}

}  // namespace ledgix::dao
