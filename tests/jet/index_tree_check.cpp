#include "index_tree_check.h"

#include <algorithm>
#include <stdexcept>

#include "byte_order.h"
#include "data_page.h"
#include "usage_map.h"

namespace ledgix::test {

namespace {

using jet::PageNumber;

// One page, decoded.
struct Node {
    bool leaf = false;
    PageNumber previous = 0;
    PageNumber next = 0;
    PageNumber tail = 0;
    std::size_t prefix = 0;
    std::vector<ByteList> entries{};  // key and row pointer
    std::vector<PageNumber> children{};
};

class TreeChecker {
public:
    TreeChecker(jet::Pager& pager, PageNumber owner, const jet::Index& index)
        : pager_(pager), layout_(pager.format().index_page), owner_(owner), index_(index) {}

    TreeCheck Check() {
        try {
            const Node root = Decode(index_.root);
            Expect(root.previous == 0 && root.next == 0, index_.root, "is a root with siblings");
            Visit(index_.root, root, 1);
            CheckLeafChain();
            CheckMap();
            const auto disorder =
                std::adjacent_find(check_.entries.begin(), check_.entries.end(), std::greater_equal<>());
            Expect(disorder == check_.entries.end(), index_.root, "has entries that don't ascend");
        } catch (const std::domain_error& fault) {
            check_.fault = fault.what();
        }
        check_.pages = pages_.size();
        return std::move(check_);
    }

private:
    static void Expect(bool condition, PageNumber page, const std::string& fault) {
        if (!condition)
            throw std::domain_error("page " + std::to_string(page) + " " + fault);
    }

    // Checks a page and all below it. Gives the last entry there.
    ByteList Visit(PageNumber number, const Node& node, std::size_t level) {
        Expect(level < 30, number, "is too deep");
        pages_.push_back(number);
        check_.compressed_pages += node.prefix > 0 ? 1 : 0;
        if (node.leaf) {
            Expect(check_.levels == 0 || check_.levels == level, number, "is a leaf on another level");
            Expect(!node.entries.empty() || number == index_.root, number, "is empty");
            check_.levels = level;
            leaves_.push_back(number);
            check_.entries.insert(check_.entries.end(), node.entries.begin(), node.entries.end());
            return node.entries.empty() ? ByteList() : node.entries.back();
        }
        return VisitChildren(number, node, level);
    }

    ByteList VisitChildren(PageNumber number, const Node& node, std::size_t level) {
        std::vector<PageNumber> children = node.children;
        if (node.tail != 0)
            children.push_back(node.tail);
        Expect(!children.empty(), number, "has no children");
        Expect((children.size() > 1) == (node.tail != 0), number, "has a tail without need or lacks one");
        ByteList last;
        for (std::size_t i = 0; i < children.size(); ++i) {
            const Node child = Decode(children[i]);
            if (!child.leaf) {
                Expect(child.previous == (i > 0 ? children[i - 1] : 0), children[i], "has the wrong previous node");
                Expect(child.next == (i + 1 < children.size() ? children[i + 1] : 0), children[i],
                       "has the wrong next node");
            }
            last = Visit(children[i], child, level + 1);
            if (i < node.entries.size())
                Expect(node.entries[i] == last, number, "has an entry that is not the last one below its child");
        }
        return last;
    }

    Node Decode(PageNumber number) {
        const jet::PagePtr page = pager_.Read(number);
        const jet::Bytes bytes = page->bytes;
        Expect(bytes[0] == 3 || bytes[0] == 4, number, "is no page of an index");
        Expect(bytes[1] == 1 && jet::LoadU32(bytes, layout_.owner) == owner_, number, "is of another owner");
        Node node{.leaf = bytes[0] == 4,
                  .previous = jet::LoadU32(bytes, layout_.previous),
                  .next = jet::LoadU32(bytes, layout_.next),
                  .tail = jet::LoadU32(bytes, layout_.tail)};
        node.prefix =
            layout_.prefix_length_size == 1 ? bytes[layout_.prefix_length] : jet::LoadU16(bytes, layout_.prefix_length);
        Expect(bytes[layout_.mask - 1] == (node.leaf ? 0 : 1), number, "has the wrong mark of nodes");
        Expect(!node.leaf || node.tail == 0, number, "is a leaf with a tail");
        DecodeEntries(number, bytes, node);
        return node;
    }

    void DecodeEntries(PageNumber number, jet::Bytes bytes, Node& node) {
        const jet::Bytes area = bytes.subspan(layout_.entries);
        std::size_t start = 0;
        for (std::size_t place = 0; place < 8 * layout_.mask_size; ++place) {
            if ((bytes[layout_.mask + place / 8] >> place % 8 & 1) == 0)
                continue;
            Expect(place > 0 && place <= area.size(), number, "has a mark outside the entries");
            ByteList entry;
            if (start > 0)
                entry.assign(area.begin(), area.begin() + static_cast<std::ptrdiff_t>(node.prefix));
            Append(entry, ByteList(area.begin() + static_cast<std::ptrdiff_t>(start),
                                   area.begin() + static_cast<std::ptrdiff_t>(place)));
            Expect(entry.size() >= (node.leaf ? 4U : 8U), number, "has an entry that is too short");
            if (!node.leaf) {
                node.children.push_back(jet::LoadBig<std::uint32_t>(entry, entry.size() - 4));
                entry.erase(entry.end() - 4, entry.end());
            }
            node.entries.push_back(std::move(entry));
            start = place;
        }
        const std::size_t free = area.size() - start;
        Expect(jet::LoadU16(bytes, layout_.free_bytes) == free, number, "has the wrong number of free bytes");
        CheckPrefix(number, node);
    }

    // The prefix stays out of the row pointers; it says nothing on a page of one entry.
    static void CheckPrefix(PageNumber number, const Node& node) {
        Expect(node.prefix == 0 || !node.entries.empty(), number, "is empty and has a prefix");
        if (node.entries.size() < 2)
            return;
        for (const ByteList& entry : node.entries)
            Expect(node.prefix + 4 <= entry.size(), number, "has a prefix that is too long");
    }

    void CheckLeafChain() {
        for (std::size_t i = 0; i < leaves_.size(); ++i) {
            const Node leaf = Decode(leaves_[i]);
            Expect(leaf.previous == (i > 0 ? leaves_[i - 1] : 0), leaves_[i], "has the wrong previous leaf");
            Expect(leaf.next == (i + 1 < leaves_.size() ? leaves_[i + 1] : 0), leaves_[i], "has the wrong next leaf");
        }
    }

    void CheckMap() {
        std::vector<PageNumber> pages = pages_;
        std::sort(pages.begin(), pages.end());
        Expect(pages == jet::ReadUsageMap(pager_, index_.map), index_.root, "has a map of other pages than its tree");
        for (const PageNumber page : pages)
            Expect(!IsFreePage(pager_, page), page, "is free and in use");
    }

    jet::Pager& pager_;
    const jet::IndexPageLayout& layout_;
    PageNumber owner_;
    const jet::Index& index_;
    TreeCheck check_;
    std::vector<PageNumber> pages_;
    std::vector<PageNumber> leaves_;
};

}  // namespace

TreeCheck CheckIndexTree(jet::Pager& pager, jet::PageNumber owner, const jet::Index& index) {
    return TreeChecker(pager, owner, index).Check();
}

bool IsFreePage(jet::Pager& pager, jet::PageNumber page) {
    jet::DataPage allocation;
    const jet::Bytes map = jet::ReadRow(pager, {.page = jet::kAllocationPage, .slot = 0}, jet::kAllocationOwner, 0,
                                        "map of free pages", allocation);
    const std::size_t byte = jet::kInlineBitmap + page / 8;
    return byte >= map.size() || (map[byte] >> page % 8 & 1) != 0;
}

}  // namespace ledgix::test
