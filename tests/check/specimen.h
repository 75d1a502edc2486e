#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "byte_order.h"
#include "database_builder.h"
#include "structure_check.h"

namespace ledgix::test {

inline const auto kBothGenerations = testing::Values(jet::Generation::kJet3, jet::Generation::kJet4);

inline std::string GenerationName(const testing::TestParamInfo<jet::Generation>& info) {
    return info.param == jet::Generation::kJet3 ? "Jet3" : "Jet4";
}

std::vector<jet::Finding> Check(std::vector<std::uint8_t> content, jet::Strictness strictness);

using Codes = std::set<std::string>;
Codes CodesOf(const std::vector<jet::Finding>& findings);
// One line for each finding.
std::string Lines(const std::vector<jet::Finding>& findings);

// Where the parts of a definition start that lies on one page.
struct DefinitionPlaces {
    std::size_t columns = 0;
    std::size_t column_names = 0;
    std::size_t index_blocks = 0;
    std::size_t logical_indexes = 0;
    std::size_t index_names = 0;
    std::size_t long_columns = 0;
};

// A database to be broken in one place. Most tables of the builder leave something to be desired to a strict eye, so
// what was to be found from the start does not count.
class Specimen {
public:
    explicit Specimen(std::vector<std::uint8_t> sound);

    const jet::Format& format() const { return *format_; }
    std::vector<std::uint8_t>& content() { return content_; }
    jet::PageNumber page_count() const { return static_cast<jet::PageNumber>(content_.size() / format_->page_size); }
    std::span<std::uint8_t> Page(jet::PageNumber number);

    // Of the sound content.
    jet::TableDefinition Table(const std::string& name) const;
    std::vector<jet::PageNumber> PagesOf(jet::RowId map) const;
    std::vector<jet::RowId> RowsOf(const std::string& table) const;
    DefinitionPlaces PlacesOf(const std::string& table) const;

    // Slots and rows as they are now.
    std::uint16_t Slot(jet::RowId row);
    void SetSlot(jet::RowId row, std::uint16_t entry);
    std::span<std::uint8_t> Row(jet::RowId row);
    void SetMapBit(jet::RowId map, jet::PageNumber page, bool value);

    // Makes the file one page longer, of zeros, which is not free.
    jet::PageNumber AddPage();

    template <typename Number>
    void Store(jet::PageNumber page, std::size_t at, Number number) {
        jet::StoreLittle(Page(page), at, number);
    }

    // Changes the header page without its mask.
    void ChangeHeader(const std::function<void(std::span<std::uint8_t>)>& change);

    // What was not to be found in the sound content.
    Codes Found(jet::Strictness strictness = jet::Strictness::kAnyWriter) const;
    Codes FoundStrictly() const { return Found(jet::Strictness::kOwnFiles); }

private:
    std::vector<std::uint8_t> sound_;
    std::vector<std::uint8_t> content_;
    const jet::Format* format_;
};

// A table "Pets" of twelve rows on one page and more, the fifth and the eighth of them moved, and a slot 5 of the first
// page that is deleted and has its bytes still. Long values of all kinds in the last two rows; two indexes over several
// pages, Id (primary key, two levels) and Rank (descending, three levels). And a table "Empty" of one column.
std::vector<std::uint8_t> BuildPets(jet::Generation generation);

// Tests of rules, once for each generation.
class RuleTest : public testing::TestWithParam<jet::Generation> {
protected:
    Specimen pets_{BuildPets(GetParam())};
    jet::TableDefinition table_ = pets_.Table("Pets");
    std::vector<jet::RowId> rows_ = pets_.RowsOf("Pets");
};

}  // namespace ledgix::test
