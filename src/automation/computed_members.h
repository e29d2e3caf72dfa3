#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/member_value.h"
#include "core/site_state.h"

namespace nbx {
struct Config;
struct Display;
struct Nimbometer;

// The sky for a client: 0 unknown when rain or cloud is unknown, the cloud
// condition when dry, and 4 when wet or raining, whatever the clouds.
Condition Condition_Sky(const SiteState& state);
// Wet or raining.
bool Condition_WetF(const SiteState& state);
// The safe delay's message, with the status lines behind it when the second
// one carries an error code.
std::string NBX_SafeDelayMsg(const Display& display);

// "7.00.000": major, minor as "00", revision as "000".
std::string VersionNumber();

// The letter of the speed unit selected: "K", "M", "m" or "k", " " when no
// option is set. The temperature letter likewise, "C" or "F".
std::string UnitSpeed(const Config& config);
std::string NBX_TemperatureUnits(const Config& config);
// Selects the unit of that letter through the change handling; any other
// text, a letter of the wrong case among them, changes nothing.
void LetUnitSpeed(Nimbometer& nm, std::string_view letter);
void LetTemperatureUnits(Nimbometer& nm, std::string_view letter);

// The graphs that clients reach by number: 1 cloud, 2 rain, 3 brightness,
// 4 temperature. The index of the oldest (first) or newest (last) point; 0
// for any other number.
std::int32_t NBX_GraphArrayFirstElem(const SiteState& state, std::int32_t graphNo);
std::int32_t NBX_GraphArrayLastElem(const SiteState& state, std::int32_t graphNo);
// A copy of a history ring in the clients' layout.
HistoryArray HistoryCopy(const GraphRing& ring);

}  // namespace nbx
