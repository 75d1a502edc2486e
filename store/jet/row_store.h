#pragma once

#include <cstdint>
#include <span>

#include "jet_types.h"
#include "pager.h"

namespace ledgix::jet {

// Puts rows onto the data pages of one owner: a table, or a column of long values. Works in the topmost level of the
// pager. Errors: 3049 for damage, 3026 when the file can't grow.
class RowStore {
public:
    // `owner` is what the pages bear as such. A free-space map whose page is 0 does not exist.
    RowStore(Pager& pager, std::uint32_t owner, RowId owned_map, RowId free_space_map);

    // Puts a row onto a page that has room, or onto a new one. It must fit on an empty page.
    RowId Append(Bytes row, std::uint16_t flags = 0);

    // Gives a row other bytes and flags, if its page has room for them.
    bool Replace(RowId id, Bytes row, std::uint16_t flags);

    // Leaves a deleted slot; a page without rows goes back to the file.
    void Delete(RowId id);

private:
    PagePtr ReadPage(PageNumber number) const;
    PageNumber FindRoom(std::size_t row_size);
    std::span<std::uint8_t> ChangePageOf(RowId row);
    RowId AppendToNewPage(Bytes row, std::uint16_t flags);
    bool HasFreeSpaceMap() const { return free_space_map_.page != 0; }

    Pager& pager_;
    std::uint32_t owner_;
    RowId owned_map_;
    RowId free_space_map_;
    PageNumber last_page_ = 0;  // the one that took the last row
};

}  // namespace ledgix::jet
