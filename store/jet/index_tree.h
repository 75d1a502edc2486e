#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "index_page_editor.h"
#include "jet_types.h"
#include "pager.h"
#include "table_definition.h"

namespace ledgix::jet {

// Changes the tree of one index, page by page, in the topmost level of the pager; there must be one for Insert and
// Remove. When a call of these fails, that level must be dropped. Keeps nothing between calls but where the tree is,
// so others may change the pages meanwhile. Error 3049 for damage, in every call; 3026 when the file can't grow.
class IndexTree {
public:
    // `owner` is the definition page of the index's table. The pager must outlive the tree.
    IndexTree(Pager& pager, PageNumber owner, const Index& index);

    // Whether any row has the key.
    bool HasKey(Bytes key);

    // True when no row had the key before. Error 3047 when the key is too long for a page, 3049 when the row has it
    // already.
    bool Insert(Bytes key, RowId row);

    // Error 3049 when the row does not have the key.
    void Remove(Bytes key, RowId row);

private:
    // A page on the way down, and in it the place of the entry that was chosen.
    struct Step {
        PageNumber page = 0;
        std::size_t place = 0;
        bool tail = false;  // the child chosen is the tail
        bool last = false;  // nothing stands behind what was chosen
    };

    // A tree of this height has more pages than a file.
    static constexpr std::size_t kMostLevels = 32;
    // An insertion into a sound tree splits no page of its way more than a few times.
    static constexpr std::size_t kMostTries = 4 * kMostLevels;

    IndexPageView View(PageNumber page) { return {pager_, page, owner_}; }
    IndexPageEditor Edit(PageNumber page) { return {pager_, page, owner_}; }
    [[noreturn]] void RaiseTreeDamage(std::string_view text) const;

    IndexPageView Descend(Bytes target);
    void SetTarget(Bytes key, RowId row);
    bool IsRightEdge() const;
    bool IsNewKey(const IndexPageView& leaf, Bytes key);
    IndexPageView ViewLeaf(PageNumber page);
    std::vector<std::uint8_t> LastEntryBelow(PageNumber page);

    // These do one change at most, which leaves the tree whole; then the way down is to be taken again.
    bool TryInsert();
    void MakeRoom(std::size_t level);
    void GrowRoot();
    void Split(std::size_t level, std::size_t place, std::vector<std::uint8_t> separator);
    bool SeparatorsAreRight(Bytes last);
    bool SeparatorIsRight(std::size_t level, Bytes last);

    std::size_t SplitPlace(const IndexPageView& page, const Step& step) const;
    void PartNodes(IndexPageEditor& lower, IndexPageEditor& upper);
    void MakeOnlyChildAnEntry(IndexPageEditor& node);
    void CorrectSeparators(Bytes last);

    void RemoveEmptyPages();
    void RemoveChild(const Step& step);
    void Unlink(PageNumber page);
    void SetNextOf(PageNumber page, PageNumber from, PageNumber to, bool leaf);
    void SetPreviousOf(PageNumber page, PageNumber from, PageNumber to, bool leaf);
    PageNumber AddPage();
    void DropPage(PageNumber page);

    Pager& pager_;
    PageNumber owner_;
    PageNumber root_;
    RowId map_;
    std::string name_;
    std::array<Step, kMostLevels> path_;  // from the root to a leaf
    std::size_t depth_ = 0;
    std::vector<std::uint8_t> target_;  // the entry to insert or remove
};

}  // namespace ledgix::jet
