#pragma once

#include "desktop.h"
#include "record_windows.h"

namespace ledgix::editors {

// The real windows of records: frmProfile as a document of the desktop, frmProperty as a modal dialog, clsReport.
class FormWindows : public model::RecordWindows {
public:
    // The desktop stays the caller's and must outlive all windows.
    explicit FormWindows(Desktop& desktop) : desktop_(desktop) {}

    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProfile& profile) override;
    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProperty& property) override;
    std::unique_ptr<model::ReportWriter> NewReportWriter() override;

private:
    Desktop& desktop_;
};

}  // namespace ledgix::editors
