#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// The six condition families.
enum class Family { Cloud, Rain, Wind, Day, Humidity, Pressure };

// Classify the family's value into its condition and paint its indicator.
void UpdateCloudCondition(Nimbometer& nm);
void UpdateRainCondition(Nimbometer& nm);
void UpdateWindCondition(Nimbometer& nm);
void UpdateDayCondition(Nimbometer& nm);
void UpdateHumidityCondition(Nimbometer& nm);
void UpdatePressureCondition(Nimbometer& nm);

// The user's word for the family's present condition, "Unknown" below 1.
std::string ConditionDescription(const Nimbometer& nm, Family family);
// "Safe" for 1, "Unsafe" for 2, "Unknown" for anything else.
std::string SafeDescription(int safeFlag);
// Not a time, in spite of its name: a two-valued health signal that clients
// read as seconds. 1000 when no cycle has been read whole since Start, the
// link or a deciding sensor has failed past its limit, or the master's data
// are stale; 3 otherwise.
int SecondsSinceGoodData(const Nimbometer& nm);

}  // namespace nbx
