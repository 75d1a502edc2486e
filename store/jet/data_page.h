#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "byte_order.h"
#include "jet_format.h"
#include "pager.h"

namespace ledgix::jet {

// A page of rows: of a table, of long values or of usage maps. Holds the page.
class DataPage {
public:
    DataPage() = default;

    // Reads a page that must belong to `owner`. Error 3049 when it does not, is no data page, or has more slots than
    // room; `what` says in the error what was looked for.
    DataPage(Pager& pager, PageNumber number, std::uint32_t owner, std::string_view what);

    PageNumber number() const { return page_->number; }
    std::size_t slot_count() const { return slot_count_; }

    // kSlotPointer, kSlotHidden, both or 0.
    std::uint16_t flags(std::size_t slot) const { return Entry(slot) & kSlotDeleted; }

    // The bytes of a row, garbage behind the pointer included. Error 3049 when the slot lies outside the page's rows.
    Bytes row(std::size_t slot) const;

private:
    std::uint16_t Entry(std::size_t slot) const { return LoadU16(bytes_, slots_at_ + 2 * slot); }

    PagePtr page_;
    Bytes bytes_;
    std::size_t slots_at_ = 0;
    std::size_t slot_count_ = 0;
};

// A row of a page that must belong to `owner`; its slot must exist and bear exactly `flags`. Error 3049 otherwise. The
// bytes are good as long as `page`.
Bytes ReadRow(Pager& pager, RowId id, std::uint32_t owner, std::uint16_t flags, std::string_view what, DataPage& page);

}  // namespace ledgix::jet
