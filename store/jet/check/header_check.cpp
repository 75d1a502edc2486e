#include "header_check.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "byte_order.h"
#include "rc4.h"

namespace ledgix::jet {

namespace {

using std::string_view_literals::operator""sv;

constexpr std::uint8_t kMaskKey[]{0xC7, 0xDA, 0x39, 0x6B};
constexpr std::string_view kStartJet3 = "\0\1\0\0Standard Jet DB\0\0\0\0\0"sv;
constexpr std::string_view kStartJet4 = "\0\1\0\0Standard Jet DB\0\1\0\0\0"sv;
constexpr std::string_view kMarkJet4 = "\x54\x06\0\0\x34\x2E\x30\0"sv;
constexpr PageNumber kFewestPages = 6;  // header, free pages, four definitions
constexpr double kLastDate = 2958466;   // the year 10000

bool Has(Bytes page, std::size_t at, std::string_view bytes) {
    return std::equal(bytes.begin(), bytes.end(), page.begin() + static_cast<std::ptrdiff_t>(at),
                      [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

void CheckPointers(Bytes page, FindingList& findings) {
    constexpr std::uint32_t kPointers[]{0x100, 0x101, 2, 3, 4, 5};
    for (std::size_t i = 0; i < std::size(kPointers); ++i) {
        const std::uint32_t pointer = LoadU32(page, kHeaderFreePageMap + 4 * i);
        if (pointer != kPointers[i])
            findings.Add("H3", "page 0: pointer " + std::to_string(i) + " to the system's pages is " +
                                   std::to_string(pointer) + " instead of " + std::to_string(kPointers[i]));
    }
}

}  // namespace

void CheckHeader(CheckRun& run) {
    run.claims.Take(0, PageUse::kHeader, 0);
    FindingList& findings = run.findings;
    const bool jet4 = run.format.generation == Generation::kJet4;
    if (run.pager.page_count() < kFewestPages)
        findings.Add("H1", "the file ends behind page " + std::to_string(run.pager.page_count() - 1));
    std::vector<std::uint8_t> page = run.pager.Read(0)->bytes;
    ApplyRc4(kMaskKey, std::span(page).subspan(kHeaderMasked, run.format.header.masked_size));
    if (!Has(page, 0, jet4 ? kStartJet4 : kStartJet3))
        findings.Add("H2", "page 0: its first bytes are not those of the format");
    if (jet4 && !Has(page, run.format.header.engine_mark, kMarkJet4))
        findings.Add("H2", "page 0: the mark of the engine is missing");
    CheckPointers(page, findings);
    if (LoadU16(page, kHeaderCodePage) == 0)
        findings.Add("H4", "page 0: there is no code page");
    if (LoadU16(page, run.format.header.sort_order) == 0)
        findings.Add("H5", "page 0: there is no sort order");
    // Written so that what is no number is implausible too.
    const double date = jet4 ? LoadDouble(page, kHeaderCreationDate) : 1;
    if (!(date > 0 && date < kLastDate))
        findings.Add("H6", "page 0: the creation date is none");
}

}  // namespace ledgix::jet
