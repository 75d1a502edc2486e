#include "message_box.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "message_recorder.h"

namespace ledgix::runtime {
namespace {

using test::MessageRecorder;

// Catches what goes to standard error as long as it lives.
class CaughtStandardError {
public:
    CaughtStandardError() : before_(std::cerr.rdbuf(text_.rdbuf())) {}
    ~CaughtStandardError() { std::cerr.rdbuf(before_); }
    CaughtStandardError(const CaughtStandardError&) = delete;
    CaughtStandardError& operator=(const CaughtStandardError&) = delete;

    std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* before_;
};

TEST(StandardMessageBox, WritesTitleAndTextToStandardError) {
    const CaughtStandardError caught;
    EXPECT_EQ(MsgBox("Nothing to print", kExclamation, "Report"), MessageAnswer::kOk);
    EXPECT_EQ(caught.text(), "Report: Nothing to print\n");
}

TEST(StandardMessageBox, BearsTheProgramsTitleWhereNoneIsGiven) {
    const CaughtStandardError caught;
    MsgBox("Hello");
    EXPECT_EQ(caught.text(), "Vantreo Ledgix: Hello\n");
}

TEST(StandardMessageBox, WritesNothingForAnEmptyText) {
    const CaughtStandardError caught;
    EXPECT_EQ(MsgBox(""), MessageAnswer::kOk);
    EXPECT_EQ(caught.text(), "");
}

TEST(StandardMessageBox, AnswersWithTheDefaultButton) {
    const CaughtStandardError caught;
    EXPECT_EQ(MsgBox("?", kYesNo + kQuestion), MessageAnswer::kYes);
    EXPECT_EQ(MsgBox("?", kYesNo + kQuestion + kSecondButtonIsDefault), MessageAnswer::kNo);
}

TEST(InstalledMessageBox, AnswersInPlaceOfStandardError) {
    const CaughtStandardError caught;
    {
        MessageRecorder recorder;
        recorder.AnswerNext(MessageAnswer::kYes);
        EXPECT_EQ(MsgBox("Delete?", kYesNo + kQuestion, "Profiles"), MessageAnswer::kYes);
        EXPECT_EQ(MsgBox("Delete?", kYesNo), MessageAnswer::kNo);
        EXPECT_EQ(recorder.messages(),
                  (std::vector<MessageRecorder::Message>{{"Delete?", kYesNo + kQuestion, "Profiles"},
                                                         {"Delete?", kYesNo, "Vantreo Ledgix"}}));
    }
    EXPECT_EQ(caught.text(), "");
    MsgBox("again");
    EXPECT_EQ(caught.text(), "Vantreo Ledgix: again\n");
}

TEST(ErrorBox, ShowsNumberAndDescriptionUnderTheRoutinesTitle) {
    MessageRecorder recorder;
    ShowError(RuntimeError(91, "Ledgix", "Object variable not set"), "Sub Main");
    ShowError(RuntimeError(5, "Ledgix", "Wrong"), "Save Registry Setting", kExclamation);
    EXPECT_EQ(recorder.messages(),
              (std::vector<MessageRecorder::Message>{{"91 - Object variable not set", kOkOnly, "Sub Main"},
                                                     {"5 - Wrong", kExclamation, "Save Registry Setting"}}));
}

}  // namespace
}  // namespace ledgix::runtime
