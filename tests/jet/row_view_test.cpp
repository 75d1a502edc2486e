#include "row_view.h"

#include <gtest/gtest.h>

#include "hex.h"
#include "jet_test.h"
#include "pet_table.h"
#include "row_image.h"

namespace ledgix::test {

namespace {

using jet::Column;
using jet::Generation;
using jet::RowView;

// A table of one int32 column, number 0, and variable columns behind it.
jet::TableDefinition TableWith(std::uint16_t variable_columns) {
    jet::TableDefinition table;
    table.columns_ever = static_cast<std::uint16_t>(1 + variable_columns);
    table.variable_columns_ever = variable_columns;
    table.columns.push_back(
        {.name = "Id", .type = jet::ColumnType::kInt32, .number = 0, .fixed = true, .fixed_offset = 0, .length = 4});
    for (std::uint16_t i = 0; i < variable_columns; ++i) {
        table.columns.push_back({.name = "V" + std::to_string(i),
                                 .type = jet::ColumnType::kBinary,
                                 .number = static_cast<std::uint16_t>(i + 1),
                                 .variable_index = i});
    }
    return table;
}

class Row : public testing::TestWithParam<Generation> {
protected:
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }

    RowView View(const jet::TableDefinition& table, const ByteList& row) const {
        return RowView(format(), jet::RowShape(table), row, {});
    }

    // A row of the table above with these variable values.
    ByteList Encode(const std::vector<ByteList>& variable, std::size_t gap = 0) const {
        RowContent content;
        content.columns_ever = static_cast<std::uint16_t>(1 + variable.size());
        content.fixed = {1, 2, 3, 4};
        content.variable = variable;
        content.not_null.assign(content.columns_ever, true);
        content.gap_before_end = gap;
        return EncodeRow(format(), content);
    }

    // All variable values, empty ones as such.
    std::vector<ByteList> Decode(const jet::TableDefinition& table, const ByteList& row) const {
        const RowView view = View(table, row);
        std::vector<ByteList> values;
        for (std::size_t i = 1; i < table.columns.size(); ++i) {
            const auto bytes = view.Variable(table.columns[i]);
            values.push_back(bytes ? ByteList(bytes->begin(), bytes->end()) : ByteList{0xBA, 0xD0});
        }
        return values;
    }
};

ByteList Filled(std::size_t size, std::size_t with) {
    return ByteList(size, static_cast<std::uint8_t>(with));
}

TEST_P(Row, FromJetGivesItsFixedAndVariableColumns) {
    const bool jet4 = GetParam() == Generation::kJet4;
    const jet::TableDefinition table = TableWith(3);
    jet::TableDefinition pet = table;
    pet.columns_ever = 4;
    pet.columns.resize(2);
    const ByteList rex = Hex(jet4 ? kRexJet4 : kRexJet3);
    const RowView row = View(pet, rex);
    const auto id = row.Fixed(pet.columns[0]);
    EXPECT_EQ(ByteList(id.begin(), id.end()), Hex("01 00 00 00"));
    const auto nick = row.Variable(pet.columns[1]);
    ASSERT_TRUE(nick);
    EXPECT_EQ(ByteList(nick->begin(), nick->end()), jet4 ? Hex("FF FE 52 65 78") : Hex("52 65 78"));
    const ByteList al = Hex(jet4 ? kAlJet4 : kAlJet3);
    EXPECT_TRUE(View(pet, al).Bit(1));
    EXPECT_FALSE(View(pet, al).Bit(2)) << "not tame";
    EXPECT_FALSE(View(pet, al).Bit(3)) << "no date";
}

TEST_P(Row, DoesNotKnowLaterColumns) {
    const ByteList row = Encode({{7}});
    jet::TableDefinition table = TableWith(3);
    const RowView view = View(table, row);
    EXPECT_TRUE(view.Bit(1));
    EXPECT_FALSE(view.Bit(2));
    EXPECT_FALSE(view.Bit(200));
    EXPECT_EQ(view.Variable(table.columns[3]), std::nullopt);
}

TEST_P(Row, MayHaveAGapBehindItsData) {
    const jet::TableDefinition table = TableWith(2);
    const std::vector<ByteList> values{{7, 8}, {9}};
    EXPECT_EQ(Decode(table, Encode(values, 5)), values);
}

TEST_P(Row, LacksTheVariableSectionWhenTheTableHadNoVariableColumn) {
    const ByteList row = Encode({});
    EXPECT_EQ(row.size(), format().row.count_size + 4 + 1);
    for (const std::uint16_t variable_columns : {std::uint16_t{0}, std::uint16_t{3}}) {
        const jet::TableDefinition table = TableWith(variable_columns);
        const auto id = View(table, row).Fixed(table.columns[0]);
        EXPECT_EQ(ByteList(id.begin(), id.end()), (ByteList{1, 2, 3, 4}));
    }
}

// The offsets of Jet 3 have one byte: rows near multiples of 256 bytes need care.
TEST_P(Row, OfAnyLengthGivesItsColumns) {
    const jet::TableDefinition table = TableWith(3);
    for (std::size_t length = 0; length < 1990; ++length) {
        const std::vector<ByteList> values{Filled(length / 2, 1), Filled(length - length / 2, 2), Filled(3, 3)};
        ASSERT_EQ(Decode(table, Encode(values)), values) << length;
    }
}

TEST_P(Row, OfManyColumnsGivesThemAll) {
    constexpr std::uint16_t kColumns = 200;
    const jet::TableDefinition table = TableWith(kColumns);
    for (std::size_t each = 0; each < 9; ++each) {
        std::vector<ByteList> values;
        for (std::size_t i = 0; i < kColumns; ++i)
            values.push_back(Filled(i % 7 == 0 ? 0 : each, i));
        ASSERT_EQ(Decode(table, Encode(values)), values) << each;
    }
}

TEST_P(Row, ThatIsTooShortIsDamaged) {
    const jet::TableDefinition table = TableWith(2);
    const ByteList row = Encode({{7, 8}, {9}});
    const std::size_t up_to_data = format().row.count_size + 4;
    for (std::size_t size = 0; size <= up_to_data; ++size) {
        const ByteList cut(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(ErrorOf([&] { View(table, cut); }), kDamaged) << size;
    }
}

TEST_P(Row, WithMoreColumnsThanItsTableIsDamaged) {
    EXPECT_EQ(ErrorOf([&] { View(TableWith(2), Encode({{1}, {2}, {3}})); }), kDamaged);
}

TEST_P(Row, WhoseFixedPartIsTooShortIsDamaged) {
    const ByteList row = Encode({{7, 8}});
    jet::TableDefinition table = TableWith(1);
    table.columns[0].fixed_offset = 1;
    EXPECT_EQ(ErrorOf([&] { View(table, row).Fixed(table.columns[0]); }), kDamaged);
    table.columns[0].fixed_offset = 0xFFFF;
    EXPECT_EQ(ErrorOf([&] { View(table, row).Fixed(table.columns[0]); }), kDamaged);
}

// A find of the fuzzer: the fixed part was taken to reach up to the first variable column, wherever that was.
TEST_P(Row, WhoseVariableColumnsStartPastTheirEndIsDamaged) {
    const jet::TableDefinition table = TableWith(1);
    ByteList row = Encode({{7, 8}});
    const std::size_t offset_size = format().row.offset_size;
    const std::size_t first_offset_at = row.size() - 1 - 2 * offset_size;
    std::fill_n(row.begin() + static_cast<std::ptrdiff_t>(first_offset_at), offset_size, std::uint8_t{0xFE});
    EXPECT_EQ(ErrorOf([&] { View(table, row).Fixed(table.columns[0]); }), kDamaged);
}

// The row ends where its memory does, so that the sanitizer sees a byte too far.
TEST_P(Row, WithAnyByteWrongIsReadOrDamaged) {
    const jet::TableDefinition table = TableWith(3);
    const ByteList sound = Encode({{7, 8}, {}, Filled(300, 9)});
    std::size_t sum = 0;
    const auto read_all = [&](const ByteList& row) {
        const RowView view = View(table, row);
        for (const std::uint8_t byte : view.Fixed(table.columns[0]))
            sum += byte;
        for (std::size_t i = 1; i < table.columns.size(); ++i) {
            for (const std::uint8_t byte : view.Variable(table.columns[i]).value_or(jet::Bytes()))
                sum += byte;
        }
    };
    ASSERT_EQ(ErrorOf([&] { read_all(sound); }), 0);
    ASSERT_EQ(sum, 1 + 2 + 3 + 4 + 7 + 8 + 300 * 9U);
    for (std::size_t at = 0; at < sound.size(); ++at) {
        for (std::size_t value = 0; value < 256; ++value) {
            ByteList row = sound;
            row[at] = static_cast<std::uint8_t>(value);
            const int error = ErrorOf([&] { read_all(row); });
            ASSERT_TRUE(error == 0 || error == kDamaged) << at << " " << value;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, Row, kBothGenerations, GenerationName);

// count 3, id, data, end, offsets 1 and 0, n, mask
TEST(RowOfJet3, WithOffsetsOutOfOrderIsDamaged) {
    const jet::TableDefinition table = TableWith(2);
    const jet::Format& format = jet::FormatOf(Generation::kJet3);
    const auto read = [&](const ByteList& row, std::size_t column) {
        return ErrorOf([&] { RowView(format, jet::RowShape(table), row, {}).Variable(table.columns[column]); });
    };
    EXPECT_EQ(read(Hex("03 01 02 03 04 AA BB 07 06 05 02 07"), 1), 0);
    EXPECT_EQ(read(Hex("03 01 02 03 04 AA BB 07 09 05 02 07"), 1), kDamaged) << "second starts past the end";
    EXPECT_EQ(read(Hex("03 01 02 03 04 AA BB 07 04 05 02 07"), 1), kDamaged) << "second starts before the first";
    EXPECT_EQ(read(Hex("03 01 02 03 04 AA BB 08 06 05 02 07"), 1), kDamaged) << "end inside the offsets";
    EXPECT_EQ(read(Hex("03 01 02 03 04 AA BB 07 06 00 02 07"), 1), kDamaged) << "first inside the count";
    EXPECT_EQ(read(Hex("03 01 02 03 04 AA BB 07 06 05 FF 07"), 1), kDamaged) << "255 columns";
}

}  // namespace

}  // namespace ledgix::test
