#include "tree_check.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "byte_order.h"
#include "damage_error.h"
#include "map_check.h"
#include "raw_index_page.h"

namespace ledgix::jet {

namespace {

// A page holds two children at least where anything is sound, so no file has a tree as high.
constexpr int kMostLevels = 32;

using EntryBytes = std::vector<std::uint8_t>;

RowId LoadEntryRow(Bytes pointer) {
    const auto number = LoadBig<std::uint32_t>(pointer, 0);
    return {.page = number >> 8, .slot = static_cast<std::uint8_t>(number)};
}

// By key, then by row pointer.
bool IsBefore(Bytes a, Bytes b) {
    const Bytes key_a = a.first(a.size() - kLeafPointerSize);
    const Bytes key_b = b.first(b.size() - kLeafPointerSize);
    if (!std::equal(key_a.begin(), key_a.end(), key_b.begin(), key_b.end()))
        return std::lexicographical_compare(key_a.begin(), key_a.end(), key_b.begin(), key_b.end());
    return LoadBig<std::uint32_t>(a, key_a.size()) < LoadBig<std::uint32_t>(b, key_b.size());
}

class TreeCheck {
public:
    TreeCheck(CheckRun& run, PageNumber table, const EntryVisitor& visit) : run_(run), table_(table), visit_(visit) {}

    void Check(const RawIndex& index) {
        const std::vector<PageNumber> in_map =
            CheckMap(run_, index.map, "an index of the table in page " + std::to_string(table_));
        Walk(index.root, 0);
        CompareWithMap(index.map, in_map);
        CheckChain("I3", leaves_);
    }

private:
    struct Link {
        PageNumber page = 0;
        PageNumber previous = 0;
        PageNumber next = 0;
    };

    // What a node wants to know of a child.
    struct Subtree {
        bool sound = false;
        bool leaf = false;
        Link link;
        EntryBytes last;  // entry of its leaves; empty when there is none
    };

    Subtree Walk(PageNumber number, int level) {
        Subtree subtree;
        if (tree_pages_.contains(number) || level == kMostLevels) {
            run_.findings.Add("I9", DescribePage(number) + ": the pages of the index run in a circle");
            return subtree;
        }
        if (!run_.claims.Take(number, PageUse::kIndex, table_))
            return subtree;
        tree_pages_.insert(number);
        const RawIndexPage page(run_.pager, number, table_, run_.findings);
        if (!page.IsIndexPage())
            return subtree;
        subtree.sound = true;
        subtree.leaf = page.IsLeaf();
        subtree.link = {.page = number, .previous = page.previous(), .next = page.next()};
        if (level == 0 && !subtree.leaf && (subtree.link.previous != 0 || subtree.link.next != 0))
            run_.findings.Add("I24", DescribePage(number) + ": the root of the index has siblings");
        if (subtree.leaf)
            WalkLeaf(page, level, subtree);
        else
            WalkNode(page, level, subtree);
        return subtree;
    }

    void WalkLeaf(const RawIndexPage& page, int level, Subtree& subtree) {
        if (page.entry_count() == 0 && level > 0)
            run_.findings.Add("I12", DescribePage(page.number()) + ": it is an index page without entries");
        leaves_.push_back(subtree.link);
        for (std::size_t i = 0; i < page.entry_count(); ++i) {
            page.ReadEntry(i, subtree.last);
            if (!previous_.empty() && IsBefore(subtree.last, previous_))
                run_.findings.Add("I4", DescribePage(page.number()) + ": entry " + std::to_string(i) +
                                            " of the index comes before the one in front of it");
            const Bytes entry(subtree.last);
            visit_(entry.first(entry.size() - kLeafPointerSize), LoadEntryRow(entry.last(kLeafPointerSize)));
            previous_ = subtree.last;
        }
    }

    void WalkNode(const RawIndexPage& page, int level, Subtree& subtree) {
        if (page.entry_count() == 0)
            AddEmptyNode(page);
        std::vector<Link> nodes;
        std::size_t leaves = 0;
        EntryBytes entry;
        for (std::size_t i = 0; i < page.entry_count() + (page.tail() != 0 ? 1 : 0); ++i) {
            const bool is_tail = i == page.entry_count();
            if (!is_tail)
                page.ReadEntry(i, entry);
            const PageNumber number =
                is_tail ? page.tail() : LoadBig<std::uint32_t>(entry, entry.size() - kChildPointerSize);
            Subtree child = Walk(number, level + 1);
            if (!child.sound)
                continue;
            if (child.leaf)
                ++leaves;
            else
                nodes.push_back(child.link);
            entry.resize(entry.size() - std::min(entry.size(), kChildPointerSize));
            if (!is_tail && !child.last.empty() && child.last != entry)
                run_.findings.Add("I13", DescribePage(page.number()) + ": entry " + std::to_string(i) +
                                             " is not the last one of its child in " + DescribePage(number));
            subtree.last = std::move(child.last);
        }
        if (leaves != 0 && !nodes.empty())
            run_.findings.Add("I23", DescribePage(page.number()) + ": its children are leaves and nodes");
        if (run_.findings.IsStrict())
            CheckChain("I24", nodes);
    }

    void AddEmptyNode(const RawIndexPage& page) {
        if (page.tail() == 0)
            run_.findings.Add("I12", DescribePage(page.number()) + ": it is an index page without children");
        else
            run_.findings.AddIfStrict("I22", DescribePage(page.number()) + ": its last child is its only one");
    }

    void CompareWithMap(RowId map, const std::vector<PageNumber>& in_map) {
        for (const PageNumber page : tree_pages_) {
            if (!std::binary_search(in_map.begin(), in_map.end(), page))
                run_.findings.Add("I1", DescribePage(page) + ": it belongs to an index, and the map in " +
                                            Describe(map) + " lacks it");
        }
        for (const PageNumber page : in_map) {
            if (tree_pages_.contains(page))
                continue;
            run_.findings.Add("I2", DescribePage(page) + ": the map of an index in " + Describe(map) +
                                        " lists it, and the index does not lead to it");
            run_.claims.Take(page, PageUse::kIndex, table_);
        }
    }

    // Pages next to each other must name each other.
    void CheckChain(std::string_view code, const std::vector<Link>& links) {
        for (std::size_t i = 0; i < links.size(); ++i) {
            const PageNumber previous = i == 0 ? 0 : links[i - 1].page;
            const PageNumber next = i + 1 == links.size() ? 0 : links[i + 1].page;
            if (links[i].previous != previous || links[i].next != next)
                run_.findings.Add(code, DescribePage(links[i].page) + ": the index page is between pages " +
                                            std::to_string(previous) + " and " + std::to_string(next) +
                                            ", and it says " + std::to_string(links[i].previous) + " and " +
                                            std::to_string(links[i].next));
        }
    }

    CheckRun& run_;
    PageNumber table_;
    const EntryVisitor& visit_;
    std::set<PageNumber> tree_pages_;
    std::vector<Link> leaves_;
    EntryBytes previous_;  // of the leaves so far
};

}  // namespace

void CheckTree(CheckRun& run, PageNumber table, const RawIndex& index, const EntryVisitor& visit) {
    TreeCheck(run, table, visit).Check(index);
}

}  // namespace ledgix::jet
