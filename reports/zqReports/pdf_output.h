#pragma once

#include <string>

#include "document.h"

// The PDF writer lies in a library of its own, which is loaded on first use, so that programs start without its needs.
namespace ledgix::zq {

// The document as a PDF file's content: its pages, vector text, embedded fonts. Error 57 when the library is absent or
// cannot draw the document.
std::string ToPdf(const Document& document);

// Writes the PDF under a temporary name and renames it. Error 57 as above, or when the file cannot be written; what
// was at `path` is then still there.
void WritePdf(const Document& document, const std::string& path);

}  // namespace ledgix::zq
