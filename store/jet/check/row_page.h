#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "byte_order.h"
#include "finding_list.h"
#include "pager.h"

namespace ledgix::jet {

// A page of rows as its bytes are. Nothing fails: what lies outside the page is not there.
class RowPage {
public:
    RowPage() = default;
    // The page must be in the file.
    RowPage(Pager& pager, PageNumber number);

    PageNumber number() const { return page_->number; }
    bool IsDataPage() const {
        return page_->bytes[0] == static_cast<std::uint8_t>(PageKind::kData) && page_->bytes[1] == kPageInUse;
    }
    std::uint32_t owner() const { return LoadU32(page_->bytes, layout_->owner); }

    // As claimed, and as far as they have room on the page.
    std::size_t claimed_slots() const { return LoadU16(page_->bytes, layout_->slot_count); }
    std::size_t slot_count() const { return slot_count_; }

    std::uint16_t entry(std::size_t slot) const { return LoadU16(page_->bytes, layout_->slots + 2 * slot); }
    // kSlotPointer, kSlotHidden, both or 0.
    std::uint16_t flags(std::size_t slot) const { return entry(slot) & kSlotDeleted; }
    // None when the row has no place between the slots and the row before it.
    std::optional<Bytes> row(std::size_t slot) const;

    // Free bytes as claimed, and from the slots to the lowest row.
    std::size_t claimed_free_bytes() const { return LoadU16(page_->bytes, layout_->free_bytes); }
    std::size_t free_bytes() const;

private:
    std::size_t SlotsEnd() const { return layout_->slots + 2 * slot_count_; }
    std::size_t Start(std::size_t slot) const { return entry(slot) & kSlotStart; }
    std::size_t End(std::size_t slot) const { return slot == 0 ? page_->bytes.size() : Start(slot - 1); }

    PagePtr page_;
    const DataPageLayout* layout_ = nullptr;
    std::size_t slot_count_ = 0;
};

// What holds for all pages of rows, whatever the rows are.
void CheckRowPage(const RowPage& page, FindingList& findings);

}  // namespace ledgix::jet
