#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>

#include "amount_form.h"
#include "cls_property.h"

namespace ledgix::editors {

class frmProperty;

// A figure of a property, in the type that it is kept in.
using PropertyValue =
    std::variant<double model::clsProperty::*, float model::clsProperty::*, std::int16_t model::clsProperty::*>;

struct PropertyRow {
    AmountField field;
    controls::zqTextBox* frmProperty::*box;
    PropertyValue value;
};

struct PropertyFrame {
    const char* name;
    const char* caption;
    std::span<const PropertyRow> rows;
    int column;
    bool with_interest_only = false;  // the check box follows the rows
};

inline constexpr int kPropertyColumns = 2;

// The frames of frmProperty in the order in which the property takes their figures. The purchase itself is in the
// first column, what it brings and costs in a year in the second.
std::span<const PropertyFrame> PropertyFrames();

// Fills the box from the property, and the property from the box. Error 6 for a term beyond 16 bits.
void ShowRow(const frmProperty& form, const PropertyRow& row, const model::clsProperty& property);
void TakeRow(const frmProperty& form, const PropertyRow& row, model::clsProperty& property);

}  // namespace ledgix::editors
