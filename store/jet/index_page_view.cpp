#include "index_page_view.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "byte_order.h"
#include "damage_error.h"
#include "entry_mask.h"

namespace ledgix::jet {

namespace {

// Below 0, 0 or above 0; what a begins with is smaller than a.
int CompareBytes(Bytes a, Bytes b) {
    const std::size_t common = std::min(a.size(), b.size());
    const int difference = common == 0 ? 0 : std::memcmp(a.data(), b.data(), common);
    if (difference != 0 || a.size() == b.size())
        return difference;
    return a.size() < b.size() ? -1 : 1;
}

bool StartsWith(Bytes bytes, Bytes beginning) {
    return bytes.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), bytes.begin());
}

// Whether two pieces, one behind the other, begin with `bytes`.
bool StartWith(Bytes first, Bytes second, Bytes bytes) {
    const Bytes head = bytes.first(std::min(bytes.size(), first.size()));
    return StartsWith(first, head) && StartsWith(second, bytes.subspan(head.size()));
}

}  // namespace

IndexPageView::IndexPageView(const Format& format, Bytes page, PageNumber number, PageNumber owner)
    : layout_(&format.index_page),
      page_(page),
      number_(number),
      leaf_(page[0] == static_cast<std::uint8_t>(PageKind::kIndexLeaf)),
      mask_(page.subspan(layout_->mask, layout_->mask_size)),
      area_(page.subspan(layout_->entries)) {
    const bool node = page[0] == static_cast<std::uint8_t>(PageKind::kIndexNode);
    if ((!leaf_ && !node) || LoadU32(page, layout_->owner) != owner)
        RaiseDamage(DescribePage(number) + " is no page of the index");
    used_ = LastMark(mask_);
    prefix_length_ = layout_->prefix_length_size == 2 ? LoadU16(page, layout_->prefix_length)
                                                      : std::size_t{page[layout_->prefix_length]};
    if (used_ > area_.size() || (mask_[0] & 1) != 0)
        RaiseContradiction();
    if (used_ == 0) {
        prefix_length_ = 0;
        return;
    }
    const std::size_t first_end = EndOf(0);
    if (first_end < prefix_length_ || (first_end == prefix_length_ && first_end != used_))
        RaiseContradiction();
}

IndexPageView::IndexPageView(Pager& pager, PageNumber number, PageNumber owner)
    : IndexPageView(pager.format(), pager.Read(number), number, owner) {}

IndexPageView::IndexPageView(const Format& format, PagePtr page, PageNumber number, PageNumber owner)
    : IndexPageView(format, Bytes(page->bytes), number, owner) {
    held_ = std::move(page);
}

void IndexPageView::RaiseContradiction() const {
    RaiseDamage("the entries of the index page " + std::to_string(number_) + " contradict each other");
}

PageNumber IndexPageView::previous() const {
    return LoadU32(page_, layout_->previous);
}

PageNumber IndexPageView::next() const {
    return LoadU32(page_, layout_->next);
}

PageNumber IndexPageView::tail() const {
    return leaf_ ? 0 : LoadU32(page_, layout_->tail);
}

std::size_t IndexPageView::EndOf(std::size_t place) const {
    const std::size_t end = NextMark(mask_, place);
    const std::size_t stored = end - place;
    const std::size_t shared = place == 0 ? 0 : prefix_length_;
    if (stored < child_size() || shared + stored < kLeafPointerSize + child_size())
        RaiseContradiction();
    return end;
}

std::size_t IndexPageView::EntryAt(std::size_t place) const {
    return MarkUpTo(mask_, place);
}

Bytes IndexPageView::Stored(std::size_t place) const {
    return area_.subspan(place, EndOf(place) - place - child_size());
}

int IndexPageView::Compare(std::size_t place, Bytes entry) const {
    const Bytes shared = Shared(place);
    const std::size_t common = std::min(shared.size(), entry.size());
    if (const int difference = CompareBytes(shared, entry.first(common)); difference != 0)
        return difference;
    return CompareBytes(Stored(place), entry.subspan(common));
}

std::size_t IndexPageView::LowerBound(Bytes entry) const {
    std::size_t low = 0;
    std::size_t high = used_;
    while (low < high) {
        const std::size_t place = EntryAt(low + (high - low) / 2);
        if (Compare(place, entry) < 0)
            low = EndOf(place);
        else
            high = place;
    }
    return low;
}

void IndexPageView::ReadEntry(std::size_t place, std::vector<std::uint8_t>& entry) const {
    const Bytes shared = Shared(place);
    const Bytes stored = Stored(place);
    entry.assign(shared.begin(), shared.end());
    entry.insert(entry.end(), stored.begin(), stored.end());
}

bool IndexPageView::EntryIs(std::size_t place, Bytes entry) const {
    return Shared(place).size() + Stored(place).size() == entry.size() &&
           StartWith(Shared(place), Stored(place), entry);
}

bool IndexPageView::KeyBeginsWith(std::size_t place, Bytes key) const {
    return Shared(place).size() + Stored(place).size() >= key.size() + kLeafPointerSize &&
           StartWith(Shared(place), Stored(place), key);
}

bool IndexPageView::KeyIs(std::size_t place, Bytes key) const {
    return Shared(place).size() + Stored(place).size() == key.size() + kLeafPointerSize &&
           StartWith(Shared(place), Stored(place), key);
}

PageNumber IndexPageView::Child(std::size_t place) const {
    if (place == used_)
        return tail();
    return LoadBig<std::uint32_t>(area_, EndOf(place) - kChildPointerSize);
}

PageNumber IndexPageView::ChildFrom(std::size_t place) const {
    if (place < used_ || tail() != 0)
        return Child(place);
    if (IsEmpty())
        RaiseDamage("the index page " + std::to_string(number_) + " has no children");
    return Child(LastEntry());
}

}  // namespace ledgix::jet
