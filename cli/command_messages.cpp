#include "command_messages.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "conversions.h"
#include "runtime_error.h"

namespace ledgix::cli {

bool IsFileError(int number) {
    using runtime::ErrorNumber;
    constexpr std::array kNumbers{ErrorNumber::kDatabaseNotFound,
                                  ErrorNumber::kCannotOpenFile,
                                  ErrorNumber::kUnrecognizedFormat,
                                  ErrorNumber::kDatabaseDamaged,
                                  ErrorNumber::kPasswordProtected,
                                  ErrorNumber::kEncrypted,
                                  ErrorNumber::kDiskIo};
    return std::any_of(kNumbers.begin(), kNumbers.end(),
                       [&](ErrorNumber of_file) { return static_cast<int>(of_file) == number; });
}

CommandMessages::CommandMessages(std::ostream& err) : err_(err) {
    runtime::InstallMessageBox(this);
    services::InstallDiagnostics(this);
}

CommandMessages::~CommandMessages() {
    runtime::InstallMessageBox(nullptr);
    services::InstallDiagnostics(nullptr);
}

runtime::MessageAnswer CommandMessages::Show(std::string_view text, int, std::string_view title) {
    ++count_;
    if (!text.empty())
        err_ << title << ": " << text << "\n";
    return runtime::MessageAnswer::kOk;
}

// A diagnosis starts with the number of the error.
void CommandMessages::Write(std::string_view diagnosis) {
    ++count_;
    err_ << "ledgix-cli: " << diagnosis << "\n";
    const double number = runtime::LeadingNumber(diagnosis.substr(0, diagnosis.find(' ')));
    file_error_ = file_error_ || IsFileError(static_cast<int>(number));
}

}  // namespace ledgix::cli
