#include "long_value.h"

#include <string>

#include "byte_order.h"
#include "circle_guard.h"
#include "damage_error.h"
#include "jet_format.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kPointerAt = 4;

[[noreturn]] void RaiseShort(RowId place, std::size_t length) {
    RaiseDamage("the long value in " + Describe(place) + " ends before its " + std::to_string(length) + " bytes");
}

}  // namespace

LongValue ParseLongValue(Bytes field, RowId row) {
    if (field.empty())
        return {};
    if (field.size() < kLongValueHeader)
        RaiseDamage("a long value in " + Describe(row) + " is cut off");
    const std::uint32_t length_and_kind = LoadU32(field, 0);
    LongValue value;
    value.length = length_and_kind & kLongValueLength;
    switch (length_and_kind & kLongValueKind) {
        case kLongValueInside:
            if (value.length > field.size() - kLongValueHeader)
                RaiseDamage("a long value in " + Describe(row) + " is longer than its row");
            value.inside = field.subspan(kLongValueHeader, value.length);
            return value;
        case kLongValueOneRow:
            value.kind = LongValue::Kind::kOneRow;
            break;
        case kLongValueChain:
            value.kind = LongValue::Kind::kChain;
            break;
        default:
            RaiseDamage("a long value in " + Describe(row) + " is of an unknown kind");
    }
    value.place = LoadRowPointer(field, kPointerAt);
    return value;
}

Bytes LongValueReader::Read(const LongValue& value) {
    if (value.kind == LongValue::Kind::kInside)
        return value.inside;
    if (value.length == 0)
        return {};
    if (value.length > pager_.size())
        RaiseDamage("the long value in " + Describe(value.place) + " is longer than the file");
    return value.kind == LongValue::Kind::kOneRow ? ReadOneRow(value.place, value.length)
                                                  : ReadChain(value.place, value.length);
}

Bytes LongValueReader::ReadOneRow(RowId place, std::size_t length) {
    const Bytes row = ReadRow(pager_, place, kLongValueOwner, 0, "long value", page_);
    if (row.size() < length)
        RaiseShort(place, length);
    return row.first(length);
}

Bytes LongValueReader::ReadChain(RowId place, std::size_t length) {
    CircleGuard<RowId> guard;
    joined_.clear();
    for (RowId next = place; joined_.size() < length;) {
        if (next.page == 0)
            RaiseShort(place, length);
        if (guard.RunsInCircle(next))
            RaiseDamage("the long value in " + Describe(place) + " runs in a circle");
        const Bytes row = ReadRow(pager_, next, kLongValueOwner, 0, "long value", page_);
        if (row.size() <= kLongValuePointer)
            RaiseDamage("the piece of a long value in " + Describe(next) + " is empty");
        const Bytes piece = row.subspan(kLongValuePointer);
        joined_.insert(joined_.end(), piece.begin(), piece.end());
        next = LoadRowPointer(row, 0);
    }
    return Bytes(joined_).first(length);
}

}  // namespace ledgix::jet
