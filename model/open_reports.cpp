#include "open_reports.h"

namespace ledgix::model {

void OpenReports::Run(std::int32_t kind, clsProfile& profile, clsProperty* property) {
    std::erase_if(writers_, [](const auto& writer) { return !writer->InUse(); });
    ReportWriter& writer = *writers_.emplace_back(WindowsOfRecords().NewReportWriter());
    writer.Profile(profile);
    if (property)
        writer.Property(*property);
    writer.ReportType(kind);
    writer.PrintReport();
}

}  // namespace ledgix::model
