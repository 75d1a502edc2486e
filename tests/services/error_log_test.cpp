#include "error_log.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "application_folder.h"
#include "cases.h"
#include "date_time.h"
#include "fixed_clock.h"
#include "message_recorder.h"
#include "scoped_environment.h"
#include "scoped_region.h"
#include "temporary_folder.h"

namespace ledgix::services {
namespace {

using nlohmann::json;
using runtime::RuntimeError;
using test::Content;
using test::MessageRecorder;

class DiagnosisRecorder : public Diagnostics {
public:
    DiagnosisRecorder() { InstallDiagnostics(this); }
    ~DiagnosisRecorder() override { InstallDiagnostics(nullptr); }
    DiagnosisRecorder(const DiagnosisRecorder&) = delete;
    DiagnosisRecorder& operator=(const DiagnosisRecorder&) = delete;

    void Write(std::string_view diagnosis) override { written.emplace_back(diagnosis); }

    std::vector<std::string> written;
};

RuntimeError EngineError() {
    return {3078, runtime::kEngineSource, "No such table"};
}
RuntimeError GeneralError() {
    return {91, runtime::kProgramSource, "Object not set"};
}

constexpr const char* kGeneralText = "General Errors...\r\n\r\n91 - Object not set\r\n\r\n";

// An application folder, a moment and a message box for the handler to work with.
class ErrorLog : public testing::Test {
protected:
    const test::TemporaryFolder folder_;
    const test::ScopedEnvironment application_{"LEDGIX_FOLDER", folder_.path()};
    const test::ScopedRegion region_;
    test::FixedClock clock_{{2026, 11, 7, 9, 5, 3}};
    MessageRecorder box_;
    DiagnosisRecorder diagnostics_;
};

class ErrorLogCase : public ErrorLog, public testing::WithParamInterface<json> {};

TEST_P(ErrorLogCase, ShowsAndAppendsWhatIsListed) {
    const json& wanted = GetParam();
    const auto when = runtime::ParseIso8601(wanted.at("when").get<std::string>());
    ASSERT_TRUE(when);
    clock_.Set(runtime::ToCivilTime(*when));
    DatabaseErrorHandler("Data Create Set",
                         RuntimeError(wanted.at("number").get<int>(), wanted.at("source").get<std::string>(),
                                      wanted.at("description").get<std::string>()));
    const MessageRecorder::Message message{wanted.at("message").get<std::string>(), runtime::kOkOnly, "Vantreo Ledgix"};
    EXPECT_EQ(box_.messages(), std::vector{message});
    EXPECT_EQ(folder_.List(), wanted.at("logFile").get<std::string>());
    EXPECT_EQ(Content(folder_.File(wanted.at("logFile").get<std::string>())), wanted.at("logEntry").get<std::string>());
}

std::string ErrorCaseName(const testing::TestParamInfo<json>& info) {
    const json& wanted = info.param;
    return test::TestName(info.index, wanted.at("when").get<std::string>() + " number " +
                                          std::to_string(wanted.at("number").get<int>()) + " of " +
                                          wanted.at("source").get<std::string>());
}

INSTANTIATE_TEST_SUITE_P(, ErrorLogCase, testing::ValuesIn(test::CaseList(test::LoadCases("error_log.json"))),
                         ErrorCaseName);

TEST_F(ErrorLog, NeverNamesTheRoutine) {
    DatabaseErrorHandler("Start ADO", GeneralError());
    EXPECT_EQ(box_.messages().at(0).text, kGeneralText);
    EXPECT_EQ(Content(folder_.File("errNov26.log")), std::string("07/11/26 09:05:03 ") + kGeneralText + "\r\n");
}

TEST_F(ErrorLog, ShowsAnEmptyBoxForAnErrorOfTheEngine) {
    DatabaseErrorHandler("Execute SQL", EngineError());
    EXPECT_EQ(box_.messages(), (std::vector<MessageRecorder::Message>{{"", runtime::kOkOnly, "Vantreo Ledgix"}}));
    EXPECT_EQ(Content(folder_.File("errNov26.log")), "07/11/26 09:05:03 \r\n");
}

TEST_F(ErrorLog, DiagnosesErrorsOfTheEngineOnly) {
    DatabaseErrorHandler("Execute SQL", EngineError());
    DatabaseErrorHandler("Execute SQL", GeneralError());
    DatabaseErrorHandler("Execute SQL", RuntimeError(0, runtime::kEngineSource, ""));
    EXPECT_EQ(diagnostics_.written, std::vector<std::string>{"3078 - No such table"});
}

TEST_F(ErrorLog, AppendsTheErrorsOfAMonthInOrder) {
    DatabaseErrorHandler("Move Next", EngineError());
    clock_.Set({2026, 11, 30, 23, 59, 59});
    DatabaseErrorHandler("Move Next", GeneralError());
    EXPECT_EQ(folder_.List(), "errNov26.log");
    EXPECT_EQ(Content(folder_.File("errNov26.log")),
              std::string("07/11/26 09:05:03 \r\n30/11/26 23:59:59 ") + kGeneralText + "\r\n");
}

TEST_F(ErrorLog, StartsANewFileEachMonthAndKeepsTheOldOnes) {
    WriteErrorLog("old");
    clock_.Set({2026, 12, 1, 0, 0, 0});
    WriteErrorLog("new");
    EXPECT_EQ(folder_.List(), "errDec26.log errNov26.log");
    EXPECT_EQ(Content(folder_.File("errNov26.log")), "07/11/26 09:05:03 old\r\n");
    EXPECT_EQ(Content(folder_.File("errDec26.log")), "01/12/26 00:00:00 new\r\n");
}

TEST_F(ErrorLog, NamesTheMonthAsTheRegionDoes) {
    runtime::RegionalSettings germany = runtime::UnitedStates();
    germany.month_abbreviations[2] = "Mär";
    const test::ScopedRegion region(germany);
    clock_.Set({2026, 3, 1, 8, 0, 0});
    WriteErrorLog("x");
    EXPECT_EQ(folder_.List(), "errMär26.log");
}

TEST_F(ErrorLog, IsLostWithoutAWordWhereItCannotBeWritten) {
    folder_.MakeFolder("errNov26.log");
    DatabaseErrorHandler("Data EOF", GeneralError());
    EXPECT_EQ(box_.messages().size(), 1U);
    EXPECT_EQ(folder_.List(), "errNov26.log");
}

TEST_F(ErrorLog, MakesNoFolder) {
    const test::ScopedEnvironment application("LEDGIX_FOLDER", folder_.File("gone"));
    DatabaseErrorHandler("Data EOF", GeneralError());
    EXPECT_EQ(box_.messages().size(), 1U);
    EXPECT_EQ(folder_.List(), "");
}

TEST_F(ErrorLog, DiagnosesOnceOnStandardErrorWhenThatIsTheMessageBoxToo) {
    InstallDiagnostics(nullptr);
    runtime::InstallMessageBox(nullptr);
    std::ostringstream text;
    std::streambuf* const before = std::cerr.rdbuf(text.rdbuf());
    DatabaseErrorHandler("Execute SQL", EngineError());
    std::cerr.rdbuf(before);
    EXPECT_EQ(text.str(), "3078 - No such table\n");
}

}  // namespace
}  // namespace ledgix::services
