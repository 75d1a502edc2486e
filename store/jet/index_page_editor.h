#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "index_page_view.h"

namespace ledgix::jet {

// Changes a page of an index tree in the topmost level of the pager, in place as far as that goes. One editor for a
// page at a time, and no use of it once the page has been changed in another way. The entries given are whole: key, row
// pointer, and for nodes the child.
class IndexPageEditor : public IndexPageView {
public:
    // Error 3049 as of IndexPageView.
    IndexPageEditor(Pager& pager, PageNumber number, PageNumber owner);

    // The same for a page that holds only zeros as yet: it becomes an empty leaf.
    static IndexPageEditor MakeLeaf(Pager& pager, PageNumber number, PageNumber owner);

    void SetPrevious(PageNumber page);
    void SetNext(PageNumber page);
    void SetTail(PageNumber page);

    // Whether an entry can be inserted at the place of another one or at used(), with what the keys have in common
    // stored once if it must be.
    bool HasRoom(std::size_t place, Bytes entry) const;
    // Error 3049 when there is no room.
    void Insert(std::size_t place, Bytes entry);

    // Removes the entries from one place up to another.
    void Erase(std::size_t from, std::size_t to);

    // Turns the last entry of a node without a tail into its tail. Leaves stay as they are.
    void GiveTail();

    // Becomes an empty leaf or node without tail; neighbours stay.
    void Clear(PageKind kind);

    // Becomes what the other page is, but for its neighbours.
    void CopyFrom(const IndexPageEditor& other);

private:
    IndexPageEditor(const Format& format, std::span<std::uint8_t> page, PageNumber number, PageNumber owner);

    bool FitsInPlace(std::size_t place, Bytes entry) const;
    std::size_t BytesApart() const;
    std::size_t MostShared(std::size_t place, Bytes entry) const;
    std::optional<std::size_t> ChoosePrefix(std::size_t place, Bytes entry) const;
    void InsertInPlace(std::size_t place, Bytes entry);
    void Rewrite(std::size_t place, Bytes entry, std::size_t prefix_length);
    void Append(Bytes entry);
    void StorePrefixLength(std::size_t length);
    void StoreUsed(std::size_t used);

    std::span<std::uint8_t> bytes_;
    std::span<std::uint8_t> changed_mask_;
    std::span<std::uint8_t> changed_area_;
};

}  // namespace ledgix::jet
