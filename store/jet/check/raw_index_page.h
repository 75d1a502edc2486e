#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "byte_order.h"
#include "finding_list.h"
#include "pager.h"

namespace ledgix::jet {

// A page of an index as its bytes are.
class RawIndexPage {
public:
    // The page must be in the file. Checks what holds for every page of the index of the table with this definition
    // page.
    RawIndexPage(Pager& pager, PageNumber number, PageNumber table, FindingList& findings);

    PageNumber number() const { return page_->number; }
    // False when there is nothing of an index on the page; then there is nothing else to ask.
    bool IsIndexPage() const { return is_leaf_ || is_node_; }
    bool IsLeaf() const { return is_leaf_; }
    PageNumber previous() const { return LoadU32(page_->bytes, layout_.previous); }
    PageNumber next() const { return LoadU32(page_->bytes, layout_.next); }
    PageNumber tail() const { return LoadU32(page_->bytes, layout_.tail); }

    // None when the entries are not sound.
    std::size_t entry_count() const { return ends_.size(); }
    // With what it has in common with the first one: key, row pointer, and in nodes the child's page.
    void ReadEntry(std::size_t i, std::vector<std::uint8_t>& entry) const;

private:
    void FindEntries(FindingList& findings);
    bool AreSound(FindingList& findings) const;
    std::size_t StoredSize(std::size_t i) const { return i == 0 ? ends_[0] : std::size_t{ends_[i]} - ends_[i - 1]; }

    const IndexPageLayout& layout_;
    PagePtr page_;
    bool is_leaf_ = false;
    bool is_node_ = false;
    std::size_t prefix_length_ = 0;
    std::vector<std::uint16_t> ends_;  // of the entries, from where the first one starts
};

}  // namespace ledgix::jet
