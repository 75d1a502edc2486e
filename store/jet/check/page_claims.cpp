#include "page_claims.h"

#include "damage_error.h"

namespace ledgix::jet {

PageClaims::PageClaims(PageNumber page_count, FindingList& findings) : claims_(page_count), findings_(findings) {}

std::string PageClaims::Describe(const Claim& claim) {
    const std::string table = " of the table in page " + std::to_string(claim.table);
    switch (claim.use) {
        case PageUse::kDefinition:
            return "the definition" + table;
        case PageUse::kRows:
            return "the rows" + table;
        case PageUse::kLongValues:
            return "the long values" + table;
        case PageUse::kIndex:
            return "an index" + table;
        case PageUse::kMapRows:
            return "usage maps";
        case PageUse::kMapBits:
            return "the bits of a usage map";
        default:
            return "the header";
    }
}

bool PageClaims::Take(PageNumber page, PageUse use, PageNumber table) {
    const Claim claim{.use = use, .table = table};
    if (!Contains(page)) {
        findings_.Add("P1", Describe(claim) + " should be in " + DescribePage(page) + ", and the file has " +
                                std::to_string(claims_.size()) + " pages");
        return false;
    }
    if (IsTaken(page)) {
        if (use == PageUse::kMapRows && claims_[page].use == use)
            return true;
        findings_.Add("P2",
                      DescribePage(page) + ": used for " + Describe(claims_[page]) + " and for " + Describe(claim));
        return false;
    }
    claims_[page] = claim;
    return true;
}

void PageClaims::CompareWithFreePages(const std::vector<bool>& free) {
    for (PageNumber page = 0; page < claims_.size(); ++page) {
        const bool is_free = page >= free.size() || free[page];
        if (IsTaken(page) && is_free)
            findings_.Add("P3", DescribePage(page) + ": free, and used for " + Describe(claims_[page]));
        if (!IsTaken(page) && !is_free)
            findings_.AddIfStrict("P4", DescribePage(page) + ": neither used nor free");
    }
}

}  // namespace ledgix::jet
