#pragma once

#include <string>

#include "safety/conditions.h"

namespace nbx {
struct Nimbometer;

// The one path by which the window and the automation object change the
// configuration in use. Each setter is the change handling of its control:
// validation with the user's message, self-correction, the values linked to
// it and what the display shows of it. So a client's write and a user's edit
// have the same effect. Further controls get a setter here as they need one.
class ConfigEditor {
 public:
  explicit ConfigEditor(Nimbometer& nm) : nm_(nm) {}

  // --- Thresholds of the conditions
  // Limit `index` of a family. An edit that breaks the family's order shows
  // its message, returns false and leaves the stored limit as it was. The
  // third cloud and rain limits are copies of the Unknown thresholds and are
  // set through them.
  bool SetLimit(Family family, int index, double value);
  // The Unknown thresholds correct themselves instead of complaining: each
  // keeps its distance from the limit it must not cross.
  void SetUnknowCloudGT(double value);
  void SetUnknowRainLT(double value);
  void SetUnknownDayGT(double value);
  // Cycles before a reading, or a failing link, counts as Unknown; at least 1.
  void SetUnknownNoReading(double value);
  void SetUnknownRS232NoError(double value);

  // --- Which classes count as unsafe (1 ticked, 0 not)
  void SetCheck(Family family, int index, int value);

  // --- Sound alarms
  // An alarm can only be on with a sound: without one it falls back to 0.
  void SetAlarmState(Family family, int index, int value);
  // An empty sound turns the alarm off.
  void SetAlarmSound(Family family, int index, const std::string& file);
  // Turning the suspension on silences what sounds, the link alarm included.
  void SetSuspendSoundAlarm(int value);

 private:
  Nimbometer& nm_;
};

}  // namespace nbx
