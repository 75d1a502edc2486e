#include "structure_check.h"

#include <memory>
#include <optional>
#include <set>

#include "catalog.h"
#include "check_run.h"
#include "checked_rows.h"
#include "data_check.h"
#include "definition_check.h"
#include "definition_reader.h"
#include "entry_check.h"
#include "header_check.h"
#include "map_check.h"
#include "objects_check.h"
#include "raw_definition.h"
#include "tree_check.h"

namespace ledgix::jet {

namespace {

class StructureCheck {
public:
    StructureCheck(Pager& pager, Strictness strictness) : run_(pager, strictness) {}

    std::vector<Finding> Check() {
        std::vector<bool> free;
        RunPart(run_, [&] { CheckHeader(run_); });
        RunPart(run_, [&] { free = CheckFreePages(run_); });
        CheckTable(kCatalogPage);
        for (const PageNumber page : TablePages())
            CheckTable(page);
        CheckObjects(run_, facts_);
        run_.claims.CompareWithFreePages(free);
        return run_.findings.Take();
    }

private:
    // Of all tables but the catalogue itself, as it lists them. The others of the system are there in any case.
    std::set<PageNumber> TablePages() const {
        std::set<PageNumber> pages{kAccessPage, kQueriesPage, kRelationshipsPage};
        for (const ObjectEntry& object : facts_.objects) {
            const auto page = static_cast<PageNumber>(object.id);
            if (object.type == kTableEntry && page > kCatalogPage && run_.claims.Contains(page))
                pages.insert(page);
        }
        return pages;
    }

    void CheckTable(PageNumber page) {
        const std::optional<RawDefinition> raw = ReadRawDefinition(run_, page);
        if (!raw)
            return;
        facts_.indexes[page] = raw->logical_indexes;
        CheckDefinition(run_, *raw);
        std::optional<TableDefinition> table;
        RunPart(run_, [&] { table = ReadDefinition(run_.pager, page); });
        std::unique_ptr<CheckedRows> rows;
        RunPart(run_, [&] { rows = CheckData(run_, *raw, table ? &*table : nullptr); });
        for (const RawIndex& index : raw->real_indexes)
            RunPart(run_, [&] { CheckIndex(page, index, rows.get()); });
        if (rows)
            RunPart(run_, [&] { KeepFacts(page, *rows); });
    }

    void CheckIndex(PageNumber page, const RawIndex& index, CheckedRows* rows) {
        if (rows == nullptr) {
            CheckTree(run_, page, index, [](Bytes, RowId) {});
            return;
        }
        EntryCheck entries(run_, *rows, index);
        CheckTree(run_, page, index, [&](Bytes key, RowId row) { entries.Visit(key, row); });
        entries.Finish();
    }

    void KeepFacts(PageNumber page, CheckedRows& rows) {
        if (page == kCatalogPage)
            facts_.objects = ReadObjects(run_, rows);
        if (page != kAccessPage)
            return;
        facts_.with_access = ReadObjectsWithAccess(run_, rows);
        facts_.has_access_table = true;
    }

    CheckRun run_;
    ObjectFacts facts_;
};

}  // namespace

std::vector<Finding> CheckStructure(Pager& pager, Strictness strictness) {
    return StructureCheck(pager, strictness).Check();
}

}  // namespace ledgix::jet
