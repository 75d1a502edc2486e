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

enum class FileFormat { kJet3, kJet4 };

// Makes a database file without any table of the user; it is not opened. Errors: 3204 when there is a file of that
// name, which stays as it is, 57 when it cannot be written.
void CreateDatabase(const std::string& path, FileFormat format);

}  // namespace ledgix::dao
