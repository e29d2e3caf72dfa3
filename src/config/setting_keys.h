#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "core/config.h"
#include "core/display.h"
#include "core/site_state.h"

namespace nbx {

// The key tables of the store that the load and the unload walk alike.

// A condition family: its limits (section Limit), the words and colours of
// its classes (sections Description and Color), its sound alarms (its own
// section), and which classes count as unsafe (section Switch).
struct FamilyKeys {
  // Keys of the three limits in section Limit; nullptr where a limit has no key.
  std::array<const char*, 3> limitKeys;
  // The third limit is written at unload and never read (rain's "Rain").
  bool thirdLimitWrittenOnly;
  // Keys of the three classes in Description, Color and the alarm section.
  std::array<const char*, 3> classKeys;
  const char* alarmSection;
  // The sound keys as the unload writes them. They differ from classKeys in
  // the humidity family only: its second sound is read from "RHNormal" and
  // written to "RHLight", so that it lasts one run.
  std::array<const char*, 3> soundKeysWritten;
  const char* switchPrefix;  // Switch keys are the prefix and the index 0..2

  std::array<double, 3> Config::*limits;
  std::array<Swatch, 3> Config::*swatches;
  std::array<AlarmEntry, 3> Config::*alarms;
  std::array<std::int32_t, 3> Config::*unsafeChecks;
  std::array<Label, 3> Display::*checkCaptions;  // nullptr: keeps its design caption
};

// The six families in the order cloud, rain, wind, brightness, humidity, pressure.
extern const std::array<FamilyKeys, 6> ConditionFamilies;

// The state key of an alarm: the class key and "Stat" ("ClearStat").
std::string StateKey(const char* classKey);

// A graph's keys in section Window: "Graph" + name (drawn), "Image" + name
// (exported), "GraphColor" + name + index (its colours).
struct GraphKeys {
  GraphKind kind;
  const char* name;
};
extern const std::array<GraphKeys, 7> Graphs;

// The colours of a graph: background, trace, and for the temperature graph
// the second trace.

// The nine electrical constants of the box, in their order, with their keys
// in section Electrical.
struct ElectricalKey {
  const char* key;
  double SiteState::*field;
};
extern const std::array<ElectricalKey, 9> ElectricalConstants;

// The three keys of a row of the user data file's column table: "Hdr",
// "Cal" or "Prt" and the row number formatted "00".
std::string FileColumnKey(const char* kind, int row);
inline constexpr std::size_t FileHeadingLength = 25;

// The letters of the units, by the index of their option button.
inline constexpr std::array<const char*, 4> SpeedUnitLetters{"K", "M", "m", "k"};
inline constexpr std::array<const char*, 2> TemperatureUnitLetters{"C", "F"};

}  // namespace nbx
