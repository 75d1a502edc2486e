#pragma once

#include <deque>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "message_box.h"

namespace ledgix::test {

// Answers in place of the message box as long as it lives, and keeps what was shown.
class MessageRecorder : public runtime::MessageBox {
public:
    struct Message {
        std::string text;
        int style = 0;
        std::string title;
        bool operator==(const Message&) const = default;
    };

    MessageRecorder() { runtime::InstallMessageBox(this); }
    ~MessageRecorder() override { runtime::InstallMessageBox(nullptr); }
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    // The next question gets this answer. Without one a box is answered by OK, a question by No.
    void AnswerNext(runtime::MessageAnswer answer) { answers_.push_back(answer); }

    runtime::MessageAnswer Show(std::string_view text, int style, std::string_view title) override {
        messages_.push_back({std::string(text), style, std::string(title)});
        if (!answers_.empty()) {
            const runtime::MessageAnswer answer = answers_.front();
            answers_.pop_front();
            return answer;
        }
        return (style & runtime::kYesNo) != 0 ? runtime::MessageAnswer::kNo : runtime::MessageAnswer::kOk;
    }

    const std::vector<Message>& messages() const { return messages_; }
    void Clear() { messages_.clear(); }

private:
    std::vector<Message> messages_;
    std::deque<runtime::MessageAnswer> answers_;
};

// Names a message in a failed test.
inline void PrintTo(const MessageRecorder::Message& message, std::ostream* out) {
    *out << "\"" << message.text << "\" style " << message.style << " title \"" << message.title << "\"";
}

}  // namespace ledgix::test
