#include "raw_index_page.h"

#include <string>

#include "damage_error.h"

namespace ledgix::jet {

RawIndexPage::RawIndexPage(Pager& pager, PageNumber number, PageNumber table, FindingList& findings)
    : layout_(pager.format().index_page), page_(pager.Read(number)) {
    const bool in_use = page_->bytes[1] == kPageInUse;
    is_leaf_ = in_use && page_->kind() == PageKind::kIndexLeaf;
    is_node_ = in_use && page_->kind() == PageKind::kIndexNode;
    if (!IsIndexPage()) {
        findings.Add("I5", DescribePage(number) + ": it is no page of an index");
        return;
    }
    const std::uint32_t owner = LoadU32(page_->bytes, layout_.owner);
    if (owner != table)
        findings.Add("I10", DescribePage(number) + ": the index page has the owner " + std::to_string(owner) +
                                " instead of " + std::to_string(table));
    if (is_leaf_ && tail() != 0)
        findings.Add("I11", DescribePage(number) + ": it is a leaf with a last child");
    prefix_length_ = layout_.prefix_length_size == 1 ? page_->bytes[layout_.prefix_length]
                                                     : LoadU16(page_->bytes, layout_.prefix_length);
    FindEntries(findings);
}

// A bit is set for each place just behind an entry.
void RawIndexPage::FindEntries(FindingList& findings) {
    const Bytes mask = Bytes(page_->bytes).subspan(layout_.mask, layout_.mask_size);
    for (std::size_t i = 0; i < mask.size(); ++i) {
        for (unsigned bit = 0; mask[i] >> bit != 0; ++bit) {
            if ((mask[i] >> bit & 1) != 0)
                ends_.push_back(static_cast<std::uint16_t>(8 * i + bit));
        }
    }
    if (!AreSound(findings)) {
        ends_.clear();
        return;
    }
    const std::size_t used = ends_.empty() ? 0 : ends_.back();
    const std::size_t free = page_->bytes.size() - layout_.entries - used;
    const std::size_t claimed = LoadU16(page_->bytes, layout_.free_bytes);
    if (free != claimed)
        findings.Add("I7", DescribePage(number()) + ": " + std::to_string(free) + " bytes are free, and it says " +
                               std::to_string(claimed));
}

bool RawIndexPage::AreSound(FindingList& findings) const {
    if (ends_.empty())
        return true;
    const std::size_t least = kLeafPointerSize + (is_leaf_ ? 0 : kChildPointerSize);
    if (ends_.back() > page_->bytes.size() - layout_.entries || ends_.front() < least) {
        findings.Add("I6", DescribePage(number()) + ": the entries of the index have no place");
        return false;
    }
    if (prefix_length_ > ends_.front()) {
        findings.Add("I8", DescribePage(number()) + ": the entries have more in common than the first one is long");
        return false;
    }
    for (std::size_t i = 1; i < ends_.size(); ++i) {
        if (prefix_length_ + StoredSize(i) < least) {
            findings.Add("I6", DescribePage(number()) + ": entry " + std::to_string(i) + " is too short");
            return false;
        }
    }
    return true;
}

void RawIndexPage::ReadEntry(std::size_t i, std::vector<std::uint8_t>& entry) const {
    const auto area = page_->bytes.begin() + static_cast<std::ptrdiff_t>(layout_.entries);
    entry.clear();
    if (i > 0)
        entry.insert(entry.end(), area, area + static_cast<std::ptrdiff_t>(prefix_length_));
    const auto end = area + ends_[i];
    entry.insert(entry.end(), end - static_cast<std::ptrdiff_t>(StoredSize(i)), end);
}

}  // namespace ledgix::jet
