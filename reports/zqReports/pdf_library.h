#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "document.h"

// The border to the library that holds the PDF writer. Both sides are built together.
namespace ledgix::zq {

// Receives bytes of the file, in order.
using PdfSink = void (*)(void* context, const char* bytes, std::size_t count);

// What the library offers under kPdfRendererName. False when the document cannot be drawn. Raises nothing.
using PdfRenderer = bool (*)(const Document* document, PdfSink sink, void* context);
inline constexpr const char* kPdfRendererName = "LedgixRenderPdf";

// The renderer of the library in this folder; nullptr when there is none. A library that was loaded stays loaded.
PdfRenderer LoadPdfRenderer(const std::string& folder);

// The renderer of the library in the first folder that has it. Error 57 when none does.
PdfRenderer FindPdfRenderer(const std::vector<std::string>& folders);

}  // namespace ledgix::zq
