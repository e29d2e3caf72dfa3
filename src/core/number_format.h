#pragma once

#include <string>
#include <string_view>

namespace nbx {

// Formats a number by a pattern of the kind the window's labels and the data
// files use: "0", "0.0", "#0.00", "000", "000000.00000", "0%", "#", "000.0",
// and the same with literal text around them ("0 s", "0.000 s").
//
//   "0"  a digit that is always written; the count before the point is the
//        least number of integer digits ("000" writes 7 as "007").
//   "#"  a digit written only when it is significant: "#" writes 0 as "".
//   "."  the decimal point, written as `decimalSeparator`; the digits behind
//        it fix the decimals ("#" decimals drop trailing zeros).
//   "%"  multiplies by 100 and writes "%".
//
// Rounding is half away from zero on the value's 15 significant digits, so
// 2.5 gives "3" and 1.005 with "0.00" gives "1.01". A negative value that
// rounds to zero keeps its sign ("-0.0"), as the format engine of the data
// files' readers does. A value that is not finite, or whose percentage is
// not, gives the empty text.
std::string FormatNumber(double value, std::string_view pattern, char decimalSeparator = '.');

// Rounds to the nearest whole number, ties to the even one (2.5 -> 2, 3.5 -> 4).
double RoundHalfEven(double value);

}  // namespace nbx
