#include "index_tree.h"

#include <algorithm>
#include <utility>

#include "byte_order.h"
#include "circle_guard.h"
#include "damage_error.h"
#include "page_space.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

void AppendChild(std::vector<std::uint8_t>& entry, PageNumber child) {
    entry.resize(entry.size() + kChildPointerSize);
    StoreBig(entry, entry.size() - kChildPointerSize, child);
}

PageNumber LastChild(const IndexPageView& node) {
    if (node.tail() != 0 || node.IsEmpty())
        return node.tail();
    return node.Child(node.LastEntry());
}

}  // namespace

IndexTree::IndexTree(Pager& pager, PageNumber owner, const Index& index)
    : pager_(pager), owner_(owner), root_(index.root), map_(index.map), name_(index.name) {}

void IndexTree::RaiseTreeDamage(std::string_view text) const {
    RaiseDamage("index '" + name_ + "' " + std::string(text));
}

// Notes the way to the first entry that is not smaller, and gives the leaf of it.
IndexPageView IndexTree::Descend(Bytes target) {
    PageNumber number = root_;
    for (depth_ = 0; depth_ < kMostLevels;) {
        IndexPageView page = View(number);
        std::size_t place = page.LowerBound(target);
        const PageNumber tail = page.tail();
        if (!page.IsLeaf() && place == page.used() && tail == 0) {
            if (page.IsEmpty())
                RaiseTreeDamage("has a node without children, " + DescribePage(number));
            place = page.LastEntry();
        }
        const bool behind_all = place == page.used();
        const bool last = behind_all || (!page.IsLeaf() && tail == 0 && page.EndOf(place) == page.used());
        path_[depth_++] = {.page = number, .place = place, .tail = behind_all, .last = last};
        if (page.IsLeaf())
            return page;
        number = page.Child(place);
    }
    RaiseTreeDamage("has too many levels or runs in a circle");
}

// Whether the way down leads behind the last entry of all.
bool IndexTree::IsRightEdge() const {
    return std::all_of(path_.begin(), path_.begin() + static_cast<std::ptrdiff_t>(depth_),
                       [](const Step& step) { return step.last; });
}

IndexPageView IndexTree::ViewLeaf(PageNumber page) {
    IndexPageView leaf = View(page);
    if (!leaf.IsLeaf())
        RaiseTreeDamage("has a node among its leaves, " + DescribePage(page));
    return leaf;
}

bool IndexTree::HasKey(Bytes key) {
    IndexPageView leaf = Descend(key);
    std::size_t place = path_[depth_ - 1].place;
    CircleGuard<PageNumber> guard;
    for (;;) {
        if (place < leaf.used()) {
            if (leaf.KeyIs(place, key))
                return true;
            if (!leaf.KeyBeginsWith(place, key))
                return false;
            place = leaf.EndOf(place);
            continue;
        }
        const PageNumber next = leaf.next();
        if (next == 0)
            return false;
        if (guard.RunsInCircle(next))
            RaiseTreeDamage("has leaves that run in a circle");
        leaf = ViewLeaf(next);
        place = 0;
    }
}

// Rows with the same key would stand right before and behind the place that was found.
bool IndexTree::IsNewKey(const IndexPageView& leaf, Bytes key) {
    const std::size_t place = path_[depth_ - 1].place;
    if (place < leaf.used() && leaf.KeyIs(place, key))
        return false;
    if (place > 0 && leaf.KeyIs(leaf.EntryAt(place - 1), key))
        return false;
    if (place == leaf.used() && leaf.next() != 0) {
        const IndexPageView next = ViewLeaf(leaf.next());
        if (!next.IsEmpty() && next.KeyIs(0, key))
            return false;
    }
    if (place == 0 && leaf.previous() != 0) {
        const IndexPageView previous = ViewLeaf(leaf.previous());
        if (!previous.IsEmpty() && previous.KeyIs(previous.LastEntry(), key))
            return false;
    }
    return true;
}

std::vector<std::uint8_t> IndexTree::LastEntryBelow(PageNumber page) {
    for (std::size_t level = 0; level < kMostLevels; ++level) {
        const IndexPageView view = View(page);
        if (view.IsLeaf() && !view.IsEmpty()) {
            std::vector<std::uint8_t> entry;
            view.ReadEntry(view.LastEntry(), entry);
            return entry;
        }
        page = LastChild(view);
        if (page == 0)
            break;
    }
    RaiseTreeDamage("has a branch without entries");
}

void IndexTree::SetTarget(Bytes key, RowId row) {
    target_.assign(key.begin(), key.end());
    target_.resize(key.size() + kLeafPointerSize);
    StoreBig(target_, key.size(), row.page << 8 | row.slot);
}

bool IndexTree::Insert(Bytes key, RowId row) {
    const Format& format = pager_.format();
    if (key.size() + kLeafPointerSize + kChildPointerSize > format.page_size - format.index_page.entries)
        runtime::RaiseEngineError(runtime::ErrorNumber::kRecordTooLarge,
                                  "The value is too long for the index '" + name_ + "'.");
    SetTarget(key, row);
    bool is_new = false;
    {
        const IndexPageView leaf = Descend(target_);
        const std::size_t place = path_[depth_ - 1].place;
        if (place < leaf.used() && leaf.EntryIs(place, target_))
            RaiseTreeDamage("has an entry for " + Describe(row) + " already");
        is_new = IsNewKey(leaf, key);
    }
    for (std::size_t tries = 0; !TryInsert(); ++tries) {
        if (tries == kMostTries)
            RaiseTreeDamage("finds no place for an entry");
        Descend(target_);
    }
    return is_new;
}

bool IndexTree::TryInsert() {
    const Step& step = path_[depth_ - 1];
    if (step.last && !SeparatorsAreRight(target_))
        return false;
    IndexPageEditor leaf = Edit(step.page);
    if (leaf.HasRoom(step.place, target_)) {
        leaf.Insert(step.place, target_);
        return true;
    }
    MakeRoom(depth_ - 1);
    return false;
}

// Splits the page of a level of the path, or one above it when its parent has no room for a further child.
void IndexTree::MakeRoom(std::size_t level) {
    if (level == 0) {
        GrowRoot();
        return;
    }
    IndexPageEditor page = Edit(path_[level].page);
    page.GiveTail();
    const std::size_t place = SplitPlace(page, path_[level]);
    std::vector<std::uint8_t> separator = target_;
    if (place > 0)
        page.ReadEntry(page.EntryAt(place - 1), separator);
    AppendChild(separator, 0);
    const Step& above = path_[level - 1];
    IndexPageEditor parent = Edit(above.page);
    parent.GiveTail();
    if (parent.HasRoom(above.place, separator))
        Split(level, place, std::move(separator));
    else
        MakeRoom(level - 1);
}

// The root page stays what it is; its content goes one level down, to become two pages at once.
void IndexTree::GrowRoot() {
    const PageNumber number = AddPage();
    IndexPageEditor root = Edit(root_);
    IndexPageEditor child = IndexPageEditor::MakeLeaf(pager_, number, owner_);
    child.CopyFrom(root);
    root.Clear(PageKind::kIndexNode);
    root.SetTail(number);
}

// What stands before this place goes to the new page. An index that grows at its end only gets full pages.
std::size_t IndexTree::SplitPlace(const IndexPageView& page, const Step& step) const {
    if (page.IsEmpty())
        RaiseTreeDamage("has an entry that fits on no page");
    if (IsRightEdge())
        return page.used();
    const std::size_t middle = page.EndOf(page.EntryAt(page.used() / 2));
    if (middle < page.used())
        return middle;
    if (page.LastEntry() > 0)
        return page.LastEntry();
    return page.IsLeaf() ? step.place : page.used();
}

// The new page takes the lower part, so that what names the old one as the way to the greatest entry stays right. One
// of two leaves may be empty now: that where the entry goes.
void IndexTree::Split(std::size_t level, std::size_t place, std::vector<std::uint8_t> separator) {
    const PageNumber number = AddPage();
    const PageNumber old_number = path_[level].page;
    StoreBig(separator, separator.size() - kChildPointerSize, number);
    Edit(path_[level - 1].page).Insert(path_[level - 1].place, separator);
    IndexPageEditor upper = Edit(old_number);
    IndexPageEditor lower = IndexPageEditor::MakeLeaf(pager_, number, owner_);
    lower.CopyFrom(upper);
    lower.Erase(place, lower.used());
    upper.Erase(0, place);
    const PageNumber previous = upper.previous();
    if (previous != 0)
        SetNextOf(previous, old_number, number, upper.IsLeaf());
    lower.SetPrevious(previous);
    lower.SetNext(old_number);
    upper.SetPrevious(number);
    if (!upper.IsLeaf())
        PartNodes(lower, upper);
}

void IndexTree::PartNodes(IndexPageEditor& lower, IndexPageEditor& upper) {
    lower.SetTail(0);
    if (lower.LastEntry() > 0)
        lower.GiveTail();
    if (upper.IsEmpty())
        MakeOnlyChildAnEntry(upper);
    // Nodes are chained among the children of one parent only.
    const PageNumber last = LastChild(lower);
    const PageNumber first = upper.Child(0);
    if (View(first).IsLeaf())
        return;
    if (View(last).next() != 0)
        SetNextOf(last, first, 0, false);
    if (View(first).previous() != 0)
        SetPreviousOf(first, last, 0, false);
}

void IndexTree::MakeOnlyChildAnEntry(IndexPageEditor& node) {
    const PageNumber child = node.tail();
    std::vector<std::uint8_t> entry = LastEntryBelow(child);
    AppendChild(entry, child);
    node.SetTail(0);
    node.Insert(0, entry);
}

// On the way down that was taken last, `last` is the last entry of its leaf or is about to be: so it is what stands
// with the leaf in its parent, and with all above it whose last child this is.
bool IndexTree::SeparatorsAreRight(Bytes last) {
    for (std::size_t level = depth_ - 1; level-- > 0;) {
        if (!path_[level].tail && !SeparatorIsRight(level, last))
            return false;
        if (!path_[level].last)
            break;
    }
    return true;
}

// Corrects it otherwise, or makes room for that.
bool IndexTree::SeparatorIsRight(std::size_t level, Bytes last) {
    const Step& step = path_[level];
    if (View(step.page).EntryIs(step.place, last))
        return true;
    IndexPageEditor node = Edit(step.page);
    const PageNumber child = node.Child(step.place);
    std::vector<std::uint8_t> before;
    node.ReadEntry(step.place, before);
    AppendChild(before, child);
    std::vector<std::uint8_t> after(last.begin(), last.end());
    AppendChild(after, child);
    node.Erase(step.place, node.EndOf(step.place));
    if (node.HasRoom(step.place, after)) {
        node.Insert(step.place, after);
    } else {
        node.Insert(step.place, before);
        MakeRoom(level);
    }
    return false;
}

// `last` has become the last entry of its leaf.
void IndexTree::CorrectSeparators(Bytes last) {
    for (std::size_t tries = 0; tries < kMostTries; ++tries) {
        Descend(last);
        if (SeparatorsAreRight(last))
            return;
    }
    RaiseTreeDamage("has separators that can't be corrected");
}

void IndexTree::Remove(Bytes key, RowId row) {
    SetTarget(key, row);
    {
        const IndexPageView leaf = Descend(target_);
        const std::size_t place = path_[depth_ - 1].place;
        if (place == leaf.used() || !leaf.EntryIs(place, target_))
            RaiseTreeDamage("has no entry for " + Describe(row));
    }
    const Step& step = path_[depth_ - 1];
    IndexPageEditor leaf = Edit(step.page);
    leaf.Erase(step.place, leaf.EndOf(step.place));
    if (leaf.IsEmpty()) {
        RemoveEmptyPages();
    } else if (step.place == leaf.used()) {
        std::vector<std::uint8_t> last;
        leaf.ReadEntry(leaf.LastEntry(), last);
        CorrectSeparators(last);
    }
}

// From the leaf of the path up, as far as pages have no children left.
void IndexTree::RemoveEmptyPages() {
    for (std::size_t level = depth_ - 1; level > 0; --level) {
        Unlink(path_[level].page);
        DropPage(path_[level].page);
        const Step above = path_[level - 1];
        RemoveChild(above);
        if (LastChild(View(above.page)) == 0)
            continue;
        if (above.last)
            CorrectSeparators(LastEntryBelow(above.page));
        return;
    }
    Edit(root_).Clear(PageKind::kIndexLeaf);
}

// The last of several children is the tail of a node; an only one has an ordinary entry.
void IndexTree::RemoveChild(const Step& step) {
    IndexPageEditor node = Edit(step.page);
    if (step.tail) {
        node.SetTail(0);
        if (!node.IsEmpty() && node.LastEntry() > 0)
            node.GiveTail();
        return;
    }
    node.Erase(step.place, node.EndOf(step.place));
    if (node.IsEmpty() && node.tail() != 0)
        MakeOnlyChildAnEntry(node);
}

void IndexTree::Unlink(PageNumber page) {
    const IndexPageView view = View(page);
    if (view.previous() != 0)
        SetNextOf(view.previous(), page, view.next(), view.IsLeaf());
    if (view.next() != 0)
        SetPreviousOf(view.next(), page, view.previous(), view.IsLeaf());
}

void IndexTree::SetNextOf(PageNumber page, PageNumber from, PageNumber to, bool leaf) {
    IndexPageEditor editor = Edit(page);
    if (editor.next() != from || editor.IsLeaf() != leaf)
        RaiseTreeDamage("has pages that are chained wrongly, " + DescribePage(page) + " and " + DescribePage(from));
    editor.SetNext(to);
}

void IndexTree::SetPreviousOf(PageNumber page, PageNumber from, PageNumber to, bool leaf) {
    IndexPageEditor editor = Edit(page);
    if (editor.previous() != from || editor.IsLeaf() != leaf)
        RaiseTreeDamage("has pages that are chained wrongly, " + DescribePage(from) + " and " + DescribePage(page));
    editor.SetPrevious(to);
}

PageNumber IndexTree::AddPage() {
    const PageNumber page = AllocatePage(pager_);
    AddToMap(pager_, map_, page);
    return page;
}

void IndexTree::DropPage(PageNumber page) {
    RemoveFromMap(pager_, map_, page);
    FreePage(pager_, page);
}

}  // namespace ledgix::jet
