#include "record_windows.h"

#include "runtime_error.h"

namespace ledgix::model {

namespace {

RecordWindows* installed = nullptr;

}  // namespace

void InstallRecordWindows(RecordWindows* windows) {
    installed = windows;
}

RecordWindows& WindowsOfRecords() {
    if (!installed)
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    return *installed;
}

}  // namespace ledgix::model
