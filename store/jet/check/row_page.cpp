#include "row_page.h"

#include <algorithm>
#include <string>

#include "damage_error.h"

namespace ledgix::jet {

namespace {

constexpr std::uint16_t kUnknownFlag = 0x2000;

}  // namespace

RowPage::RowPage(Pager& pager, PageNumber number) : page_(pager.Read(number)), layout_(&pager.format().data_page) {
    slot_count_ = std::min({claimed_slots(), kMostSlots, (page_->bytes.size() - layout_->slots) / 2});
}

std::optional<Bytes> RowPage::row(std::size_t slot) const {
    const std::size_t start = Start(slot);
    const std::size_t end = End(slot);
    if (start < SlotsEnd() || start > end || end > page_->bytes.size())
        return std::nullopt;
    return Bytes(page_->bytes).subspan(start, end - start);
}

std::size_t RowPage::free_bytes() const {
    const std::size_t lowest = slot_count_ == 0 ? page_->bytes.size() : Start(slot_count_ - 1);
    return lowest - std::min(lowest, SlotsEnd());
}

void CheckRowPage(const RowPage& page, FindingList& findings) {
    const std::string place = DescribePage(page.number()) + ": ";
    if (page.claimed_slots() != page.slot_count())
        findings.Add("D2", place + "it claims " + std::to_string(page.claimed_slots()) + " rows");
    else if (page.slot_count() > kMostSlotsWritten)
        findings.AddIfStrict("D2", place + "it has " + std::to_string(page.slot_count()) + " rows");
    bool sound = true;
    for (std::size_t slot = 0; slot < page.slot_count(); ++slot) {
        if (!page.row(slot)) {
            findings.Add("D3",
                         place + "row " + std::to_string(slot) + " is not between the row before it and the slots");
            sound = false;
        }
        if ((page.entry(slot) & kUnknownFlag) != 0)
            findings.Add("D5", place + "row " + std::to_string(slot) + " has an unknown flag");
    }
    if (sound && page.free_bytes() != page.claimed_free_bytes())
        findings.Add("D4", place + std::to_string(page.free_bytes()) + " bytes are free, and it says " +
                               std::to_string(page.claimed_free_bytes()));
}

}  // namespace ledgix::jet
