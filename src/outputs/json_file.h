#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// The text of nbx_json.dat: the values of the cycle, temperatures in degrees
// Celsius and speeds in km/h whatever the display units, CR LF line ends.
// `extendedRecord` is the 111-character record, which travels in "slddata".
std::string JsonText(const Nimbometer& nm, const std::string& extendedRecord);

// "Safe" for 1, "Unsafe" for 2, "Unknown" for anything else.
std::string SafeWord(int flag);

}  // namespace nbx
