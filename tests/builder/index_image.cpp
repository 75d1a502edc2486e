#include "index_image.h"

#include <algorithm>

#include "byte_order.h"

namespace ledgix::test {

namespace {

using jet::PageNumber;
using jet::StoreLittle;

// What one page holds: its entries whole, and of a node the tail child.
struct PageContent {
    PageNumber page = 0;
    std::vector<ByteList> entries;
    PageNumber tail = 0;
};

void AppendBig(ByteList& bytes, std::uint32_t number, int size) {
    for (int i = size - 1; i >= 0; --i)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

ByteList LeafEntry(const IndexEntry& entry) {
    ByteList bytes = entry.key;
    AppendBig(bytes, entry.row.page, 3);
    bytes.push_back(entry.row.slot);
    return bytes;
}

std::size_t CommonPrefix(const ByteList& a, const ByteList& b) {
    const auto end = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    return static_cast<std::size_t>(end - a.begin());
}

class TreeWriter {
public:
    TreeWriter(FileImage& file, const IndexImage& index) : file_(file), index_(index), format_(file.format()) {
        file_.AddToMap(index_.map, index_.root);
    }

    void Write(const std::vector<IndexEntry>& entries) {
        std::vector<PageContent> level = Leaves(entries);
        jet::PageKind kind = jet::PageKind::kIndexLeaf;
        while (level.size() > 1) {
            for (PageContent& content : level)
                content.page = AllocatePage();
            WriteLevel(level, kind);
            level = Parents(level);
            kind = jet::PageKind::kIndexNode;
        }
        level[0].page = index_.root;
        WriteLevel(level, kind);
    }

private:
    std::vector<PageContent> Leaves(const std::vector<IndexEntry>& entries) const {
        std::vector<PageContent> leaves(1);
        for (const IndexEntry& entry : entries) {
            if (leaves.back().entries.size() == index_.entries_per_page)
                leaves.emplace_back();
            leaves.back().entries.push_back(LeafEntry(entry));
        }
        return leaves;
    }

    // Each node has one child more than entries: its last child is the tail.
    std::vector<PageContent> Parents(const std::vector<PageContent>& children) {
        std::vector<PageContent> parents;
        last_entries_ = NextLastEntries(children);
        for (std::size_t i = 0; i < children.size();) {
            PageContent& parent = parents.emplace_back();
            const std::size_t end = std::min(children.size(), i + index_.entries_per_page + 1);
            const bool would_leave_one = children.size() - end == 1;
            const std::size_t last = would_leave_one ? end - 2 : end - 1;
            for (; i < last; ++i)
                parent.entries.push_back(NodeEntry(last_entries_[i], children[i].page));
            parent.tail = children[i++].page;
            parent_ends_.push_back(last_entries_[i - 1]);
        }
        return parents;
    }

    // The last leaf entry below each page of a level.
    std::vector<ByteList> NextLastEntries(const std::vector<PageContent>& children) {
        std::vector<ByteList> last = std::move(parent_ends_);
        parent_ends_.clear();
        if (last.empty()) {
            for (const PageContent& leaf : children)
                last.push_back(leaf.entries.back());
        }
        return last;
    }

    static ByteList NodeEntry(ByteList last_below, PageNumber child) {
        AppendBig(last_below, child, 4);
        return last_below;
    }

    PageNumber AllocatePage() {
        const PageNumber page = file_.Allocate();
        file_.AddToMap(index_.map, page);
        return page;
    }

    void WriteLevel(const std::vector<PageContent>& level, jet::PageKind kind) {
        for (std::size_t i = 0; i < level.size(); ++i) {
            WritePage(level[i], kind);
            const std::span<std::uint8_t> page = file_.page(level[i].page);
            if (i > 0)
                StoreLittle(page, format_.index_page.previous, level[i - 1].page);
            if (i + 1 < level.size())
                StoreLittle(page, format_.index_page.next, level[i + 1].page);
        }
    }

    void WritePage(const PageContent& content, jet::PageKind kind) {
        const jet::IndexPageLayout& layout = format_.index_page;
        const std::span<std::uint8_t> page = file_.page(content.page);
        const auto& entries = content.entries;
        const std::size_t common = entries.empty() ? 0 : CommonPrefix(entries.front(), entries.back());
        const std::size_t prefix = index_.compressed ? common : 0;
        page[0] = static_cast<std::uint8_t>(kind);
        page[1] = 1;
        page[layout.prefix_length] = static_cast<std::uint8_t>(prefix);
        page[layout.mask - 1] = kind == jet::PageKind::kIndexNode ? 1 : 0;
        StoreLittle(page, layout.owner, index_.owner);
        StoreLittle(page, layout.tail, content.tail);
        std::size_t used = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const auto from = entries[i].begin() + static_cast<std::ptrdiff_t>(i == 0 ? 0 : prefix);
            std::copy(from, entries[i].end(), page.begin() + static_cast<std::ptrdiff_t>(layout.entries + used));
            used += static_cast<std::size_t>(entries[i].end() - from);
            page[layout.mask + used / 8] |= static_cast<std::uint8_t>(1U << used % 8);
        }
        StoreLittle(page, layout.free_bytes, static_cast<std::uint16_t>(page.size() - layout.entries - used));
    }

    FileImage& file_;
    const IndexImage& index_;
    const jet::Format& format_;
    std::vector<ByteList> last_entries_;
    std::vector<ByteList> parent_ends_;
};

}  // namespace

void WriteIndexTree(FileImage& file, const IndexImage& index, const std::vector<IndexEntry>& entries) {
    TreeWriter(file, index).Write(entries);
}

}  // namespace ledgix::test
