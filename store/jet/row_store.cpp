#include "row_store.h"

#include <algorithm>
#include <optional>
#include <string>

#include "byte_order.h"
#include "damage_error.h"
#include "data_page.h"
#include "data_page_writer.h"
#include "page_space.h"

namespace ledgix::jet {

namespace {

constexpr std::string_view kWhat = "data page of its owner";

// Pages tried before a new one is taken.
constexpr int kMostAttempts = 8;

// A page with less room than this part of it is not worth another attempt.
constexpr std::size_t kWorthwhilePart = 16;

}  // namespace

RowStore::RowStore(Pager& pager, std::uint32_t owner, RowId owned_map, RowId free_space_map)
    : pager_(pager), owner_(owner), owned_map_(owned_map), free_space_map_(free_space_map) {}

PagePtr RowStore::ReadPage(PageNumber number) const {
    DataPage(pager_, number, owner_, kWhat);
    PagePtr page = pager_.Read(number);
    if (!HasSoundRows(pager_.format(), page->bytes))
        RaiseDamage("the rows of " + DescribePage(number) + " overlap");
    return page;
}

// The row must be there.
std::span<std::uint8_t> RowStore::ChangePageOf(RowId row) {
    if (row.slot >= LoadU16(ReadPage(row.page)->bytes, pager_.format().data_page.slot_count))
        RaiseDamage(Describe(row) + " is to be changed, and there is none");
    return pager_.Change(row.page);
}

RowId RowStore::Append(Bytes row, std::uint16_t flags) {
    const Format& format = pager_.format();
    PageNumber candidate = last_page_;
    if (candidate == 0 || !HasRoomFor(format, ReadPage(candidate)->bytes, row.size()))
        candidate = FindRoom(row.size());
    if (candidate == 0)
        return AppendToNewPage(row, flags);
    last_page_ = candidate;
    return {.page = candidate, .slot = AppendRow(format, pager_.Change(candidate), row, flags).value()};
}

// A page of the free-space map, the highest first; 0 when none of the next ones has room. Those that are full leave the
// map.
PageNumber RowStore::FindRoom(std::size_t row_size) {
    const Format& format = pager_.format();
    PageNumber candidate = HasFreeSpaceMap() ? HighestInMap(pager_, free_space_map_, pager_.page_count()) : 0;
    for (int attempt = 0; candidate != 0 && attempt < kMostAttempts; ++attempt) {
        const PagePtr page = ReadPage(candidate);
        if (HasRoomFor(format, page->bytes, row_size))
            return candidate;
        if (!HasRoomFor(format, page->bytes, format.page_size / kWorthwhilePart))
            RemoveFromMap(pager_, free_space_map_, candidate);
        candidate = HighestInMap(pager_, free_space_map_, candidate);
    }
    return 0;
}

RowId RowStore::AppendToNewPage(Bytes row, std::uint16_t flags) {
    const PageNumber fresh = AllocatePage(pager_);
    AddToMap(pager_, owned_map_, fresh);
    if (HasFreeSpaceMap())
        AddToMap(pager_, free_space_map_, fresh);
    const std::vector<std::uint8_t> content = MakeDataPage(pager_.format(), owner_);
    const std::span<std::uint8_t> page = pager_.Change(fresh);
    std::copy(content.begin(), content.end(), page.begin());
    last_page_ = fresh;
    return {.page = fresh, .slot = AppendRow(pager_.format(), page, row, flags).value()};
}

bool RowStore::Replace(RowId id, Bytes row, std::uint16_t flags) {
    const std::span<std::uint8_t> page = ChangePageOf(id);
    const std::size_t before = RowBytes(pager_.format(), page, id.slot).size();
    if (!ResizeRow(pager_.format(), page, id.slot, row.size()))
        return false;
    const std::span<std::uint8_t> place = RowBytes(pager_.format(), page, id.slot);
    std::copy(row.begin(), row.end(), place.begin());
    SetSlotFlags(pager_.format(), page, id.slot, flags);
    if (row.size() < before && HasFreeSpaceMap())
        AddToMap(pager_, free_space_map_, id.page);
    return true;
}

void RowStore::Delete(RowId id) {
    const Format& format = pager_.format();
    const std::span<std::uint8_t> page = ChangePageOf(id);
    ResizeRow(format, page, id.slot, 0);
    SetSlotFlags(format, page, id.slot, kSlotDeleted);
    if (HasLiveRows(format, page)) {
        if (HasFreeSpaceMap())
            AddToMap(pager_, free_space_map_, id.page);
        return;
    }
    RemoveFromMap(pager_, owned_map_, id.page);
    if (HasFreeSpaceMap())
        RemoveFromMap(pager_, free_space_map_, id.page);
    FreePage(pager_, id.page);
    if (last_page_ == id.page)
        last_page_ = 0;
}

}  // namespace ledgix::jet
