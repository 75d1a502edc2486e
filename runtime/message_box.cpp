#include "message_box.h"

#include <iostream>

namespace ledgix::runtime {

namespace {

class StandardErrorBox : public MessageBox {
public:
    MessageAnswer Show(std::string_view text, int style, std::string_view title) override {
        if (!text.empty())
            std::cerr << title << ": " << text << "\n";
        if ((style & kYesNo) == 0)
            return MessageAnswer::kOk;
        return (style & kSecondButtonIsDefault) != 0 ? MessageAnswer::kNo : MessageAnswer::kYes;
    }
};

StandardErrorBox standard_error;
MessageBox* installed = &standard_error;

}  // namespace

void InstallMessageBox(MessageBox* box) {
    installed = box ? box : &standard_error;
}

MessageAnswer MsgBox(std::string_view text, int style, std::string_view title) {
    return installed->Show(text, style, title);
}

void ShowError(const RuntimeError& error, std::string_view title, int style) {
    MsgBox(error.what(), style, title);
}

}  // namespace ledgix::runtime
