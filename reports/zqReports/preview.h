#pragma once

#include <functional>
#include <memory>

#include "document.h"

namespace ledgix::zq {

// Where a finished report goes.
enum Destination : int { kToPreview = 0, kToPrinter = 2 };

// A report's window. Destroying it closes the window.
class PreviewWindow {
public:
    virtual ~PreviewWindow() = default;
    // The user has not closed it yet.
    virtual bool IsOpen() const = 0;
};

// What the engine asks of the window layer. Nothing is shown or printed while none is installed. The documents may
// change when the calls have returned; copy what is kept.
class Preview {
public:
    virtual ~Preview() = default;
    // Opens a window on the report. `print_button` is to be called when the user presses its print button; it may be
    // called as long as the result lives. Not null.
    virtual std::unique_ptr<PreviewWindow> Show(const Document& document, std::function<void()> print_button) = 0;
    // Lets the user choose a printer, and prints.
    virtual void Print(const Document& document) = 0;
};

// Makes `preview` receive finished reports from now on; nullptr brings back none. The caller keeps the preview.
void InstallPreview(Preview* preview);

// The preview in force, or nullptr.
Preview* InstalledPreview();

}  // namespace ledgix::zq
