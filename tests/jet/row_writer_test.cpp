#include "row_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "column_layout.h"
#include "data_page_writer.h"
#include "database_file.h"
#include "hex.h"
#include "jet_test.h"
#include "new_database.h"
#include "pet_definition.h"
#include "pet_table.h"
#include "row_image.h"
#include "row_reader.h"

namespace ledgix::test {

namespace {

using jet::ColumnType;
using jet::Generation;
using runtime::Null;
using runtime::Variant;
using Values = std::vector<Variant>;

constexpr int kConversion = 3421;
constexpr int kRecordTooLarge = 3047;
constexpr int kFieldTooSmall = 3163;
constexpr int kNotAvailable = 3251;
constexpr jet::PageNumber kTablePage = 40;

class RowWriter : public testing::TestWithParam<Generation> {
protected:
    RowWriter() { table_.page = kTablePage; }

    bool IsJet4() const { return GetParam() == Generation::kJet4; }
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }

    void Add(ColumnType type) { jet::AddColumn(format(), table_, ColumnOf(NextName(), type)); }
    void AddText(std::size_t characters, bool compressed = false) {
        jet::AddColumn(format(), table_, TextColumn(NextName(), characters, GetParam(), compressed));
    }
    void AddBinary(std::uint16_t length) {
        jet::Column column = ColumnOf(NextName(), ColumnType::kBinary);
        column.length = length;
        jet::AddColumn(format(), table_, column);
    }

    ByteList Encode(const Values& values) const { return jet::EncodeRow(format(), table_, values); }
    int ErrorEncoding(const Values& values) const {
        return ErrorOf([&] { Encode(values); });
    }

    // What the row reader gives for an encoded row that stands on a page of the table.
    Values ReadBack(const ByteList& row) const {
        std::vector<std::uint8_t> content = jet::NewDatabase(GetParam(), {});
        const auto page = static_cast<jet::PageNumber>(content.size() / format().page_size);
        std::vector<std::uint8_t> bytes = jet::MakeDataPage(format(), kTablePage);
        EXPECT_TRUE(jet::AppendRow(format(), bytes, row));
        content.insert(content.end(), bytes.begin(), bytes.end());
        jet::DatabaseFile file(jet::MakeMemoryFile(std::move(content)));
        jet::RowReader reader(file, table_);
        EXPECT_TRUE(reader.Load({.page = page, .slot = 0}));
        Values values;
        for (std::size_t i = 0; i < table_.columns.size(); ++i)
            values.push_back(reader.Value(i));
        return values;
    }

    jet::TableDefinition table_;

private:
    std::string NextName() const { return "C" + std::to_string(table_.columns.size()); }
};

TEST_P(RowWriter, WritesTheRowsThatJetWrites) {
    table_ = MakePetDefinition(GetParam());
    EXPECT_EQ(Encode({1, "Rex", true, runtime::Date{36526.5}}), Hex(IsJet4() ? kRexJet4 : kRexJet3));
    EXPECT_EQ(Encode({-2, "Al", false, Null{}}), Hex(IsJet4() ? kAlJet4 : kAlJet3));
}

TEST_P(RowWriter, TakesValuesInTheOrderOfTheColumnsNotOfTheirNumbers) {
    table_ = MakePetDefinition(GetParam());
    std::reverse(table_.columns.begin(), table_.columns.end());
    EXPECT_EQ(Encode({runtime::Date{36526.5}, true, "Rex", 1}), Hex(IsJet4() ? kRexJet4 : kRexJet3));
}

TEST_P(RowWriter, LeavesOutTheVariableSectionWhenTheTableNeverHadAVariableColumn) {
    Add(ColumnType::kInt32);
    Add(ColumnType::kByte);
    EXPECT_EQ(Encode({7, std::uint8_t{9}}), Hex(IsJet4() ? "02 00 07 00 00 00 09 03" : "02 07 00 00 00 09 03"));
    EXPECT_EQ(Encode({Null{}, Null{}}), Hex(IsJet4() ? "02 00 00 00 00 00 00 00" : "02 00 00 00 00 00 00"));
}

TEST_P(RowWriter, MakesNoRowTooShortForAPointer) {
    Add(ColumnType::kBoolean);
    EXPECT_EQ(Encode({true}), Hex("01 00 00 01"));
    EXPECT_EQ(ReadBack(Encode({true})), Values{true});
    EXPECT_EQ(ReadBack(Encode({false})), Values{false});
}

TEST_P(RowWriter, TellsAnEmptyTextFromNull) {
    AddText(10);
    AddText(10);
    EXPECT_EQ(ReadBack(Encode({"", Null{}})), (Values{"", Null{}}));
    EXPECT_EQ(ReadBack(Encode({Null{}, ""})), (Values{Null{}, ""}));
}

TEST_P(RowWriter, TakesNullForABooleanAsFalse) {
    Add(ColumnType::kBoolean);
    Add(ColumnType::kInt32);
    EXPECT_EQ(Encode({Null{}, 5}), Encode({false, 5}));
}

TEST_P(RowWriter, KeepsThePlacesOfDroppedColumns) {
    Add(ColumnType::kInt32);
    AddText(10);
    Add(ColumnType::kInt16);
    AddText(10);
    const Values kept{std::int16_t{-3}, "kept"};
    table_.columns.erase(table_.columns.begin(), table_.columns.begin() + 2);
    const ByteList row = Encode(kept);
    EXPECT_EQ(row[0], 4) << "columns that the table ever had";
    EXPECT_EQ(ReadBack(row), kept);
}

TEST_P(RowWriter, CompressesTextWhereTheColumnAllowsIt) {
    AddText(20, true);
    AddText(20, false);
    const auto size = [&](const char* first, const char* second) { return Encode({first, second}).size(); };
    const std::size_t empty = size("", "");
    const std::size_t wide = format().character_size;
    EXPECT_EQ(size("abcd", "") - empty, IsJet4() ? 6U : 4U);
    EXPECT_EQ(size("", "abcd") - empty, 4 * wide);
    EXPECT_EQ(size("ab", "") - empty, 2 * wide) << "too short";
    EXPECT_EQ(size("abc\u20AC", "") - empty, 4 * wide) << "a character above U+00FF";
    EXPECT_EQ(ReadBack(Encode({"abc\u00E9", "abc\u20AC"})), (Values{"abc\u00E9", "abc\u20AC"}));
}

TEST_P(RowWriter, RefusesValuesOfAnotherTypeThanTheColumn) {
    Add(ColumnType::kInt32);
    Add(ColumnType::kBoolean);
    EXPECT_EQ(ErrorEncoding({1, true}), 0);
    EXPECT_EQ(ErrorEncoding({std::int16_t{1}, true}), kConversion);
    EXPECT_EQ(ErrorEncoding({1, std::int16_t{1}}), kConversion);
}

TEST_P(RowWriter, RefusesMoreThanAColumnTakes) {
    AddText(5, true);
    AddBinary(3);
    EXPECT_EQ(ErrorEncoding({"12345", runtime::Binary(3)}), 0);
    EXPECT_EQ(ErrorEncoding({"123456", Null{}}), kFieldTooSmall);
    EXPECT_EQ(ErrorEncoding({Null{}, runtime::Binary(4)}), kFieldTooSmall);
}

TEST_P(RowWriter, RefusesARowThatNoPageTakes) {
    for (int i = 0; i < 20; ++i)
        AddBinary(255);
    const auto row = [](std::size_t bytes) {
        Values values;
        for (int i = 0; i < 20; ++i) {
            const std::size_t size = std::min<std::size_t>(bytes, 255);
            values.push_back(runtime::Binary(size, 1));
            bytes -= size;
        }
        return values;
    };
    std::size_t bytes = 1900;
    while (ErrorEncoding(row(bytes)) == 0)
        ++bytes;
    EXPECT_EQ(ErrorEncoding(row(bytes)), kRecordTooLarge);
    EXPECT_EQ(Encode(row(bytes - 1)).size(), IsJet4() ? 4060U : 2012U);
    EXPECT_EQ(ReadBack(Encode(row(bytes - 1))), row(bytes - 1));
}

TEST_P(RowWriter, CopiesTheFieldsOfLongValues) {
    Add(ColumnType::kMemo);
    const ByteList text = IsJet4() ? Hex("48 00 69 00") : Hex("48 69");
    ByteList field = Hex(IsJet4() ? "04 00 00 80 00 00 00 00 00 00 00 00" : "02 00 00 80 00 00 00 00 00 00 00 00");
    field.insert(field.end(), text.begin(), text.end());
    jet::RowEncoder encoder(format(), table_);
    encoder.PutStored(table_.columns[0], field);
    EXPECT_EQ(ReadBack(encoder.Finish()), Values{"Hi"});
    EXPECT_EQ(ErrorEncoding({"Hi"}), kConversion);
}

// A second encoder, made for the tests, gives the same bytes.
TEST_P(RowWriter, WritesRowsOfEveryLengthAroundTheMultiplesOf256) {
    Add(ColumnType::kInt32);
    for (int i = 0; i < 9; ++i)
        AddBinary(255);
    for (std::size_t bytes = 180; bytes < 1900; ++bytes) {
        const std::size_t near = (bytes + 40) % 256;
        if (near > 80)
            continue;
        RowContent content;
        content.columns_ever = 10;
        content.fixed = {1, 2, 3, 4};
        content.not_null.assign(10, true);
        Values values{0x04030201};
        for (std::size_t i = 0, rest = bytes; i < 9; ++i) {
            const std::size_t size = std::min(rest, i % 2 == 0 ? std::size_t{255} : bytes % 200);
            rest -= size;
            content.variable.emplace_back(size, static_cast<std::uint8_t>(i + 1));
            values.push_back(content.variable.back());
        }
        const ByteList row = Encode(values);
        ASSERT_EQ(row, EncodeRow(format(), content)) << bytes << " bytes";
        ASSERT_EQ(ReadBack(row), values) << bytes << " bytes";
    }
}

// Values of every type that the generation has.
class RandomRows {
public:
    RandomRows(Generation generation, unsigned seed) : generation_(generation), random_(seed) {}

    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }

    jet::TableDefinition Table() {
        const jet::Format& format = jet::FormatOf(generation_);
        jet::TableDefinition table;
        table.page = kTablePage;
        for (std::size_t i = Below(25); i < 26; ++i) {
            constexpr ColumnType kTypes[]{
                ColumnType::kBoolean,  ColumnType::kByte,   ColumnType::kInt16,  ColumnType::kInt32,
                ColumnType::kCurrency, ColumnType::kSingle, ColumnType::kDouble, ColumnType::kDate,
                ColumnType::kGuid,     ColumnType::kBinary, ColumnType::kText,   ColumnType::kText,
                ColumnType::kText,     ColumnType::kText,   ColumnType::kText,   ColumnType::kNumeric};
            const bool jet4 = generation_ == Generation::kJet4;
            const ColumnType type = kTypes[Below(std::size(kTypes) - (jet4 ? 0 : 1))];
            jet::Column column = ColumnOf("C" + std::to_string(i), type);
            if (type == ColumnType::kText)
                column = TextColumn(column.name, 70, generation_, Below(2) == 0);
            if (type == ColumnType::kBinary)
                column.length = 60;
            column.scale = type == ColumnType::kNumeric ? 4 : 0;
            jet::AddColumn(format, table, column);
        }
        return table;
    }

    Variant Value(const jet::Column& column) {
        if (column.type == ColumnType::kBoolean)
            return Below(2) == 0;
        if (Below(4) == 0)
            return Null{};
        switch (column.type) {
            case ColumnType::kByte:
                return static_cast<std::uint8_t>(random_());
            case ColumnType::kInt16:
                return static_cast<std::int16_t>(random_());
            case ColumnType::kInt32:
                return static_cast<std::int32_t>(random_());
            case ColumnType::kCurrency:
                return runtime::Currency{static_cast<std::int64_t>(random_())};
            case ColumnType::kSingle:
                return static_cast<float>(Real());
            case ColumnType::kDouble:
                return Real();
            case ColumnType::kDate:
                return runtime::Date{Real()};
            case ColumnType::kGuid:
                return Guid();
            case ColumnType::kNumeric:
                return Numeric();
            case ColumnType::kText:
                return Text(column.Characters());
            default:
                return Bytes(column.length);
        }
    }

private:
    double Real() { return (static_cast<double>(Below(1U << 30)) - (1 << 29)) / 1024; }

    runtime::Guid Guid() {
        runtime::Guid guid;
        for (std::uint8_t& byte : guid.bytes)
            byte = static_cast<std::uint8_t>(random_());
        return guid;
    }

    runtime::Decimal Numeric() {
        runtime::Decimal number{.negative = Below(2) == 0, .scale = 4, .magnitude = {}};
        for (std::size_t i = 1; i < number.magnitude.size(); ++i)
            number.magnitude[i] = static_cast<std::uint32_t>(random_());
        return number;
    }

    std::string Text(std::size_t most) {
        constexpr const char* kCharacters[]{"a", "Z", " ", "\u00E9", "\u00FF", "'", "\u20AC"};
        const std::size_t kinds = Below(3) == 0 ? std::size(kCharacters) : std::size(kCharacters) - 1;
        std::string text;
        for (std::size_t i = Below(most + 1); i > 0; --i)
            text += kCharacters[Below(kinds)];
        return text;
    }

    runtime::Binary Bytes(std::size_t most) {
        runtime::Binary bytes(Below(most + 1));
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(random_()); });
        return bytes;
    }

    Generation generation_;
    std::mt19937_64 random_;
};

TEST_P(RowWriter, WritesRandomRowsThatReadAsTheyWere) {
    std::size_t longest = 0;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        RandomRows random(GetParam(), seed);
        table_ = random.Table();
        for (int i = 0; i < 10; ++i) {
            Values values;
            for (const jet::Column& column : table_.columns)
                values.push_back(random.Value(column));
            const ByteList row = Encode(values);
            longest = std::max(longest, row.size());
            ASSERT_EQ(ReadBack(row), values) << "seed " << seed << ", row " << i;
        }
    }
    EXPECT_GT(longest, 512U);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, RowWriter, kBothGenerations, GenerationName);

TEST(RowWriterOfJet4, RefusesTextThatWouldReadAsCompressed) {
    jet::TableDefinition table;
    const jet::Format& format = jet::FormatOf(Generation::kJet4);
    jet::AddColumn(format, table, TextColumn("A", 20, Generation::kJet4));
    EXPECT_EQ(ErrorOf([&] { jet::EncodeRow(format, table, {"\uFEFFabc"}); }), kNotAvailable);
    EXPECT_EQ(ErrorOf([&] { jet::EncodeRow(format, table, {"a\uFEFF"}); }), 0);
}

TEST(RowWriterOfJet4, RefusesANumericOfAnotherScale) {
    jet::TableDefinition table;
    const jet::Format& format = jet::FormatOf(Generation::kJet4);
    jet::Column column = ColumnOf("A", ColumnType::kNumeric);
    column.scale = 4;
    jet::AddColumn(format, table, column);
    const auto write = [&](std::uint8_t scale) {
        jet::EncodeRow(format, table, {runtime::Decimal{.negative = false, .scale = scale, .magnitude = {}}});
    };
    EXPECT_EQ(ErrorOf([&] { write(4); }), 0);
    EXPECT_EQ(ErrorOf([&] { write(3); }), kConversion);
}

}  // namespace

}  // namespace ledgix::test
