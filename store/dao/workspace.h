#pragma once

#include <memory>
#include <string>

#include "dao_database.h"

namespace ledgix::dao {

// The engine, as callers reach it.
class Workspace {
public:
    // Errors: 3024 no such file, 3051 it cannot be opened, 3343 not a database of Jet 3 or Jet 4, 3031 protected by a
    // password, 3112 encrypted, 3049 damaged.
    std::unique_ptr<Database> OpenDatabase(const std::string& path);
};

// The engine's workspace number 0.
Workspace& DefaultWorkspace();

}  // namespace ledgix::dao
