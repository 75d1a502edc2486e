#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "check_run.h"

namespace ledgix::jet {

// Who keeps rows on pages of his own: a table, or one of its columns for long values.
struct RowPagesUser {
    std::string name;
    RowId owned_map;
    RowId free_space_map;
    bool needs_free_space_map = true;  // the pointer to it may not be null
    PageUse use = PageUse::kRows;
    PageNumber table = 0;
    std::uint32_t owner = 0;         // as the pages name it
    std::string_view code_of_owner;  // when they do not
};

// Checks both maps and the pages, claims them, and gives those that are sound enough to look for rows, ascending.
std::vector<PageNumber> ClaimRowPages(CheckRun& run, const RowPagesUser& user);

}  // namespace ledgix::jet
