#include "map_check.h"

#include <algorithm>
#include <functional>
#include <optional>

#include "byte_order.h"
#include "damage_error.h"
#include "row_page.h"

namespace ledgix::jet {

namespace {

class MapCheck {
public:
    MapCheck(CheckRun& run, RowId map, const std::string& user)
        : run_(run), map_(map), place_(Describe(map) + ", the map of " + user + ": ") {}

    // Calls `visit` with every page listed, in the file or not, ascending; false when the map has no sound row.
    bool Read(const std::function<void(std::uint64_t)>& visit) {
        const std::optional<Bytes> row = FindRow();
        if (!row)
            return false;
        if (row->empty() || (*row)[0] > kReferenceMap || row->size() < kInlineBitmap) {
            Add("U7", "it is of no known kind");
            return false;
        }
        if ((*row)[0] == kReferenceMap)
            ReadReferences(*row, visit);
        else
            ReadInline(*row, visit);
        return true;
    }

    // The first page behind those that the map has bits for.
    std::uint64_t end() const { return end_; }
    void Add(std::string_view code, const std::string& text) { run_.findings.Add(code, place_ + text); }

private:
    std::optional<Bytes> FindRow() {
        if (map_.page == 0 || !run_.claims.Contains(map_.page)) {
            Add("U1", "there is no such page");
            return std::nullopt;
        }
        const bool is_first = !run_.claims.IsTaken(map_.page);
        if (!run_.claims.Take(map_.page, PageUse::kMapRows, 0))
            return std::nullopt;
        page_ = RowPage(run_.pager, map_.page);
        if (!page_.IsDataPage()) {
            Add("U2", "the page is no data page");
            return std::nullopt;
        }
        if (is_first)
            CheckMapPage();
        if (map_.slot >= page_.slot_count()) {
            Add("U4", "there is no such row");
            return std::nullopt;
        }
        if (page_.flags(map_.slot) != 0)
            Add("U5", "the row has flags");
        if (!run_.used_map_rows.insert(RowNumber(map_)).second) {
            Add("U6", "the row is a map of something else too");
            return std::nullopt;
        }
        const std::optional<Bytes> row = page_.row(map_.slot);
        if (!row)
            Add("U4", "the row is not inside its page");
        return row;
    }

    void CheckMapPage() {
        const std::uint32_t owner = map_.page == kAllocationPage ? kAllocationOwner : kUsageMapOwner;
        if (page_.owner() != owner)
            run_.findings.Add("U3", DescribePage(map_.page) + ": the page of usage maps has the owner " +
                                        std::to_string(page_.owner()));
        CheckRowPage(page_, run_.findings);
    }

    void ReadInline(Bytes row, const std::function<void(std::uint64_t)>& visit) {
        const PageNumber first = LoadU32(row, kMapFirstPage);
        if (first % 8 != 0)
            run_.findings.AddIfStrict("U8", place_ + "it starts at page " + std::to_string(first));
        VisitBits(first, row.subspan(kInlineBitmap), visit);
    }

    void ReadReferences(Bytes row, const std::function<void(std::uint64_t)>& visit) {
        const std::uint64_t pages_per_bitmap = run_.format.PagesPerBitmap();
        for (std::size_t i = 0; kMapReferences + 4 * (i + 1) <= row.size(); ++i) {
            const PageNumber number = LoadU32(row, kMapReferences + 4 * i);
            if (number == 0)
                continue;
            end_ = (i + 1) * pages_per_bitmap;
            if (!run_.claims.Take(number, PageUse::kMapBits, 0))
                continue;
            const PagePtr page = run_.pager.Read(number);
            if (page->kind() != PageKind::kUsageBitmap || page->bytes[1] != kPageInUse) {
                Add("U9", DescribePage(number) + " is no page of bits");
                continue;
            }
            VisitBits(i * pages_per_bitmap, Bytes(page->bytes).subspan(kBitmapPageBits), visit);
        }
    }

    void VisitBits(std::uint64_t first, Bytes bitmap, const std::function<void(std::uint64_t)>& visit) {
        end_ = first + 8 * bitmap.size();
        for (std::size_t i = 0; i < bitmap.size(); ++i) {
            for (unsigned bit = 0; bitmap[i] >> bit != 0; ++bit) {
                if ((bitmap[i] >> bit & 1) != 0)
                    visit(first + 8 * i + bit);
            }
        }
    }

    CheckRun& run_;
    RowId map_;
    std::string place_;
    RowPage page_;
    std::uint64_t end_ = 0;
};

}  // namespace

std::vector<PageNumber> CheckMap(CheckRun& run, RowId map, const std::string& user) {
    std::vector<PageNumber> pages;
    std::uint64_t outside = 0;
    MapCheck check(run, map, user);
    check.Read([&](std::uint64_t page) {
        if (page != 0 && page < run.pager.page_count())
            pages.push_back(static_cast<PageNumber>(page));
        else if (outside == 0)
            outside = page + 1;
    });
    if (outside != 0)
        check.Add("U10", "it lists page " + std::to_string(outside - 1) + ", and the file has " +
                             std::to_string(run.pager.page_count()) + " pages");
    return pages;
}

std::vector<bool> CheckFreePages(CheckRun& run) {
    const PageNumber page_count = run.pager.page_count();
    std::vector<bool> free;
    std::uint64_t beyond = 0;
    MapCheck check(run, {.page = kAllocationPage, .slot = 0}, "free pages");
    const bool sound = check.Read([&](std::uint64_t page) {
        beyond += page >= page_count ? 1 : 0;
        if (page >= page_count)
            return;
        free.resize(page + 1);
        free[page] = true;
    });
    if (!sound)
        return std::vector<bool>(page_count);
    free.resize(std::min<std::uint64_t>(check.end(), page_count));
    if (check.end() > page_count && beyond != check.end() - page_count)
        run.findings.AddIfStrict("U12", "page 1: not all pages behind the end of the file count as free");
    CheckMap(run, {.page = kAllocationPage, .slot = 1}, "the second kind");
    return free;
}

}  // namespace ledgix::jet
