#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"
#include "page_file.h"

namespace ledgix::jet {

struct Page {
    PageNumber number = 0;
    std::vector<std::uint8_t> bytes;  // always of the format's page size

    PageKind kind() const { return static_cast<PageKind>(bytes[0]); }
};

// Whoever holds it keeps the page as it was when it was read.
using PagePtr = std::shared_ptr<const Page>;

// Hands out the pages of one open database file, the last ones used from memory, and keeps the pages that are being
// changed until they are wanted in the file. Changes come in levels: what a level changed can be dropped without
// touching the level below. One thread.
class Pager {
public:
    Pager(std::unique_ptr<PageFile> file, const Format& format);

    const Format& format() const { return format_; }
    PageFile& file() { return *file_; }

    // Pages in the file, the header page included, and those appended by open levels.
    PageNumber page_count() const { return page_count_; }

    std::uint64_t size() const { return std::uint64_t{page_count_} * format_.page_size; }

    // Errors: 3049 when the file has no such page (numbers are read out of other pages, so a damaged file can ask for
    // any), 3043 when it cannot be read.
    PagePtr Read(PageNumber number);

    // The same, with error 3049 when the page is of another kind. `what` says in the error what was looked for.
    PagePtr Read(PageNumber number, PageKind kind, std::string_view what);

    // The bytes of a page, to be changed in the topmost level; there must be one. Good until the next call for the same
    // page. Errors as of Read.
    std::span<std::uint8_t> Change(PageNumber number);

    // The same without reading it first: all bytes are zero.
    std::span<std::uint8_t> Overwrite(PageNumber number);

    // Adds a page of zeros at the end. Error 3026 when the file has as many as it can.
    PageNumber Append();

    void BeginLevel();
    std::size_t level_count() const { return levels_.size(); }
    // Hands the changes of the topmost level to the one below; there must be one.
    void MergeLevel();
    void DropLevel();

    // Of the only level: the pages changed or appended, ascending, and how many pages the file had before.
    std::vector<PagePtr> ChangedPages() const;
    PageNumber page_count_before() const { return levels_.front().page_count_before; }
    // Ends the only level when its pages are in the file.
    void KeepLevel();

    // Another opener may have changed the file: nothing of it is in memory any more. No level may be open.
    void Forget();

private:
    struct Level {
        std::unordered_map<PageNumber, std::shared_ptr<Page>> pages;
        PageNumber page_count_before = 0;
    };

    std::shared_ptr<Page>* FindInLevels(PageNumber number);
    void CheckNumber(PageNumber number) const;
    PageNumber CountPages() const;

    std::unique_ptr<PageFile> file_;
    const Format& format_;
    PageNumber page_count_;
    std::vector<std::shared_ptr<Page>> cache_;  // page n stands at n modulo the size, if at all
    std::vector<Level> levels_;
};

}  // namespace ledgix::jet
