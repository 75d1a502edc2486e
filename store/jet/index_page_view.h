#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"
#include "pager.h"

namespace ledgix::jet {

// A page of an index tree, looked at where it stands, without listing its entries first. An entry is named by its
// place: the offset of its first stored byte, counted from that of the first entry; used() is the place behind the
// last one. In what follows the bytes of an entry are key and row pointer; that of a node has a child besides.
// Error 3049 from any call when the page contradicts itself.
class IndexPageView {
public:
    // Error 3049 when the page is none of the index of the table `owner`.
    IndexPageView(Pager& pager, PageNumber number, PageNumber owner);

    PageNumber number() const { return number_; }
    bool IsLeaf() const { return leaf_; }
    bool IsEmpty() const { return used_ == 0; }
    std::size_t used() const { return used_; }

    PageNumber previous() const;  // on the same level; 0 for none
    PageNumber next() const;
    PageNumber tail() const;  // of a node: the child behind those of the entries; 0 for none

    // The place of the first entry that is not smaller in byte order, used() if there is none.
    std::size_t LowerBound(Bytes entry) const;

    // Of an entry: the place behind it.
    std::size_t EndOf(std::size_t place) const;
    // The place of the last entry that starts at or before `place`.
    std::size_t EntryAt(std::size_t place) const;
    std::size_t LastEntry() const { return EntryAt(used_ - 1); }

    // Replaces `entry` by the bytes of an entry.
    void ReadEntry(std::size_t place, std::vector<std::uint8_t>& entry) const;
    bool EntryIs(std::size_t place, Bytes entry) const;
    bool KeyIs(std::size_t place, Bytes key) const;
    bool KeyBeginsWith(std::size_t place, Bytes key) const;

    // Of a node: the child of an entry; at used() the tail.
    PageNumber Child(std::size_t place) const;
    // The child where a search goes on that LowerBound sent to this place: without a tail that of the last entry stands
    // for all that is greater.
    PageNumber ChildFrom(std::size_t place) const;

protected:
    IndexPageView(const Format& format, Bytes page, PageNumber number, PageNumber owner);

    // Bytes that an entry has apart from those that count for order.
    std::size_t child_size() const { return leaf_ ? 0 : kChildPointerSize; }
    // The beginning of an entry that is stored with the first one, and the rest of its bytes.
    Bytes Shared(std::size_t place) const { return area_.first(place == 0 ? 0 : prefix_length_); }
    Bytes Stored(std::size_t place) const;

    const IndexPageLayout* layout_;
    Bytes page_;
    PageNumber number_;
    bool leaf_;
    std::size_t used_;
    std::size_t prefix_length_;
    Bytes mask_;
    Bytes area_;

private:
    IndexPageView(const Format& format, PagePtr page, PageNumber number, PageNumber owner);

    int Compare(std::size_t place, Bytes entry) const;
    [[noreturn]] void RaiseContradiction() const;

    PagePtr held_;
};

}  // namespace ledgix::jet
