#pragma once

#include <functional>

#include "preview.h"

class QPrinter;
class QWidget;

namespace ledgix::preview {

// Lets the user choose a printer and what is printed; false when the user does not want to print after all. The printer
// is set up for the document, `owner` is the active window or nullptr.
using PrinterChoice = std::function<bool(QPrinter& printer, QWidget* owner)>;

// The system's print dialog.
bool AskForPrinter(QPrinter& printer, QWidget* owner);

// Shows finished reports in windows of their own, and prints them. Needs a QApplication.
class ReportWindows : public zq::Preview {
public:
    explicit ReportWindows(PrinterChoice choose_printer = AskForPrinter);

    // The window belongs to the active one, so that it can be used while that is a modal dialog, and closes with it.
    std::unique_ptr<zq::PreviewWindow> Show(const zq::Document& document, std::function<void()> print_button) override;
    // A printer that fails is told in a message box.
    void Print(const zq::Document& document) override;

private:
    PrinterChoice choose_printer_;
};

}  // namespace ledgix::preview
