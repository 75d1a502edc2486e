#pragma once

#include "message_box.h"

namespace ledgix::shell {

// Message boxes as windows: plain text, modal to the whole program, above the window in use. Esc means OK, or No to a
// question.
class DesktopMessageBox : public runtime::MessageBox {
public:
    runtime::MessageAnswer Show(std::string_view text, int style, std::string_view title) override;
};

}  // namespace ledgix::shell
