#pragma once

namespace ledgix::runtime {

// x times 10^places, halves to the even neighbour, divided by 10^places again. The multiplication is done in double
// first, so 2.675 to 2 places is 2.68. Never gives a negative zero.
double Round(double x, int places);

// numerator / denominator. Errors: 11 when the denominator is 0, 6 when the result is beyond a double.
double Divide(double numerator, double denominator);

// x itself. Error 6 when a calculation has left the range of a double.
double CheckOverflow(double x);

}  // namespace ledgix::runtime
