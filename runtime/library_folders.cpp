#include "library_folders.h"

#include "application_folder.h"

namespace ledgix::runtime {

std::vector<std::string> LibraryFolders() {
    const std::string program = ProgramFolder();
    return {program, program + "/../lib/ledgix"};
}

}  // namespace ledgix::runtime
