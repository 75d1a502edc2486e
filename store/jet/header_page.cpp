#include "header_page.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "byte_order.h"
#include "damage_error.h"
#include "jet_format.h"
#include "page_file.h"
#include "rc4.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;

constexpr std::uint8_t kPageStart[]{0x00, 0x01, 0x00, 0x00};
constexpr char kFormatName[] = "Standard Jet DB";  // with its closing NUL
constexpr char kAceFormatName[] = "Standard ACE DB";
constexpr char kMoneyFormatName[] = "MSISAM Database";
constexpr std::uint8_t kMaskKey[]{0xC7, 0xDA, 0x39, 0x6B};
constexpr std::uint8_t kFirstLaterVersion = 2;

// Of new files.
constexpr std::uint16_t kBuildNumberJet3 = 9502;
constexpr std::uint16_t kBuildNumberJet4 = 9756;
constexpr std::uint8_t kCreationDate[]{0x3E, 0x85, 0xD3, 0x3B, 0x3E, 0xAB, 0xE4, 0x40};
constexpr std::uint8_t kEngineMark[]{0x54, 0x06, 0x00, 0x00, '4', '.', '0', 0x00};

// Commit bytes of one who may open the file: nothing is being written.
constexpr std::uint16_t kExclusiveOpener = 0x0101;
constexpr std::uint16_t kSharedOpener = 0x0100;

bool HasName(Bytes page, const char (&name)[sizeof kFormatName]) {
    return std::memcmp(page.data() + kHeaderFormatName, name, sizeof name) == 0;
}

[[noreturn]] void RaiseFormat(std::string_view text) {
    runtime::RaiseEngineError(ErrorNumber::kUnrecognizedFormat, text);
}

Generation CheckFormat(Bytes page) {
    if (HasName(page, kAceFormatName) || HasName(page, kMoneyFormatName))
        RaiseFormat("Unrecognized database format: the file is in a later or related format, not in Jet 3 or Jet 4.");
    if (!std::equal(std::begin(kPageStart), std::end(kPageStart), page.begin()) || !HasName(page, kFormatName))
        RaiseFormat("Unrecognized database format: the file is no Jet database.");
    const std::uint8_t version = page[kHeaderVersion];
    if (version >= kFirstLaterVersion)
        RaiseFormat("Unrecognized database format: the file was written in a later version of the Jet format (" +
                    std::to_string(version) + ").");
    return version == 0 ? Generation::kJet3 : Generation::kJet4;
}

// What Jet 4 combines with each four bytes of the password: the whole part of the creation date.
std::uint32_t PasswordMask(Bytes page, const Format& format) {
    if (!format.header.password_masked_by_date)
        return 0;
    const double date = LoadDouble(page, kHeaderCreationDate);
    const bool fits =
        date > std::numeric_limits<std::int32_t>::min() && date < std::numeric_limits<std::int32_t>::max();
    return fits ? static_cast<std::uint32_t>(static_cast<std::int32_t>(date)) : 0;
}

bool HasPassword(Bytes page, const Format& format) {
    const std::uint32_t mask = PasswordMask(page, format);
    for (std::size_t i = 0; i < format.header.password_size; i += sizeof mask) {
        if (LoadU32(page, kHeaderPassword + i) != mask)
            return true;
    }
    return false;
}

void WriteMaskedFields(const Format& format, std::span<std::uint8_t> page) {
    const HeaderLayout& layout = format.header;
    StoreRowPointer(page, kHeaderFreePageMap, {.page = kAllocationPage, .slot = 0});
    StoreRowPointer(page, kHeaderSecondMap, {.page = kAllocationPage, .slot = 1});
    constexpr PageNumber kDefinitions[]{kCatalogPage, kAccessPage, kQueriesPage, kRelationshipsPage};
    for (std::size_t i = 0; i < std::size(kDefinitions); ++i)
        StoreLittle(page, kHeaderSystemTables + 4 * i, kDefinitions[i]);
    if (layout.country != 0)
        StoreLittle(page, layout.country, kCountryCode);
    StoreLittle(page, layout.sort_order, kSortOrder);
    StoreLittle(page, kHeaderCodePage, kCodePage);
    if (format.generation == Generation::kJet3) {
        StoreLittle(page, layout.build_number, kBuildNumberJet3);
        return;
    }
    StoreLittle(page, layout.build_number, kBuildNumberJet4);
    std::copy(std::begin(kCreationDate), std::end(kCreationDate), page.begin() + kHeaderCreationDate);
    for (std::size_t i = 0; i < layout.password_size; i += sizeof(std::uint32_t))
        StoreLittle(page, kHeaderPassword + i, PasswordMask(page, format));
}

void WriteCommitBytes(const Format& format, std::span<std::uint8_t> page) {
    const std::size_t start = format.header.commit_bytes;
    for (std::size_t at = start; at < page.size(); at += sizeof kSharedOpener)
        StoreLittle(page, at, at == start ? kExclusiveOpener : kSharedOpener);
}

std::vector<std::uint8_t> ReadStart(PageFile& file, std::size_t size) {
    std::vector<std::uint8_t> page(size);
    file.Read(0, page);
    return page;
}

}  // namespace

HeaderPage ReadHeaderPage(PageFile& file) {
    const std::size_t smallest = FormatOf(Generation::kJet3).page_size;
    if (file.size() < smallest)
        RaiseFormat("Unrecognized database format: the file is too short for a Jet database.");
    std::vector<std::uint8_t> page = ReadStart(file, smallest);
    HeaderPage header;
    header.generation = CheckFormat(page);
    const Format& format = FormatOf(header.generation);
    if (file.size() % format.page_size != 0)
        RaiseDamage("its length of " + std::to_string(file.size()) + " bytes is no whole number of pages");
    ApplyRc4(kMaskKey, std::span(page).subspan(kHeaderMasked, format.header.masked_size));
    if (LoadU32(page, kHeaderDatabaseKey) != 0)
        runtime::RaiseEngineError(ErrorNumber::kEncrypted, "The database file is encrypted; its pages can't be read.");
    if (HasPassword(page, format))
        runtime::RaiseEngineError(ErrorNumber::kPasswordProtected, "The database file is protected by a password.");
    header.code_page = LoadU16(page, kHeaderCodePage);
    return header;
}

std::vector<std::uint8_t> MakeHeaderPage(Generation generation) {
    const Format& format = FormatOf(generation);
    std::vector<std::uint8_t> page(format.page_size);
    std::copy(std::begin(kPageStart), std::end(kPageStart), page.begin());
    std::copy(std::begin(kFormatName), std::end(kFormatName), page.begin() + kHeaderFormatName);
    page[kHeaderVersion] = generation == Generation::kJet3 ? 0 : 1;
    WriteMaskedFields(format, page);
    ApplyRc4(kMaskKey, std::span(page).subspan(kHeaderMasked, format.header.masked_size));
    if (format.header.engine_mark != 0)
        std::copy(std::begin(kEngineMark), std::end(kEngineMark),
                  page.begin() + static_cast<std::ptrdiff_t>(format.header.engine_mark));
    WriteCommitBytes(format, page);
    return page;
}

}  // namespace ledgix::jet
