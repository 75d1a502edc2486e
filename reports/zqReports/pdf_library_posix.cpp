#include <dlfcn.h>

#include "pdf_library.h"

namespace ledgix::zq {

PdfRenderer LoadPdfRenderer(const std::string& folder) {
    void* library = dlopen((folder + "/libledgix_pdf.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    return library ? reinterpret_cast<PdfRenderer>(dlsym(library, kPdfRendererName)) : nullptr;
}

}  // namespace ledgix::zq
