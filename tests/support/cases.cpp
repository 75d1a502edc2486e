#include "cases.h"

#include <cctype>
#include <fstream>

namespace ledgix::test {

namespace {

constexpr std::size_t kLongestName = 80;

}  // namespace

nlohmann::json LoadCases(const std::string& file) {
    std::ifstream in(std::string(LEDGIX_TEST_DATA "/cases/") + file);
    return nlohmann::json::parse(in).at("cases");
}

std::vector<nlohmann::json> CaseList(const nlohmann::json& list) {
    return {list.begin(), list.end()};
}

std::string TestName(std::size_t index, const std::string& text) {
    std::string number = std::to_string(index);
    std::string name = std::string(4 - std::min<std::size_t>(number.size(), 4), '0') + number + "_";
    for (const char c : text) {
        if (name.size() == kLongestName)
            break;
        const bool allowed = std::isalnum(static_cast<unsigned char>(c)) != 0;
        if (allowed || name.back() != '_')
            name.push_back(allowed ? c : '_');
    }
    return name;
}

std::string CaseName(const testing::TestParamInfo<nlohmann::json>& info) {
    const std::string text = info.param.contains("name") ? info.param["name"].get<std::string>() : info.param.dump();
    return TestName(info.index, text);
}

}  // namespace ledgix::test
