#include "row_page_claims.h"

#include <algorithm>

#include "damage_error.h"
#include "map_check.h"
#include "row_page.h"

namespace ledgix::jet {

namespace {

void CheckFreeSpace(CheckRun& run, const RowPagesUser& user, const std::vector<PageNumber>& owned) {
    if (user.free_space_map.page == 0 && !user.needs_free_space_map)
        return;
    const std::vector<PageNumber> free = CheckMap(run, user.free_space_map, "free space of " + user.name);
    if (!std::includes(owned.begin(), owned.end(), free.begin(), free.end()))
        run.findings.Add("U11", Describe(user.free_space_map) + ", the map of free space of " + user.name +
                                    ": it lists a page that belongs to something else");
}

}  // namespace

std::vector<PageNumber> ClaimRowPages(CheckRun& run, const RowPagesUser& user) {
    const std::vector<PageNumber> owned = CheckMap(run, user.owned_map, "pages of " + user.name);
    CheckFreeSpace(run, user, owned);
    std::vector<PageNumber> sound;
    for (const PageNumber number : owned) {
        if (!run.claims.Take(number, user.use, user.table))
            continue;
        const RowPage page(run.pager, number);
        if (!page.IsDataPage() || page.owner() != user.owner) {
            run.findings.Add(user.code_of_owner, DescribePage(number) + ": it should belong to " + user.name);
            continue;
        }
        CheckRowPage(page, run.findings);
        sound.push_back(number);
    }
    return sound;
}

}  // namespace ledgix::jet
