#include "data_page.h"

#include <string>

#include "damage_error.h"

namespace ledgix::jet {

DataPage::DataPage(Pager& pager, PageNumber number, std::uint32_t owner, std::string_view what)
    : page_(pager.Read(number, PageKind::kData, what)), bytes_(page_->bytes) {
    const DataPageLayout& layout = pager.format().data_page;
    slots_at_ = layout.slots;
    slot_count_ = LoadU16(bytes_, layout.slot_count);
    if (LoadU32(bytes_, layout.owner) != owner)
        RaiseDamage(DescribePage(number) + " is no " + std::string(what));
    if (slot_count_ > kMostSlots || slots_at_ + 2 * slot_count_ > bytes_.size())
        RaiseDamage(DescribePage(number) + " claims " + std::to_string(slot_count_) + " rows");
}

Bytes DataPage::row(std::size_t slot) const {
    const std::size_t start = Entry(slot) & kSlotStart;
    const std::size_t end = slot == 0 ? bytes_.size() : Entry(slot - 1) & kSlotStart;
    const RowId id{.page = number(), .slot = static_cast<std::uint8_t>(slot)};
    if (end > bytes_.size())
        RaiseDamage(Describe(id) + " ends past the page");
    if (start > end)
        RaiseDamage(Describe(id) + " starts past its end");
    if (start < slots_at_ + 2 * slot_count_)
        RaiseDamage(Describe(id) + " starts inside the table of rows");
    return bytes_.subspan(start, end - start);
}

Bytes ReadRow(Pager& pager, RowId id, std::uint32_t owner, std::uint16_t flags, std::string_view what, DataPage& page) {
    page = DataPage(pager, id.page, owner, what);
    if (id.slot >= page.slot_count())
        RaiseDamage(Describe(id) + " is asked for as a " + std::string(what) + ", and there is none");
    if (page.flags(id.slot) != flags)
        RaiseDamage(Describe(id) + " is no " + std::string(what));
    return page.row(id.slot);
}

}  // namespace ledgix::jet
