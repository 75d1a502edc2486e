#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace ledgix::test {

using Json = nlohmann::json;

// The member `cases` of a file in tests/data/cases.
nlohmann::json LoadCases(const std::string& file);

// The members of a list as test parameters.
std::vector<nlohmann::json> CaseList(const nlohmann::json& list);

// "0007_rows_out_of_order": position and text, with the characters that a test name may have.
std::string TestName(std::size_t index, const std::string& text);

// Names a parameter by its member `name`, or by the whole case where it has none.
std::string CaseName(const testing::TestParamInfo<nlohmann::json>& info);

}  // namespace ledgix::test
