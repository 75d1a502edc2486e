#include "check_command.h"

#include <memory>
#include <ostream>
#include <vector>

#include "access.h"
#include "database_file.h"
#include "json_text.h"
#include "structure_check.h"

namespace ledgix::cli {

namespace {

void PrintJson(const std::vector<jet::Finding>& findings, std::ostream& out) {
    out << "[";
    for (std::size_t i = 0; i < findings.size(); ++i)
        out << (i == 0 ? "\n " : ",\n ") << "{\"code\": " << JsonText(std::string_view(findings[i].code))
            << ", \"text\": " << JsonText(std::string_view(findings[i].text)) << "}";
    out << (findings.empty() ? "]\n" : "\n]\n");
}

void PrintLines(const std::vector<jet::Finding>& findings, std::ostream& out) {
    constexpr std::size_t kCodeWidth = 4;
    for (const jet::Finding& finding : findings)
        out << finding.code << std::string(kCodeWidth - finding.code.size(), ' ') << finding.text << "\n";
    if (findings.empty())
        out << "No faults found.\n";
}

}  // namespace

bool CheckFile(const std::string& path, bool strict, Format format, std::ostream& out) {
    const std::unique_ptr<jet::DatabaseFile> file = jet::OpenDatabaseFile(path);
    const jet::ReadAccess access(*file);
    const std::vector<jet::Finding> findings =
        jet::CheckStructure(file->pager(), strict ? jet::Strictness::kOwnFiles : jet::Strictness::kAnyWriter);
    if (format == Format::kJson)
        PrintJson(findings, out);
    else
        PrintLines(findings, out);
    return findings.empty();
}

}  // namespace ledgix::cli
