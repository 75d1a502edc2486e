#include "report_windows.h"

#include <QApplication>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <utility>

#include "frm_preview.h"
#include "message_box.h"
#include "print_job.h"

namespace ledgix::preview {

namespace {

// What the report keeps of its window. The window is gone as soon as the user has closed it.
class Handle : public zq::PreviewWindow {
public:
    explicit Handle(frmPreview* window) : window_(window) {}
    ~Handle() override {
        if (window_)
            window_->close();
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool IsOpen() const override { return window_ && window_->isVisible(); }

private:
    QPointer<frmPreview> window_;
};

// Without the program in front no window is active, but a dialog may still keep the user from all others.
QWidget* Owner() {
    QWidget* active = QApplication::activeWindow();
    return active ? active : QApplication::activeModalWidget();
}

}  // namespace

bool AskForPrinter(QPrinter& printer, QWidget* owner) {
    QPrintDialog dialog(&printer, owner);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    return dialog.exec() == QDialog::Accepted;
}

ReportWindows::ReportWindows(PrinterChoice choose_printer) : choose_printer_(std::move(choose_printer)) {}

std::unique_ptr<zq::PreviewWindow> ReportWindows::Show(const zq::Document& document,
                                                       std::function<void()> print_button) {
    auto* window = new frmPreview(document, std::move(print_button), Owner());
    window->show();
    return std::make_unique<Handle>(window);
}

void ReportWindows::Print(const zq::Document& document) {
    QPrinter printer(QPrinter::HighResolution);
    SetUpPrinter(printer, document);
    printer.setFromTo(1, static_cast<int>(document.pages.size()));
    printer.setPrintRange(QPrinter::AllPages);
    if (choose_printer_(printer, Owner()) && !PrintPages(printer, document))
        runtime::MsgBox("The report could not be printed.", runtime::kExclamation);
}

}  // namespace ledgix::preview
