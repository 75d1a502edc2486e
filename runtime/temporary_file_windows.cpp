#include <windows.h>

#include "runtime_error.h"
#include "temporary_file.h"
#include "text.h"

namespace ledgix::runtime {

namespace {

std::wstring Wide(const std::string& utf8) {
    const std::u16string text = ToUtf16(utf8);
    return {text.begin(), text.end()};
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& prefix, const std::string& suffix) {
    wchar_t folder[MAX_PATH + 1];
    wchar_t name[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH, folder) == 0 || GetTempFileNameW(folder, Wide(prefix).c_str(), 0, name) == 0)
        RaiseError(ErrorNumber::kDeviceIo, "No temporary file can be made.");
    const std::wstring made = name;
    const std::wstring wanted = made + Wide(suffix);
    MoveFileW(made.c_str(), wanted.c_str());
    path_ = Utf16ToUtf8(std::u16string(wanted.begin(), wanted.end()));
}

TemporaryFile::~TemporaryFile() {
    DeleteFileW(Wide(path_).c_str());
}

}  // namespace ledgix::runtime
