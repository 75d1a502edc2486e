#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "finding_list.h"
#include "jet_types.h"

namespace ledgix::jet {

enum class PageUse : std::uint8_t { kNone, kHeader, kDefinition, kRows, kLongValues, kIndex, kMapRows, kMapBits };

// Who uses which page. A page has one user; only pages with the rows of usage maps serve several tables.
class PageClaims {
public:
    PageClaims(PageNumber page_count, FindingList& findings);

    bool Contains(PageNumber page) const { return page < claims_.size(); }

    // Notes that the table with this definition page uses the page. False, with a finding, when there is no such page
    // or when something else uses it.
    bool Take(PageNumber page, PageUse use, PageNumber table);

    bool IsTaken(PageNumber page) const { return claims_[page].use != PageUse::kNone; }

    // Compares what was taken with the map of free pages; pages that it does not cover are free.
    void CompareWithFreePages(const std::vector<bool>& free);

private:
    struct Claim {
        PageUse use = PageUse::kNone;
        PageNumber table = 0;
    };

    static std::string Describe(const Claim& claim);

    std::vector<Claim> claims_;
    FindingList& findings_;
};

}  // namespace ledgix::jet
