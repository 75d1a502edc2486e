#include "index_page_editor.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "byte_order.h"
#include "damage_error.h"
#include "entry_mask.h"

namespace ledgix::jet {

namespace {

std::size_t CommonLength(Bytes a, Bytes b) {
    const auto end = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    return static_cast<std::size_t>(end - a.begin());
}

// The byte that tells nodes stands between the length of the prefix and the mask.
std::size_t NodeMarkAt(const IndexPageLayout& layout) {
    return layout.prefix_length + layout.prefix_length_size;
}

}  // namespace

IndexPageEditor::IndexPageEditor(const Format& format, std::span<std::uint8_t> page, PageNumber number,
                                 PageNumber owner)
    : IndexPageView(format, page, number, owner),
      bytes_(page),
      changed_mask_(page.subspan(layout_->mask, layout_->mask_size)),
      changed_area_(page.subspan(layout_->entries)) {}

IndexPageEditor::IndexPageEditor(Pager& pager, PageNumber number, PageNumber owner)
    : IndexPageEditor(pager.format(), pager.Change(number), number, owner) {}

IndexPageEditor IndexPageEditor::MakeLeaf(Pager& pager, PageNumber number, PageNumber owner) {
    const std::span<std::uint8_t> page = pager.Change(number);
    page[0] = static_cast<std::uint8_t>(PageKind::kIndexLeaf);
    page[1] = kPageInUse;
    StoreLittle(page, pager.format().index_page.owner, owner);
    IndexPageEditor editor(pager.format(), page, number, owner);
    editor.Clear(PageKind::kIndexLeaf);
    return editor;
}

void IndexPageEditor::SetPrevious(PageNumber page) {
    StoreLittle(bytes_, layout_->previous, page);
}

void IndexPageEditor::SetNext(PageNumber page) {
    StoreLittle(bytes_, layout_->next, page);
}

void IndexPageEditor::SetTail(PageNumber page) {
    StoreLittle(bytes_, layout_->tail, page);
}

void IndexPageEditor::StorePrefixLength(std::size_t length) {
    prefix_length_ = length;
    if (layout_->prefix_length_size == 2)
        StoreLittle(bytes_, layout_->prefix_length, static_cast<std::uint16_t>(length));
    else
        bytes_[layout_->prefix_length] = static_cast<std::uint8_t>(length);
}

void IndexPageEditor::StoreUsed(std::size_t used) {
    used_ = used;
    StoreLittle(bytes_, layout_->free_bytes, static_cast<std::uint16_t>(area_.size() - used));
}

// How many bytes at the end of an entry are never stored once for all: those of the row pointer, unless another writer
// left the page so full that it could not be changed otherwise.
std::size_t IndexPageEditor::BytesApart() const {
    const bool into_row_pointer = !IsEmpty() && EndOf(0) < prefix_length_ + kLeafPointerSize + child_size();
    return child_size() + (into_row_pointer ? 1 : kLeafPointerSize);
}

bool IndexPageEditor::FitsInPlace(std::size_t place, Bytes entry) const {
    if (IsEmpty())
        return entry.size() <= area_.size();
    return entry.size() >= prefix_length_ + BytesApart() && used_ + entry.size() - prefix_length_ <= area_.size() &&
           (prefix_length_ == 0 || std::memcmp(entry.data(), area_.data(), prefix_length_) == 0) &&
           (place != 0 || EndOf(0) > prefix_length_);
}

// What all entries may share when one more comes to a place.
std::size_t IndexPageEditor::MostShared(std::size_t place, Bytes entry) const {
    std::vector<std::uint8_t> first(entry.begin(), entry.end() - static_cast<std::ptrdiff_t>(child_size()));
    std::vector<std::uint8_t> last = first;
    if (place > 0)
        ReadEntry(0, first);
    if (place < used_)
        ReadEntry(LastEntry(), last);
    const std::size_t shortest = std::min(first.size(), last.size()) + child_size() - BytesApart();
    const std::size_t longest = layout_->prefix_length_size == 2 ? std::numeric_limits<std::uint16_t>::max()
                                                                 : std::numeric_limits<std::uint8_t>::max();
    return std::min({CommonLength(first, last), shortest, longest});
}

// The prefix with which one more entry fits; none as long as that goes.
std::optional<std::size_t> IndexPageEditor::ChoosePrefix(std::size_t place, Bytes entry) const {
    const std::size_t count = CountMarks(mask_);  // of the entries that would be stored without the prefix
    const std::size_t whole = used_ + (count - 1) * prefix_length_ + entry.size();
    if (whole <= area_.size())
        return 0;
    const std::size_t prefix = MostShared(place, entry);
    return whole - count * prefix <= area_.size() ? std::optional(prefix) : std::nullopt;
}

bool IndexPageEditor::HasRoom(std::size_t place, Bytes entry) const {
    return FitsInPlace(place, entry) || ChoosePrefix(place, entry).has_value();
}

void IndexPageEditor::Insert(std::size_t place, Bytes entry) {
    if (FitsInPlace(place, entry)) {
        InsertInPlace(place, entry);
        return;
    }
    const std::optional<std::size_t> prefix = ChoosePrefix(place, entry);
    if (!prefix)
        RaiseDamage("the index page " + std::to_string(number_) + " has no room for a sound entry");
    Rewrite(place, entry, *prefix);
}

// A new first entry leaves the prefix where it is: what was first is stored from there on, as all others are.
void IndexPageEditor::InsertInPlace(std::size_t place, Bytes entry) {
    if (IsEmpty())
        StorePrefixLength(0);
    const Bytes stored = entry.subspan(prefix_length_);
    const std::size_t at = place == 0 ? prefix_length_ : place;
    std::memmove(changed_area_.data() + at + stored.size(), changed_area_.data() + at, used_ - at);
    std::copy(stored.begin(), stored.end(), changed_area_.begin() + static_cast<std::ptrdiff_t>(at));
    if (at < used_)
        SpreadMarks(changed_mask_.first((used_ + stored.size()) / 8 + 1), at, stored.size());
    Mark(changed_mask_, at + stored.size());
    StoreUsed(used_ + stored.size());
}

void IndexPageEditor::Rewrite(std::size_t place, Bytes entry, std::size_t prefix_length) {
    const std::vector<std::uint8_t> copy(page_.begin(), page_.end());
    const Bytes mask = Bytes(copy).subspan(layout_->mask, layout_->mask_size);
    const Bytes area = Bytes(copy).subspan(layout_->entries);
    const Bytes shared = area.first(prefix_length_);
    const std::size_t used = used_;
    std::vector<std::uint8_t> whole;
    Erase(0, used_);
    StorePrefixLength(prefix_length);
    for (std::size_t at = 0; at < used; at = NextMark(mask, at)) {
        if (at == place)
            Append(entry);
        whole.assign(shared.begin(), at == 0 ? shared.begin() : shared.end());
        const Bytes stored = area.subspan(at, NextMark(mask, at) - at);
        whole.insert(whole.end(), stored.begin(), stored.end());
        Append(whole);
    }
    if (place == used)
        Append(entry);
}

void IndexPageEditor::Append(Bytes entry) {
    const std::size_t skipped = IsEmpty() ? 0 : prefix_length_;
    const Bytes stored = entry.subspan(std::min(entry.size(), skipped));
    if (stored.empty() || !std::equal(entry.begin(), stored.begin(), area_.begin()) ||
        used_ + stored.size() > area_.size())
        RaiseDamage("the entries of the index page " + std::to_string(number_) + " do not ascend");
    std::copy(stored.begin(), stored.end(), changed_area_.begin() + static_cast<std::ptrdiff_t>(used_));
    StoreUsed(used_ + stored.size());
    Mark(changed_mask_, used_);
}

void IndexPageEditor::Erase(std::size_t from, std::size_t to) {
    if (to == used_) {
        CutMarks(changed_mask_, from);
        StoreUsed(from);
        if (from == 0)
            StorePrefixLength(0);
        return;
    }
    if (from == to)
        return;
    const std::size_t at = from == 0 ? prefix_length_ : from;  // the entry behind becomes the first one
    std::memmove(changed_area_.data() + at, changed_area_.data() + to, used_ - to);
    CloseMarks(changed_mask_.first(used_ / 8 + 1), at, to - at);
    StoreUsed(used_ - (to - at));
}

void IndexPageEditor::GiveTail() {
    if (leaf_ || IsEmpty() || tail() != 0)
        return;
    const std::size_t last = LastEntry();
    SetTail(Child(last));
    Erase(last, used_);
}

void IndexPageEditor::Clear(PageKind kind) {
    leaf_ = kind == PageKind::kIndexLeaf;
    bytes_[0] = static_cast<std::uint8_t>(kind);
    bytes_[NodeMarkAt(*layout_)] = leaf_ ? 0 : 1;
    SetTail(0);
    Erase(0, used_);
}

void IndexPageEditor::CopyFrom(const IndexPageEditor& other) {
    const PageNumber previous_page = previous();
    const PageNumber next_page = next();
    std::copy(other.page_.begin(), other.page_.end(), bytes_.begin());
    SetPrevious(previous_page);
    SetNext(next_page);
    leaf_ = other.leaf_;
    used_ = other.used_;
    prefix_length_ = other.prefix_length_;
}

}  // namespace ledgix::jet
