#pragma once

#include <string_view>

#include "runtime_error.h"

namespace ledgix::runtime {

// The program's title, which message boxes bear unless a routine names its own.
inline constexpr std::string_view kProgramTitle = "Vantreo Ledgix";

// Parts of a box's style, added up.
enum MessageStyle : int {
    kOkOnly = 0,
    kYesNo = 4,
    kQuestion = 32,
    kExclamation = 48,
    kSecondButtonIsDefault = 256,
};

enum class MessageAnswer { kOk = 1, kYes = 6, kNo = 7 };

// Shows a text and waits for the answer: a window on the desktop, a recorder in tests, standard error elsewhere.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    virtual MessageAnswer Show(std::string_view text, int style, std::string_view title) = 0;
};

// Makes `box` answer from now on; nullptr brings back standard error, which answers with the default button.
// The caller keeps the box.
void InstallMessageBox(MessageBox* box);

MessageAnswer MsgBox(std::string_view text, int style = kOkOnly, std::string_view title = kProgramTitle);

// "number - description" under the title of the routine that trapped the error.
void ShowError(const RuntimeError& error, std::string_view title, int style = kOkOnly);

}  // namespace ledgix::runtime
