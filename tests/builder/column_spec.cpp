#include "column_spec.h"

namespace ledgix::test {

using jet::ColumnType;

bool ColumnSpec::IsFixed() const {
    return !stored_variable &&
           (type == ColumnType::kBoolean || (jet::FixedSize(type) != 0 && type != ColumnType::kNumeric));
}

std::uint16_t ColumnSpec::Length(const jet::Format& format) const {
    if (type == ColumnType::kBoolean)
        return 1;
    const std::size_t size = jet::FixedSize(type);
    const std::size_t unit = type == ColumnType::kText ? format.character_size : 1;
    return static_cast<std::uint16_t>(size != 0 ? size : characters * unit);
}

}  // namespace ledgix::test
