#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "alpaca/ascom_answer.h"

namespace nbx {
struct Nimbometer;
}

namespace nbx::alpaca {

// What the station can vouch for at this moment: why not, or empty when a
// good reading stands behind its values.
std::string WhyNoGoodReading(const Nimbometer& nm);

// The verdict as an Alpaca SafetyMonitor gives it: safe only while the
// station runs, its link and deciding sensors live, its last good reading
// recent, and its verdict SAFE.
bool IsSafe(const Nimbometer& nm);

// The ObservingConditions members that read a sensor, in their URL spelling.
const std::vector<std::string_view>& ConditionMembers();

// A sensor's value in the unit ASCOM defines for it (degrees Celsius, m/s,
// hPa, %, mag/arcsec2, mm/h); empty for a name that is not a sensor member.
std::optional<NumberAnswer> ConditionValue(const Nimbometer& nm, std::string_view member);

// Seconds since the last good cycle; for `sensor` (a member name, any case,
// or empty for all) as ASCOM asks: not implemented for a sensor the box
// lacks, invalid for a name that is not a sensor.
NumberAnswer TimeSinceLastUpdate(const Nimbometer& nm, std::string_view sensor);
// The words for a sensor, or the same errors; `text` holds the answer.
NumberAnswer SensorDescription(const Nimbometer& nm, std::string_view sensor, std::string& text);

}  // namespace nbx::alpaca
