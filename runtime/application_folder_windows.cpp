#include <windows.h>

#include "application_folder.h"
#include "text.h"

namespace ledgix::runtime {

char PathSeparator() {
    return '\\';
}

std::string ProgramFolder() {
    wchar_t path[32768];
    const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
    std::u16string text;
    for (DWORD i = 0; i < length; ++i)
        text.push_back(static_cast<char16_t>(path[i]));
    const std::string utf8 = Utf16ToUtf8(text);
    const std::size_t separator = utf8.rfind('\\');
    return separator == std::string::npos ? std::string() : utf8.substr(0, separator);
}

}  // namespace ledgix::runtime
