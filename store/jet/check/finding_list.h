#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "structure_check.h"

namespace ledgix::jet {

// Collects what a check finds. Of each code it keeps so many only that a file in ruins cannot fill the memory.
class FindingList {
public:
    explicit FindingList(Strictness strictness) : strictness_(strictness) {}

    void Add(std::string_view code, std::string text);

    // The same for a rule that other writers break now and then without harm.
    void AddIfStrict(std::string_view code, std::string text);

    bool IsStrict() const { return strictness_ == Strictness::kOwnFiles; }
    std::vector<Finding> Take() { return std::move(findings_); }

private:
    Strictness strictness_;
    std::vector<Finding> findings_;
    std::map<std::string, std::size_t, std::less<>> counts_;
};

}  // namespace ledgix::jet
