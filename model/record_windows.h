#pragma once

#include <cstdint>
#include <memory>

// What records ask of the windows above them: their editors, and the writers of their reports.
namespace ledgix::model {

class clsProfile;
class clsProperty;

// The open editor of one record. Destroying it unloads its window, also one that is being shown.
class EditorWindow {
public:
    virtual ~EditorWindow() = default;
    // Shows the window. A modal one returns when the user is done with it, and may be destroyed by then.
    virtual void Show() = 0;
    // An error is of no importance to the caller.
    virtual void BringToFront() = 0;
};

// Runs the reports of one record; kept by the record as long as a preview may ask for another run.
class ReportWriter {
public:
    virtual ~ReportWriter() = default;
    // The records stay the caller's and must outlive the writer's runs.
    virtual void Profile(clsProfile& objProfile) = 0;
    virtual void Property(clsProperty& objProperty) = 0;
    virtual void ReportType(std::int32_t kind) = 0;
    virtual void PrintReport() = 0;
    // A preview of the report is open.
    virtual bool InUse() const = 0;
};

class RecordWindows {
public:
    virtual ~RecordWindows() = default;
    // The record outlives its editor. Not null.
    virtual std::unique_ptr<EditorWindow> EditorOf(clsProfile& profile) = 0;
    virtual std::unique_ptr<EditorWindow> EditorOf(clsProperty& property) = 0;
    virtual std::unique_ptr<ReportWriter> NewReportWriter() = 0;
};

// Makes `windows` answer from now on; nullptr brings back none. The caller keeps them.
void InstallRecordWindows(RecordWindows* windows);

// The windows in force. Error 91 when there are none.
RecordWindows& WindowsOfRecords();

}  // namespace ledgix::model
