#pragma once

#include "document.h"

namespace ledgix::zq {

// Where a finished report goes.
enum Destination : int { kToPreview = 0, kToPrinter = 2 };

// What the engine asks of the window layer. Nothing is shown or printed while none is installed.
class Preview {
public:
    virtual ~Preview() = default;
    // Shows the report in a window (kToPreview) or prints it (kToPrinter). The document may change when the call has
    // returned; copy what is kept.
    virtual void Show(const Document& document, int destination) = 0;
};

// Makes `preview` receive finished reports from now on; nullptr brings back none. The caller keeps the preview.
void InstallPreview(Preview* preview);

// The preview in force, or nullptr.
Preview* InstalledPreview();

}  // namespace ledgix::zq
