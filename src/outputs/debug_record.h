#pragma once

#include <string>
#include <vector>

namespace nbx {
struct Nimbometer;

// A number as the plain conversion of a Double to text gives it: up to 15
// significant digits, no trailing zeros, the exponent form only for very
// large or small values, the machine's decimal separator.
std::string PlainNumber(double value, char decimalSeparator);

// On a MASTER the recent raw values of an input, each followed by a blank,
// then " [", the current value, "]"; on a REMOTE, which has no raw values,
// only the bracket.
std::string BracketList(const Nimbometer& nm, const std::vector<double>& values, double current);

// The text of DebugData.txt: a snapshot of the last cycle, 27 lines or 26
// before the first reading, each ending in CR LF.
std::string DebugDataText(const Nimbometer& nm);

// Kept as an entry point of the automation object; it does nothing at all.
void SOSTraza(Nimbometer& nm);

}  // namespace nbx
