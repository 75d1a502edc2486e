#include "header_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "database_builder.h"
#include "hex.h"
#include "jet_test.h"
#include "rc4.h"

namespace ledgix::test {

namespace {

using jet::Generation;

constexpr int kPassword = 3031;
constexpr int kEncrypted = 3112;
constexpr int kUnrecognized = 3343;

// A fresh Jet 4 file begins so behind its format name and version.
constexpr char kFreshJet4[] =
    "B5 6E 03 62 60 09 C2 55 E9 A9 67 72 40 3F 00 9C 7E 9F 90 FF 85 9A 31 C5"
    "79 BA ED 30 BC DF CC 9D 63 D9 E4 C3 9F 46 FB 8A BC 4E DF 5E EC 37 04 E1 9C FA 9F FB 28 E6 4A 13"
    "8A 60 0D 31 7B 36 AC D7 DF B1 2E 51 13 43 96 0A B1 33 6D C4 79 5B CB 10 7C 2A 19 D7 7C 99 08 1F"
    "98 FD 2C CA 99 AF 52 95 84 66 5F 95 F8 D0 89 24 85 67 C6 1F 27 44 D2 EE CF 65 ED FF 07 C7 46 A1"
    "78 16 0C ED E9 2D 62 D4 54 06 00 00 34 2E 30 00";

class HeaderPageOf : public testing::TestWithParam<Generation> {
protected:
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }

    static int ErrorReading(const ByteList& content) {
        return ErrorOf([&] { jet::ReadHeaderPage(*jet::MakeMemoryFile(content)); });
    }

    // Changes bytes of the region that is masked on disk.
    void Change(std::size_t at, const ByteList& bytes) {
        const auto masked = std::span(content_).subspan(jet::kHeaderMasked, format().header.masked_size);
        const ByteList key = Hex("C7 DA 39 6B");
        jet::ApplyRc4(key, masked);
        std::copy(bytes.begin(), bytes.end(), content_.begin() + static_cast<std::ptrdiff_t>(at));
        jet::ApplyRc4(key, masked);
    }

    ByteList content_ = DatabaseBuilder(GetParam()).Finish();
};

TEST_P(HeaderPageOf, ASoundFileNamesItsGenerationAndCodePage) {
    const jet::HeaderPage header = jet::ReadHeaderPage(*jet::MakeMemoryFile(content_));
    EXPECT_EQ(header.generation, GetParam());
    EXPECT_EQ(header.code_page, 1252);
}

TEST_P(HeaderPageOf, AFileOfAnotherKindIsNotRecognized) {
    content_[4] = 's';
    EXPECT_EQ(ErrorReading(content_), kUnrecognized);
}

TEST_P(HeaderPageOf, RelatedFormatsAreNotRecognized) {
    std::memcpy(&content_[4], "Standard ACE DB", 16);
    EXPECT_EQ(ErrorReading(content_), kUnrecognized);
    std::memcpy(&content_[4], "MSISAM Database", 16);
    EXPECT_EQ(ErrorReading(content_), kUnrecognized);
}

TEST_P(HeaderPageOf, ALaterVersionIsNotRecognizedAndSaysSo) {
    content_[jet::kHeaderVersion] = 2;
    try {
        jet::ReadHeaderPage(*jet::MakeMemoryFile(content_));
        FAIL();
    } catch (const runtime::RuntimeError& error) {
        EXPECT_EQ(error.number(), kUnrecognized);
        EXPECT_NE(error.description().find("later version"), std::string::npos);
    }
}

TEST_P(HeaderPageOf, AnEmptyOrShortFileIsNotRecognized) {
    EXPECT_EQ(ErrorReading({}), kUnrecognized);
    content_.resize(2047);
    EXPECT_EQ(ErrorReading(content_), kUnrecognized);
}

TEST_P(HeaderPageOf, AFileThatEndsWithinAPageIsDamaged) {
    content_.resize(content_.size() - 1);
    EXPECT_EQ(ErrorReading(content_), kDamaged);
}

TEST_P(HeaderPageOf, AnEncryptedFileIsRefused) {
    Change(jet::kHeaderDatabaseKey, {0, 0, 1, 0});
    EXPECT_EQ(ErrorReading(content_), kEncrypted);
}

TEST_P(HeaderPageOf, AFileWithAPasswordIsRefused) {
    Change(jet::kHeaderPassword, {'p', 0, 'w', 0});
    EXPECT_EQ(ErrorReading(content_), kPassword);
}

TEST_P(HeaderPageOf, TheLastCharacterOfAPasswordCounts) {
    const std::size_t last = jet::kHeaderPassword + format().header.password_size - 2;
    Change(last, {'p', 0});
    EXPECT_EQ(ErrorReading(content_), kPassword);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, HeaderPageOf, kBothGenerations, GenerationName);

TEST(HeaderPage, OfAFreshFileIsAccepted) {
    ByteList content = DatabaseBuilder(Generation::kJet4).Finish();
    const ByteList fresh = Hex(kFreshJet4);
    std::copy(fresh.begin(), fresh.end(), content.begin() + jet::kHeaderMasked);
    EXPECT_EQ(jet::ReadHeaderPage(*jet::MakeMemoryFile(content)).code_page, 1252);
}

TEST(HeaderPage, WithAnImpossibleCreationDateIsRefusedAndNothingElse) {
    ByteList content(4096, 0xFF);
    std::memcpy(content.data(), "\0\1\0\0Standard Jet DB\0\1", 21);
    ByteList masked(128);
    std::fill(masked.begin() + jet::kHeaderDatabaseKey - jet::kHeaderMasked, masked.end(), std::uint8_t{0xFF});
    std::fill_n(masked.begin() + jet::kHeaderDatabaseKey - jet::kHeaderMasked, 4, std::uint8_t{0});
    jet::ApplyRc4(Hex("C7 DA 39 6B"), masked);
    std::copy(masked.begin(), masked.end(), content.begin() + jet::kHeaderMasked);
    EXPECT_EQ(ErrorOf([&] { jet::ReadHeaderPage(*jet::MakeMemoryFile(content)); }), kPassword);
}

}  // namespace

}  // namespace ledgix::test
