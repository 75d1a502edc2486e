#include "definition_pages.h"

#include <algorithm>
#include <string>

#include "byte_order.h"
#include "damage_error.h"

namespace ledgix::jet {

namespace {

class PageChain {
public:
    PageChain(CheckRun& run, PageNumber first)
        : run_(run), first_(first), place_("the table definition in " + DescribePage(first) + ": ") {}

    std::vector<std::uint8_t> Join() {
        if (!Take(first_))
            return {};
        joined_ = page_->bytes;
        const std::size_t length = LoadU32(joined_, run_.format.definition.length);
        if (length < run_.format.definition.statistics || length > run_.pager.size()) {
            run_.findings.Add("T9", place_ + "it claims " + std::to_string(length) + " bytes");
            return {};
        }
        CheckFreeBytes(std::min(length, joined_.size()));
        while (joined_.size() < length && TakeNext())
            Append(length);
        if (joined_.size() >= length && NextPage() != 0) {
            run_.findings.Add("T1", place_ + DescribePage(NextPage()) + " follows its last page");
            while (TakeNext()) {
            }
        }
        joined_.resize(std::min(joined_.size(), length));
        return std::move(joined_);
    }

private:
    PageNumber NextPage() const { return LoadU32(page_->bytes, kDefinitionNextPage); }

    bool TakeNext() {
        const PageNumber next = NextPage();
        if (next == 0) {
            if (joined_.size() < LoadU32(joined_, run_.format.definition.length))
                run_.findings.Add("T1", place_ + "its last pages are missing");
            return false;
        }
        return Take(next);
    }

    bool Take(PageNumber number) {
        if (!run_.claims.Take(number, PageUse::kDefinition, first_))
            return false;
        page_ = run_.pager.Read(number);
        if (page_->kind() != PageKind::kDefinition || page_->bytes[1] != kPageInUse) {
            run_.findings.Add("T2", place_ + DescribePage(number) + " is no page of a definition");
            return false;
        }
        if (run_.format.generation == Generation::kJet3 &&
            LoadU16(page_->bytes, kDefinitionFreeBytes) != kDefinitionMarkJet3)
            run_.findings.Add("T3", place_ + DescribePage(number) + " lacks the mark VC");
        return true;
    }

    void Append(std::size_t length) {
        const Bytes piece = Bytes(page_->bytes).subspan(kDefinitionPageHeader);
        CheckFreeBytes(kDefinitionPageHeader + std::min(length - joined_.size(), piece.size()));
        joined_.insert(joined_.end(), piece.begin(), piece.end());
    }

    // Counted without another header.
    void CheckFreeBytes(std::size_t used) {
        if (run_.format.generation == Generation::kJet3)
            return;
        const std::size_t free = run_.format.page_size - std::min(run_.format.page_size, used + kDefinitionPageHeader);
        const std::size_t claimed = LoadU16(page_->bytes, kDefinitionFreeBytes);
        if (claimed != free)
            run_.findings.Add("T20", place_ + std::to_string(free) + " bytes of " + DescribePage(page_->number) +
                                         " are free, and it says " + std::to_string(claimed));
    }

    CheckRun& run_;
    PageNumber first_;
    std::string place_;
    PagePtr page_;
    std::vector<std::uint8_t> joined_;
};

}  // namespace

std::vector<std::uint8_t> JoinDefinitionPages(CheckRun& run, PageNumber first) {
    return PageChain(run, first).Join();
}

}  // namespace ledgix::jet
