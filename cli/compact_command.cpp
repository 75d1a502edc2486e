#include <memory>
#include <ostream>
#include <string>

#include "access.h"
#include "clock.h"
#include "commands.h"
#include "compact.h"
#include "database_file.h"
#include "date_time.h"

namespace ledgix::cli {

void CompactFile(const std::string& path, const std::string& output, std::ostream& out, std::ostream& err) {
    const std::unique_ptr<jet::DatabaseFile> file = jet::OpenDatabaseFile(path);
    const jet::ReadAccess access(*file);
    const jet::Compacted result = jet::Compact(*file, path, output, runtime::ToDate(runtime::SystemTime().Now()));
    out << "Copied: tables " << result.tables << ", rows " << result.rows << ".\n";
    for (const jet::LeftOut& kind : result.left_out)
        err << "Not copied: " << kind.kind << ", " << kind.count << "\n";
}

}  // namespace ledgix::cli
