#include <windows.h>

#include "pdf_library.h"
#include "text.h"

namespace ledgix::zq {

PdfRenderer LoadPdfRenderer(const std::string& folder) {
    const std::u16string path = runtime::ToUtf16(folder + "\\ledgix_pdf.dll");
    const HMODULE library =
        LoadLibraryExW(reinterpret_cast<const wchar_t*>(path.c_str()), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return library ? reinterpret_cast<PdfRenderer>(GetProcAddress(library, kPdfRendererName)) : nullptr;
}

}  // namespace ledgix::zq
