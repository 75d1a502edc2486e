#include "pdf_output.h"

#include "files.h"
#include "library_folders.h"
#include "pdf_library.h"
#include "runtime_error.h"

namespace ledgix::zq {

PdfRenderer FindPdfRenderer(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders)
        if (const PdfRenderer renderer = LoadPdfRenderer(folder))
            return renderer;
    runtime::RaiseError(runtime::ErrorNumber::kDeviceIo,
                        "The library that writes PDF files, or Qt, which it needs, is not installed.");
}

std::string ToPdf(const Document& document) {
    static const PdfRenderer renderer = FindPdfRenderer(runtime::LibraryFolders());
    std::string content;
    const PdfSink append = [](void* context, const char* bytes, std::size_t count) {
        static_cast<std::string*>(context)->append(bytes, count);
    };
    if (!renderer(&document, append, &content))
        runtime::RaiseError(runtime::ErrorNumber::kDeviceIo, "The report cannot be drawn as a PDF file.");
    return content;
}

void WritePdf(const Document& document, const std::string& path) {
    runtime::WriteFile(path, ToPdf(document));
}

}  // namespace ledgix::zq
