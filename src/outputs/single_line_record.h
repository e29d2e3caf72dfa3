#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// The fixed record that observatory software polls and reads by offset:
// 104 characters, one byte each, no line end. Numbers stand right-aligned
// with one blank behind them and carry a decimal point, but for the day
// number at offset 80, which carries the machine's separator.
inline constexpr std::size_t SingleLineRecordSize = 104;
inline constexpr std::size_t ExtendedRecordSize = 111;

std::string SingleLineRecord(const Nimbometer& nm);
// The 104 characters and 7 more: the sky quality, or " -99.99" without that sensor.
std::string SingleLineRecordExtended(const Nimbometer& nm, const std::string& record);
// The record of the "CS-" file: the fields at offsets 11, 27, 34, 41, 48, 59
// and 80 with a decimal comma.
std::string CommaRecord(const std::string& record);
// "NBX_SLD.dat" -> "NBX_SLDs.dat"; a name without a dot gets "s" at its end.
std::string ExtendedFileName(const std::string& name);

}  // namespace nbx
