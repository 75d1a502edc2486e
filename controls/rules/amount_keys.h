#pragma once

#include "amount_text.h"

namespace ledgix::controls {

// The character that a key stands for in a box's text: a digit of any script -> '0' to '9', the decimal separator, a
// point and the decimal key of the number pad -> '.', a minus sign of any kind -> '-'. 0 for every other key.
char AmountKey(char32_t key, bool number_pad, char decimal_separator);

// True when the key, as AmountKey gives it, is admitted to a text: digits always, a point when decimals are kept and
// the text has none yet, a minus when it is allowed and the text has none yet.
bool AdmitsKey(char key, std::string_view text, const AmountLimits& limits);

}  // namespace ledgix::controls
