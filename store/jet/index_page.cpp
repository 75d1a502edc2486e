#include "index_page.h"

#include <algorithm>

#include "byte_order.h"
#include "damage_error.h"

namespace ledgix::jet {

namespace {

// Below 0, 0 or above 0; what a begins with is smaller than a.
int Compare(Bytes a, Bytes b) {
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (x == a.end() || y == b.end())
        return (x != a.end() ? 1 : 0) - (y != b.end() ? 1 : 0);
    return *x < *y ? -1 : 1;
}

}  // namespace

IndexPage::IndexPage(Pager& pager, PageNumber number, PageNumber owner) : page_(pager.Read(number)), number_(number) {
    const IndexPageLayout& layout = pager.format().index_page;
    const Bytes bytes = page_->bytes;
    leaf_ = page_->kind() == PageKind::kIndexLeaf;
    if ((!leaf_ && page_->kind() != PageKind::kIndexNode) || LoadU32(bytes, layout.owner) != owner)
        RaiseDamage(DescribePage(number) + " is no page of the index");
    next_ = LoadU32(bytes, layout.next);
    tail_ = LoadU32(bytes, layout.tail);
    prefix_length_ = bytes[layout.prefix_length];
    if (layout.prefix_length_size == 2)
        prefix_length_ = LoadU16(bytes, layout.prefix_length);
    area_ = bytes.subspan(layout.entries);
    FindEntries(layout);
}

// A bit is set for each place just behind an entry.
void IndexPage::FindEntries(const IndexPageLayout& layout) {
    const Bytes mask = Bytes(page_->bytes).subspan(layout.mask, layout.mask_size);
    for (std::size_t i = 0; i < mask.size(); ++i) {
        for (unsigned bit = 0; bit < 8 && mask[i] >> bit != 0; ++bit) {
            if ((mask[i] >> bit & 1) != 0)
                ends_.push_back(static_cast<std::uint16_t>(8 * i + bit));
        }
    }
    entry_count_ = ends_.size();
    if (ends_.empty())
        return;
    const std::size_t least = kLeafPointerSize + (leaf_ ? 0 : kChildPointerSize);
    if (ends_.back() > area_.size() || ends_.front() < prefix_length_ || ends_.front() < least)
        RaiseDamage("the entries of the index page " + std::to_string(number_) + " don't fit");
    for (std::size_t i = 1; i < entry_count_; ++i) {
        if (prefix_length_ + StoredEntry(i).size() < least)
            RaiseDamage("entry " + std::to_string(i) + " of the index page " + std::to_string(number_) +
                        " is too short");
    }
}

Bytes IndexPage::StoredEntry(std::size_t i) const {
    const std::size_t start = i == 0 ? 0 : ends_[i - 1];
    return area_.subspan(start, ends_[i] - start);
}

void IndexPage::ReadEntry(std::size_t i, std::vector<std::uint8_t>& entry) const {
    entry.clear();
    if (i > 0)
        entry.insert(entry.end(), area_.begin(), area_.begin() + static_cast<std::ptrdiff_t>(prefix_length_));
    const Bytes stored = StoredEntry(i);
    entry.insert(entry.end(), stored.begin(), stored.end());
}

std::size_t IndexPage::LowerBound(Bytes key) const {
    std::vector<std::uint8_t> entry;
    std::size_t low = 0;
    std::size_t high = entry_count_;
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        ReadEntry(middle, entry);
        const Bytes compared = Bytes(entry).first(entry.size() - (leaf_ ? 0 : kChildPointerSize));
        if (Compare(compared, key) < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

PageNumber IndexPage::Child(std::size_t i) const {
    if (i == entry_count_ && tail_ != 0)
        return tail_;
    if (entry_count_ == 0)
        RaiseDamage("the index page " + std::to_string(number_) + " has no children");
    std::vector<std::uint8_t> entry;
    ReadEntry(std::min(i, entry_count_ - 1), entry);
    return LoadBig<std::uint32_t>(entry, entry.size() - kChildPointerSize);
}

}  // namespace ledgix::jet
