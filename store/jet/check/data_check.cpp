#include "data_check.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

#include "byte_order.h"
#include "damage_error.h"
#include "long_value_check.h"
#include "row_check.h"
#include "row_page.h"
#include "row_page_claims.h"

namespace ledgix::jet {

namespace {

class DataCheck {
public:
    DataCheck(CheckRun& run, const RawDefinition& raw)
        : run_(run), raw_(raw), user_("the table in " + DescribePage(raw.page)) {}

    void Check() {
        ClaimPages();
        for (const PageNumber number : pages_)
            FindRows(RowPage(run_.pager, number));
        FollowPointers();
        CheckHiddenRows();
        CheckRowCount();
    }

    const std::vector<LiveRow>& rows() const { return rows_; }

private:
    void ClaimPages() {
        pages_ = ClaimRowPages(run_, {.name = user_,
                                      .owned_map = raw_.owned_map,
                                      .free_space_map = raw_.free_space_map,
                                      .use = PageUse::kRows,
                                      .table = raw_.page,
                                      .owner = raw_.page,
                                      .code_of_owner = "D1"});
    }

    void FindRows(const RowPage& page) {
        for (std::size_t slot = 0; slot < page.slot_count(); ++slot) {
            const RowId id{.page = page.number(), .slot = static_cast<std::uint8_t>(slot)};
            if (page.flags(slot) == kSlotHidden)
                hidden_.push_back(id);
            else if (page.flags(slot) != kSlotDeleted)
                rows_.push_back({.home = id, .place = id});
        }
    }

    // Chains of pointers are never made.
    void FollowPointers() {
        for (LiveRow& row : rows_) {
            const RowPage page(run_.pager, row.home.page);
            if ((page.flags(row.home.slot) & kSlotPointer) == 0)
                continue;
            const std::optional<Bytes> bytes = page.row(row.home.slot);
            if (!bytes || bytes->size() < kRowPointerSize) {
                AddMoved(row, "it has no room for the pointer to where it moved");
                continue;
            }
            const RowId place = LoadRowPointer(*bytes, 0);
            if (!IsHiddenRow(place))
                AddMoved(row, "it moved to " + Describe(place) + ", where no row of its table is hidden");
            else if (!reached_.insert(RowNumber(place)).second)
                AddMoved(row, "it moved to " + Describe(place) + ", as another row did");
            else
                row.place = place;
        }
    }

    // A row whose bytes are not found keeps an impossible place.
    void AddMoved(LiveRow& row, const std::string& text) {
        run_.findings.Add("D7", Describe(row.home) + ": " + text);
        row.place = {};
    }

    bool IsHiddenRow(RowId place) const {
        if (!std::binary_search(pages_.begin(), pages_.end(), place.page))
            return false;
        const RowPage page(run_.pager, place.page);
        return place.slot < page.slot_count() && page.flags(place.slot) == kSlotHidden;
    }

    void CheckHiddenRows() {
        for (const RowId id : hidden_) {
            if (!reached_.contains(RowNumber(id)))
                run_.findings.AddIfStrict("D13", Describe(id) + ": it is hidden, and no row points to it");
        }
    }

    void CheckRowCount() {
        if (raw_.row_count == rows_.size())
            return;
        const std::string text =
            user_ + ": it has " + std::to_string(rows_.size()) + " rows, and it says " + std::to_string(raw_.row_count);
        if (raw_.system)
            run_.findings.AddIfStrict("D6", text);
        else
            run_.findings.Add("D6", text);
    }

    CheckRun& run_;
    const RawDefinition& raw_;
    std::string user_;
    std::vector<PageNumber> pages_;
    std::vector<LiveRow> rows_;
    std::vector<RowId> hidden_;
    std::unordered_set<std::uint32_t> reached_;
};

}  // namespace

std::unique_ptr<CheckedRows> CheckData(CheckRun& run, const RawDefinition& raw, const TableDefinition* table) {
    DataCheck data(run, raw);
    data.Check();
    LongValueCheck long_values(run, raw);
    if (table == nullptr)
        return nullptr;
    auto rows = std::make_unique<CheckedRows>(run, *table);
    RowCheck check(run, *table, long_values);
    for (LiveRow row : data.rows()) {
        if (row.place.page != 0) {
            const RowPage page(run.pager, row.place.page);
            const std::optional<Bytes> bytes = page.row(row.place.slot);
            row.readable = bytes && check.Check(*bytes, row.place);
        }
        rows->Add(row);
    }
    return rows;
}

}  // namespace ledgix::jet
