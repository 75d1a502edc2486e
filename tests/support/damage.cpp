#include "damage.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <random>
#include <span>

namespace ledgix::test {

namespace {

// Where the fields stand that damage aims at, in both generations. Written down apart from the reader, so that a
// mistake there cannot make the damage miss.
struct Places {
    std::size_t page_size;
    std::size_t slot_count;
    std::size_t index_previous;
    std::size_t index_first_entry;
};

constexpr Places kJet3Places{.page_size = 2048, .slot_count = 8, .index_previous = 8, .index_first_entry = 0xF8};
constexpr Places kJet4Places{.page_size = 4096, .slot_count = 12, .index_previous = 12, .index_first_entry = 0x1E0};
constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kNextDefinitionPage = 4;
constexpr std::uint8_t kDataPage = 1;
constexpr std::uint8_t kDefinitionPage = 2;
constexpr std::uint8_t kFirstIndexPage = 3;
constexpr std::uint8_t kLastIndexPage = 4;

class Wrecker {
public:
    Wrecker(std::vector<std::uint8_t> content, std::uint32_t seed)
        : content_(std::move(content)),
          random_(seed),
          places_(content_[kVersionAt] == 0 ? kJet3Places : kJet4Places),
          page_count_(content_.size() / places_.page_size) {}

    std::vector<std::uint8_t> Do(Damage damage) {
        switch (damage) {
            case Damage::kChangedBytes:
                ChangeBytes();
                break;
            case Damage::kCutOff:
                CutOff();
                break;
            case Damage::kSwappedPages:
                SwapPages();
                break;
            case Damage::kForgedCounts:
                ForgeCount();
                break;
            case Damage::kForgedPointers:
                ForgePointer();
                break;
        }
        return std::move(content_);
    }

private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }

    std::span<std::uint8_t> Page(std::size_t number) {
        return std::span(content_).subspan(number * places_.page_size, places_.page_size);
    }

    std::span<std::uint8_t> AnyPageBehindHeader() { return Page(1 + Below(page_count_ - 1)); }

    // One that is in use, unless there are hardly any.
    std::span<std::uint8_t> UsedPage() {
        constexpr int kTries = 100;
        std::span<std::uint8_t> page = AnyPageBehindHeader();
        for (int i = 0; i < kTries && page[0] == 0; ++i)
            page = AnyPageBehindHeader();
        return page;
    }

    static void Store(std::span<std::uint8_t> page, std::size_t at, std::uint32_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i)
            page[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }

    static std::size_t LoadU16(std::span<const std::uint8_t> page, std::size_t at) {
        return page[at] + 256U * page[at + 1];
    }

    void ChangeBytes() {
        const std::size_t count = 1 + Below(8);
        for (std::size_t i = 0; i < count; ++i) {
            const std::span<std::uint8_t> page = UsedPage();
            page[Below(page.size())] = static_cast<std::uint8_t>(Below(256));
        }
    }

    void CutOff() {
        const bool between_pages = Below(4) != 0;
        const std::size_t length = between_pages ? Below(page_count_) * places_.page_size : Below(content_.size());
        content_.resize(length);
    }

    void SwapPages() {
        const std::size_t a = 1 + Below(page_count_ - 1);
        const std::size_t b = 1 + Below(page_count_ - 1);
        std::swap_ranges(Page(a).begin(), Page(a).end(), Page(b).begin());
    }

    void ForgeCount() {
        constexpr std::array<std::uint32_t, 10> kNumbers{0,      1,      0x7F,       0x80,       0xFF,
                                                         0x7FFF, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        constexpr std::size_t kPlaces = 80;  // where a page and a definition keep their counts
        const std::span<std::uint8_t> page = UsedPage();
        Store(page, Below(kPlaces), kNumbers[Below(kNumbers.size())], std::size_t{1} << Below(3));
    }

    std::uint32_t AnyPageNumber() { return static_cast<std::uint32_t>(Below(page_count_ + page_count_ / 8 + 1)); }

    void ForgePointer() {
        const std::span<std::uint8_t> page = UsedPage();
        if (page[0] == kDefinitionPage)
            Store(page, kNextDefinitionPage, AnyPageNumber(), 4);
        else if (page[0] >= kFirstIndexPage && page[0] <= kLastIndexPage)
            ForgeIndexPointer(page);
        else if (page[0] == kDataPage)
            ForgeRowPointer(page);
        else
            Store(page, Below(page.size() - 4), AnyPageNumber(), 4);
    }

    // Previous, next or tail page, or a number among the entries.
    void ForgeIndexPointer(std::span<std::uint8_t> page) {
        const std::size_t field = Below(6);
        const std::size_t at = field < 3 ? places_.index_previous + 4 * field : places_.index_first_entry + Below(60);
        Store(page, at, AnyPageNumber(), 4);
    }

    // The first bytes of a row: a pointer of a moved row or of a piece of a long value; or the long value in it.
    void ForgeRowPointer(std::span<std::uint8_t> page) {
        const std::size_t most = (page.size() - places_.slot_count - 2) / 2;
        const std::size_t count = std::min(most, LoadU16(page, places_.slot_count));
        if (count == 0)
            return;
        const std::size_t slot_at = places_.slot_count + 2 + 2 * Below(count);
        const std::size_t slot = LoadU16(page, slot_at);
        const std::size_t start = std::min(slot & 0x1FFF, page.size() - 4);
        const std::size_t reach = page.size() - 3 - start;
        const std::size_t at = Below(2) == 0 ? start : start + Below(reach);
        Store(page, at, AnyPageNumber() << 8 | static_cast<std::uint32_t>(Below(8)), 4);
        if (Below(3) == 0)
            Store(page, slot_at, static_cast<std::uint32_t>((slot & 0x1FFF) | Below(4) << 14), 2);
    }

    std::vector<std::uint8_t> content_;
    std::mt19937 random_;
    const Places& places_;
    std::size_t page_count_;
};

}  // namespace

std::string DamageName(Damage damage) {
    switch (damage) {
        case Damage::kChangedBytes:
            return "ChangedBytes";
        case Damage::kCutOff:
            return "CutOff";
        case Damage::kSwappedPages:
            return "SwappedPages";
        case Damage::kForgedCounts:
            return "ForgedCounts";
        case Damage::kForgedPointers:
            return "ForgedPointers";
    }
    return {};
}

std::vector<std::uint8_t> Damaged(const std::vector<std::uint8_t>& sound, Damage damage, std::uint32_t seed) {
    return Wrecker(sound, seed).Do(damage);
}

}  // namespace ledgix::test
