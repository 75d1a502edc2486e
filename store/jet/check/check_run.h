#pragma once

#include <cstdint>
#include <unordered_set>

#include "finding_list.h"
#include "page_claims.h"
#include "pager.h"
#include "runtime_error.h"

namespace ledgix::jet {

// What all parts of one check share.
struct CheckRun {
    CheckRun(Pager& the_pager, Strictness strictness)
        : pager(the_pager),
          format(the_pager.format()),
          findings(strictness),
          claims(the_pager.page_count(), findings) {}

    Pager& pager;
    const Format& format;
    FindingList findings;
    PageClaims claims;
    std::unordered_set<std::uint32_t> used_map_rows;   // page and slot
    std::unordered_set<std::uint32_t> used_long_rows;  // the same
};

// A row as one number.
inline std::uint32_t RowNumber(RowId row) {
    return row.page << 8 | row.slot;
}

// Runs one part of the check. Damage that a reader cannot get over ends the part and is a finding itself.
template <typename Part>
void RunPart(CheckRun& run, Part part) {
    try {
        part();
    } catch (const runtime::RuntimeError& error) {
        if (!error.Is(runtime::ErrorNumber::kDatabaseDamaged))
            throw;
        run.findings.Add("X1", error.description());
    }
}

}  // namespace ledgix::jet
