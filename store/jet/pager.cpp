#include "pager.h"

#include <algorithm>
#include <cassert>
#include <string>
#include <utility>

#include "damage_error.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kCachedPages = 1024;

// Row pointers hold 24 bits of page number.
constexpr std::uint64_t kMostPages = 1U << 24;

}  // namespace

Pager::Pager(std::unique_ptr<PageFile> file, const Format& format)
    : file_(std::move(file)), format_(format), page_count_(CountPages()), cache_(kCachedPages) {}

PageNumber Pager::CountPages() const {
    return static_cast<PageNumber>(std::min(file_->size() / format_.page_size, kMostPages));
}

void Pager::CheckNumber(PageNumber number) const {
    if (number >= page_count_)
        RaiseDamage(DescribePage(number) + " is asked for, and the file has " + std::to_string(page_count_) + " pages");
}

std::shared_ptr<Page>* Pager::FindInLevels(PageNumber number) {
    for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
        if (const auto found = level->pages.find(number); found != level->pages.end())
            return &found->second;
    }
    return nullptr;
}

PagePtr Pager::Read(PageNumber number) {
    CheckNumber(number);
    if (const std::shared_ptr<Page>* changed = FindInLevels(number))
        return *changed;
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

std::span<std::uint8_t> Pager::Change(PageNumber number) {
    assert(!levels_.empty());
    auto& pages = levels_.back().pages;
    auto found = pages.find(number);
    if (found == pages.end()) {
        const PagePtr before = Read(number);
        found = pages.emplace(number, std::make_shared<Page>(*before)).first;
    } else if (found->second.use_count() != 1) {
        found->second = std::make_shared<Page>(*found->second);
    }
    return found->second->bytes;
}

std::span<std::uint8_t> Pager::Overwrite(PageNumber number) {
    assert(!levels_.empty());
    CheckNumber(number);
    auto page = std::make_shared<Page>(Page{number, std::vector<std::uint8_t>(format_.page_size)});
    return (levels_.back().pages[number] = std::move(page))->bytes;
}

PageNumber Pager::Append() {
    if (size() + format_.page_size > format_.longest_file)
        runtime::RaiseEngineError(runtime::ErrorNumber::kDiskFull, "The database file can't grow any further.");
    const PageNumber number = page_count_++;
    Overwrite(number);
    return number;
}

void Pager::BeginLevel() {
    levels_.push_back({{}, page_count_});
}

void Pager::MergeLevel() {
    assert(levels_.size() > 1);
    Level top = std::move(levels_.back());
    levels_.pop_back();
    for (auto& [number, page] : top.pages)
        levels_.back().pages[number] = std::move(page);
}

void Pager::DropLevel() {
    page_count_ = levels_.back().page_count_before;
    levels_.pop_back();
}

std::vector<PagePtr> Pager::ChangedPages() const {
    assert(levels_.size() == 1);
    std::vector<PagePtr> pages;
    for (const auto& [number, page] : levels_.front().pages)
        pages.push_back(page);
    std::sort(pages.begin(), pages.end(), [](const PagePtr& a, const PagePtr& b) { return a->number < b->number; });
    return pages;
}

void Pager::KeepLevel() {
    assert(levels_.size() == 1);
    for (auto& [number, page] : levels_.front().pages)
        cache_[number % kCachedPages] = std::move(page);
    levels_.pop_back();
}

void Pager::Forget() {
    assert(levels_.empty());
    std::fill(cache_.begin(), cache_.end(), nullptr);
    page_count_ = CountPages();
}

}  // namespace ledgix::jet
