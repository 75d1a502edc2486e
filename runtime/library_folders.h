#pragma once

#include <string>
#include <vector>

namespace ledgix::runtime {

// Where the libraries lie that programs load on demand: beside the running program where it was built, below the prefix
// where it was installed. UTF-8.
std::vector<std::string> LibraryFolders();

}  // namespace ledgix::runtime
