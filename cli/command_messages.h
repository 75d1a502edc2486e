#pragma once

#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "error_log.h"
#include "message_box.h"

namespace ledgix::cli {

// True for the numbers of errors that say that a database file as a whole cannot be used.
bool IsFileError(int number);

// Writes to a stream what the program's own error traps have to say, as long as it lives.
class CommandMessages : public runtime::MessageBox, public services::Diagnostics {
public:
    explicit CommandMessages(std::ostream& err);
    ~CommandMessages() override;
    CommandMessages(const CommandMessages&) = delete;
    CommandMessages& operator=(const CommandMessages&) = delete;

    runtime::MessageAnswer Show(std::string_view text, int style, std::string_view title) override;
    void Write(std::string_view diagnosis) override;

    // Message boxes that were to be shown so far, empty ones too, and diagnoses.
    std::size_t Count() const { return count_; }

    // The data layer has trapped a file error.
    bool FileErrorSeen() const { return file_error_; }

private:
    std::ostream& err_;
    std::size_t count_ = 0;
    bool file_error_ = false;
};

}  // namespace ledgix::cli
