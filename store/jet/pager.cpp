#include "pager.h"

#include <algorithm>
#include <string>
#include <utility>

#include "damage_error.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kCachedPages = 1024;

// Row pointers hold 24 bits of page number.
constexpr std::uint64_t kMostPages = 1U << 24;

}  // namespace

Pager::Pager(std::unique_ptr<PageFile> file, const Format& format)
    : file_(std::move(file)),
      format_(format),
      page_count_(static_cast<PageNumber>(std::min(file_->size() / format.page_size, kMostPages))),
      cache_(kCachedPages) {}

PagePtr Pager::Read(PageNumber number) {
    if (number >= page_count_)
        RaiseDamage(DescribePage(number) + " is asked for, and the file has " + std::to_string(page_count_) + " pages");
    std::shared_ptr<Page>& place = cache_[number % kCachedPages];
    if (place && place->number == number)
        return place;
    // A page that nobody holds any more gives its memory to the next one.
    std::shared_ptr<Page> page = place.use_count() == 1 ? std::move(place) : std::make_shared<Page>();
    place.reset();
    page->bytes.resize(format_.page_size);
    file_->Read(std::uint64_t{number} * format_.page_size, page->bytes);
    page->number = number;
    place = std::move(page);
    return place;
}

PagePtr Pager::Read(PageNumber number, PageKind kind, std::string_view what) {
    PagePtr page = Read(number);
    if (page->kind() != kind)
        RaiseDamage(DescribePage(number) + " is no " + std::string(what));
    return page;
}

}  // namespace ledgix::jet
