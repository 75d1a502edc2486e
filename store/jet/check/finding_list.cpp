#include "finding_list.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kMostOfACode = 200;

}  // namespace

void FindingList::Add(std::string_view code, std::string text) {
    auto count = counts_.find(code);
    if (count == counts_.end())
        count = counts_.emplace(code, 0).first;
    if (++count->second <= kMostOfACode)
        findings_.push_back({.code = std::string(code), .text = std::move(text)});
    else if (count->second == kMostOfACode + 1)
        findings_.push_back({.code = std::string(code), .text = "there are more faults of this kind"});
}

void FindingList::AddIfStrict(std::string_view code, std::string text) {
    if (IsStrict())
        Add(code, std::move(text));
}

}  // namespace ledgix::jet
