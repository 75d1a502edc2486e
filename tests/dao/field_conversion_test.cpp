#include "field_conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "conversions.h"
#include "date_time.h"
#include "error_of.h"
#include "table_definition.h"

namespace ledgix::dao {
namespace {

using jet::ColumnType;
using runtime::ErrorNumber;
using runtime::Null;
using runtime::Variant;

jet::Column ColumnOf(ColumnType type) {
    jet::Column column;
    column.name = "c";
    column.type = type;
    return column;
}

jet::Column TextColumn(std::uint16_t characters, std::uint8_t character_size) {
    jet::Column column = ColumnOf(ColumnType::kText);
    column.length = static_cast<std::uint16_t>(characters * character_size);
    column.character_size = character_size;
    return column;
}

jet::Column NumericColumn(std::uint8_t precision, std::uint8_t scale) {
    jet::Column column = ColumnOf(ColumnType::kNumeric);
    column.precision = precision;
    column.scale = scale;
    return column;
}

Variant Stored(const Variant& value, ColumnType type) {
    return ConvertToColumn(value, ColumnOf(type));
}

Variant Words(const char* text) {
    return std::string(text);
}

constexpr auto kNan = std::numeric_limits<double>::quiet_NaN();
constexpr auto kInfinity = std::numeric_limits<double>::infinity();
constexpr ErrorNumber kConversion = ErrorNumber::kTypeConversion;

TEST(FieldConversion, ValuesOfTheColumnsTypeStayAsTheyAre) {
    const runtime::Guid guid{{1, 2, 3}};
    EXPECT_EQ(Stored(true, ColumnType::kBoolean), Variant(true));
    EXPECT_EQ(Stored(std::uint8_t{255}, ColumnType::kByte), Variant(std::uint8_t{255}));
    EXPECT_EQ(Stored(std::int16_t{-3}, ColumnType::kInt16), Variant(std::int16_t{-3}));
    EXPECT_EQ(Stored(2147483647, ColumnType::kInt32), Variant(2147483647));
    EXPECT_EQ(Stored(runtime::Currency{INT64_MAX}, ColumnType::kCurrency), Variant(runtime::Currency{INT64_MAX}));
    EXPECT_EQ(Stored(6.7F, ColumnType::kSingle), Variant(6.7F));
    EXPECT_EQ(Stored(0.1, ColumnType::kDouble), Variant(0.1));
    EXPECT_EQ(Stored(runtime::Date{45000.5}, ColumnType::kDate), Variant(runtime::Date{45000.5}));
    EXPECT_EQ(Stored(guid, ColumnType::kGuid), Variant(guid));
    EXPECT_EQ(Stored(runtime::Binary{1, 2}, ColumnType::kOle), Variant(runtime::Binary{1, 2}));
}

TEST(FieldConversion, NullStaysNull) {
    for (const ColumnType type : {ColumnType::kInt32, ColumnType::kText, ColumnType::kDate, ColumnType::kNumeric,
                                  ColumnType::kMemo, ColumnType::kOle, ColumnType::kGuid})
        EXPECT_EQ(Stored(Null{}, type), Variant(Null{}));
}

TEST(FieldConversion, ABooleanHasNoNull) {
    EXPECT_EQ(Stored(Null{}, ColumnType::kBoolean), Variant(false));
}

TEST(FieldConversion, NumbersOtherThanZeroAreTrue) {
    EXPECT_EQ(Stored(0, ColumnType::kBoolean), Variant(false));
    EXPECT_EQ(Stored(2, ColumnType::kBoolean), Variant(true));
    EXPECT_EQ(Stored(-0.5, ColumnType::kBoolean), Variant(true));
    EXPECT_EQ(Stored(Words("-1"), ColumnType::kBoolean), Variant(true));
    EXPECT_EQ(Stored(Words("false"), ColumnType::kBoolean), Variant(false));
    EXPECT_ERROR(Stored(Words("maybe"), ColumnType::kBoolean), kConversion);
    EXPECT_ERROR(Stored(kNan, ColumnType::kBoolean), kConversion);
}

TEST(FieldConversion, WholeNumbersTakeHalvesToTheEvenNeighbour) {
    EXPECT_EQ(Stored(2.5, ColumnType::kInt32), Variant(2));
    EXPECT_EQ(Stored(3.5, ColumnType::kInt32), Variant(4));
    EXPECT_EQ(Stored(-0.5, ColumnType::kInt16), Variant(std::int16_t{0}));
    EXPECT_EQ(Stored(Words("2.5"), ColumnType::kByte), Variant(std::uint8_t{2}));
    EXPECT_EQ(Stored(runtime::Currency{15000}, ColumnType::kInt32), Variant(2));
    EXPECT_EQ(Stored(true, ColumnType::kInt16), Variant(std::int16_t{-1}));
}

TEST(FieldConversion, WholeNumbersBeyondTheirTypeAreRefused) {
    EXPECT_EQ(Stored(32767.4, ColumnType::kInt16), Variant(std::int16_t{32767}));
    EXPECT_ERROR(Stored(32767.5, ColumnType::kInt16), kConversion);
    EXPECT_ERROR(Stored(2147483648.0, ColumnType::kInt32), kConversion);
    EXPECT_ERROR(Stored(256, ColumnType::kByte), kConversion);
    EXPECT_ERROR(Stored(-1, ColumnType::kByte), kConversion);
    EXPECT_ERROR(Stored(Words("1e999"), ColumnType::kInt32), kConversion);
}

TEST(FieldConversion, TextBecomesANumberWhenItIsOne) {
    EXPECT_EQ(Stored(Words(" 1,250.5 "), ColumnType::kDouble), Variant(1250.5));
    EXPECT_ERROR(Stored(Words("12 percent"), ColumnType::kDouble), kConversion);
    EXPECT_ERROR(Stored(Words(""), ColumnType::kInt32), kConversion);
}

TEST(FieldConversion, WhatIsNoFiniteNumberIsRefused) {
    for (const double value : {kNan, kInfinity, -kInfinity})
        for (const ColumnType type : {ColumnType::kDouble, ColumnType::kSingle, ColumnType::kInt32, ColumnType::kDate,
                                      ColumnType::kCurrency, ColumnType::kText})
            EXPECT_ERROR(Stored(value, type), kConversion);
    EXPECT_ERROR(ConvertToColumn(kNan, NumericColumn(18, 2)), kConversion);
}

TEST(FieldConversion, ASingleIsTheNearestOne) {
    EXPECT_EQ(Stored(6.7, ColumnType::kSingle), Variant(6.7F));
    EXPECT_ERROR(Stored(1e39, ColumnType::kSingle), kConversion);
}

TEST(FieldConversion, AmountsAreExact) {
    EXPECT_EQ(Stored(19.95, ColumnType::kCurrency), Variant(runtime::Currency{199500}));
    EXPECT_EQ(Stored(Words("922337203685477.5807"), ColumnType::kCurrency), Variant(runtime::Currency{INT64_MAX}));
    EXPECT_EQ(Stored(1e-7, ColumnType::kCurrency), Variant(runtime::Currency{0}));
    EXPECT_ERROR(Stored(1e15, ColumnType::kCurrency), kConversion);
}

TEST(FieldConversion, DecimalsTakeTheScaleOfTheColumn) {
    const Variant stored = ConvertToColumn(1.005, NumericColumn(18, 2));
    EXPECT_EQ(std::get<runtime::Decimal>(stored).scale, 2);
    EXPECT_EQ(runtime::ToText(stored), "1");
    EXPECT_EQ(runtime::ToText(ConvertToColumn(Words("-12.345"), NumericColumn(18, 2))), "-12.34");
    EXPECT_EQ(runtime::ToText(ConvertToColumn(stored, NumericColumn(18, 4))), "1");
    EXPECT_ERROR(ConvertToColumn(1000, NumericColumn(4, 2)), kConversion);
    EXPECT_ERROR(ConvertToColumn(Words("x"), NumericColumn(4, 2)), kConversion);
}

TEST(FieldConversion, NumbersAndTextBecomeDates) {
    EXPECT_EQ(Stored(2, ColumnType::kDate), Variant(runtime::Date{2}));
    EXPECT_EQ(Stored(Words("2/14/2026 8:15:30 PM"), ColumnType::kDate),
              Variant(runtime::ToDate(runtime::CivilTime{2026, 2, 14, 20, 15, 30})));
    EXPECT_EQ(Stored(Words("2026-02-14"), ColumnType::kDate),
              Variant(runtime::ToDate(runtime::CivilTime{2026, 2, 14})));
    EXPECT_ERROR(Stored(Words("2/30/2026"), ColumnType::kDate), kConversion);
}

TEST(FieldConversion, DatesAreOfTheYears100To9999) {
    EXPECT_NO_THROW(Stored(-657434.0, ColumnType::kDate));
    EXPECT_NO_THROW(Stored(-657434.75, ColumnType::kDate));
    EXPECT_NO_THROW(Stored(2958465.99999, ColumnType::kDate));
    EXPECT_ERROR(Stored(-657435.0, ColumnType::kDate), kConversion);
    EXPECT_ERROR(Stored(2958466.0, ColumnType::kDate), kConversion);
    EXPECT_ERROR(Stored(runtime::Date{1e9}, ColumnType::kDate), kConversion);
}

TEST(FieldConversion, AnythingBecomesText) {
    EXPECT_EQ(Stored(1250.5, ColumnType::kMemo), Words("1250.5"));
    EXPECT_EQ(Stored(-7, ColumnType::kMemo), Words("-7"));
    EXPECT_EQ(Stored(true, ColumnType::kMemo), Words("True"));
    EXPECT_EQ(Stored(runtime::ToDate(runtime::CivilTime{2026, 2, 14, 20, 15, 30}), ColumnType::kMemo),
              Words("2/14/2026 8:15:30 PM"));
}

TEST(FieldConversion, TextMayBeEmpty) {
    EXPECT_EQ(ConvertToColumn(Words(""), TextColumn(50, 2)), Words(""));
}

TEST(FieldConversion, TextLongerThanTheColumnIs3163) {
    EXPECT_NO_THROW(ConvertToColumn(std::string(50, 'x'), TextColumn(50, 2)));
    EXPECT_ERROR(ConvertToColumn(std::string(51, 'x'), TextColumn(50, 2)), ErrorNumber::kFieldTooSmall);
    EXPECT_ERROR(ConvertToColumn(123456, TextColumn(5, 2)), ErrorNumber::kFieldTooSmall);
    EXPECT_NO_THROW(Stored(std::string(100000, 'x'), ColumnType::kMemo));
}

TEST(FieldConversion, TheLengthCountsCharactersNotBytes) {
    EXPECT_NO_THROW(ConvertToColumn(Words("ééééé"), TextColumn(5, 2)));
    EXPECT_NO_THROW(ConvertToColumn(Words("ééééé"), TextColumn(5, 1)));
    EXPECT_ERROR(ConvertToColumn(Words("éééééé"), TextColumn(5, 1)), ErrorNumber::kFieldTooSmall);
}

TEST(FieldConversion, CharactersOutsideTheBasicPlaneCountTwiceInJet4) {
    EXPECT_NO_THROW(ConvertToColumn(Words("\U0001F3E0"), TextColumn(2, 2)));
    EXPECT_ERROR(ConvertToColumn(Words("\U0001F3E0"), TextColumn(1, 2)), ErrorNumber::kFieldTooSmall);
}

TEST(FieldConversion, BytesStayBytes) {
    jet::Column column = ColumnOf(ColumnType::kBinary);
    column.length = 2;
    EXPECT_EQ(ConvertToColumn(runtime::Binary{1, 2}, column), Variant(runtime::Binary{1, 2}));
    EXPECT_ERROR(ConvertToColumn(runtime::Binary{1, 2, 3}, column), ErrorNumber::kFieldTooSmall);
    EXPECT_ERROR(ConvertToColumn(Words("ab"), column), kConversion);
    EXPECT_ERROR(Stored(1, ColumnType::kOle), kConversion);
    EXPECT_ERROR(Stored(runtime::Binary{1}, ColumnType::kInt32), kConversion);
}

TEST(FieldConversion, AGuidMayBeWritten) {
    const char* text = "{12345678-9ABC-DEF0-0123-456789ABCDEF}";
    EXPECT_EQ(runtime::ToText(Stored(Words(text), ColumnType::kGuid)), text);
    EXPECT_EQ(runtime::ToText(Stored(Words("12345678-9abc-def0-0123-456789abcdef"), ColumnType::kGuid)), text);
    EXPECT_ERROR(Stored(Words("{12345678-9ABC-DEF0-0123-456789ABCDEG}"), ColumnType::kGuid), kConversion);
    EXPECT_ERROR(Stored(Words("{12345678+9ABC-DEF0-0123-456789ABCDEF}"), ColumnType::kGuid), kConversion);
    EXPECT_ERROR(Stored(Words(""), ColumnType::kGuid), kConversion);
    EXPECT_ERROR(Stored(Words("{"), ColumnType::kGuid), kConversion);
    EXPECT_ERROR(Stored(5, ColumnType::kGuid), kConversion);
}

}  // namespace
}  // namespace ledgix::dao
