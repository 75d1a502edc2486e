#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"
#include "pager.h"

namespace ledgix::jet {

// A page of an index tree. An entry of a leaf is a key and the row that has it; one of a node is the last entry below
// one of its children, and the child. Entries ascend.
class IndexPage {
public:
    // Error 3049 when the page is none of the index of the table `owner` or contradicts itself.
    IndexPage(Pager& pager, PageNumber number, PageNumber owner);

    PageNumber number() const { return number_; }
    bool IsLeaf() const { return leaf_; }
    std::size_t entry_count() const { return entry_count_; }

    PageNumber next() const { return next_; }  // on the same level; 0 for none

    // Replaces `entry` by entry i whole: key, row pointer, and in nodes child.
    void ReadEntry(std::size_t i, std::vector<std::uint8_t>& entry) const;

    // The first entry that is not smaller than the key, or than key and row pointer, in byte order; entry_count() if
    // there is none. The child of an entry does not take part.
    std::size_t LowerBound(Bytes key) const;

    // Of a node: the child of entry i; of entry_count() the child for all that is greater.
    PageNumber Child(std::size_t i) const;

private:
    void FindEntries(const IndexPageLayout& layout);
    Bytes StoredEntry(std::size_t i) const;

    PagePtr page_;
    PageNumber number_;
    bool leaf_;
    PageNumber next_;
    PageNumber tail_;
    std::size_t prefix_length_;
    Bytes area_;                       // all entries
    std::vector<std::uint16_t> ends_;  // of the entries in it
    std::size_t entry_count_ = 0;
};

}  // namespace ledgix::jet
