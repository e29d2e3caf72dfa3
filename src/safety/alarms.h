#pragma once

#include <string>

#include "safety/conditions.h"

namespace nbx {
struct Nimbometer;

// Plays a sound file; a name ending in "|repeat" plays over and over. Stops
// what played before. A file that cannot be opened plays nothing.
void AlarmStart(Nimbometer& nm, const std::string& file);
// Stops the alarm sound, its poll and hides the stop button.
void AlarmStop(Nimbometer& nm);
// The once-a-second poll of the sound: once it has ended, the poll stops and
// the stop button hides.
void TimerAlarmAjoTick(Nimbometer& nm);
// The choice of the sound on an unsafe verdict: the first class at fault, in
// the order cloud, rain, wind, day, whose alarm is on; a sound already
// playing for the same class is not restarted.
void ChooseSoundAlarm(Nimbometer& nm);
// The alarm entry `index` of a family shows its "on" or its "off" picture.
void SetAlarmIcons(Nimbometer& nm, Family family, int index, bool on);

}  // namespace nbx
