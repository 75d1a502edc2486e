#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
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

// Hands out the pages of one open database file, the last ones used from memory. One thread.
class Pager {
public:
    Pager(std::unique_ptr<PageFile> file, const Format& format);

    const Format& format() const { return format_; }

    // Pages in the file, the header page included.
    PageNumber page_count() const { return page_count_; }

    std::uint64_t size() const { return std::uint64_t{page_count_} * format_.page_size; }

    // Errors: 3049 when the file has no such page (numbers are read out of other pages, so a damaged file can ask for
    // any), 3043 when it cannot be read.
    PagePtr Read(PageNumber number);

    // The same, with error 3049 when the page is of another kind. `what` says in the error what was looked for.
    PagePtr Read(PageNumber number, PageKind kind, std::string_view what);

private:
    std::unique_ptr<PageFile> file_;
    const Format& format_;
    PageNumber page_count_;
    std::vector<std::shared_ptr<Page>> cache_;  // page n stands at n modulo the size, if at all
};

}  // namespace ledgix::jet
