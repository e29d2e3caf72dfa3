#pragma once

#include <string>

#include "core/config.h"
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

  // --- Class words and colours of a family's swatches; the check boxes of
  // the "Unsafe" tab carry the same words
  void SetSwatchColour(Family family, int index, Colour colour);
  void SetDescription(Family family, int index, const std::string& caption);

  // --- Units (config_editor_units.cpp): option 0..3 of UnitsSpeed (km/h,
  // mph, m/s, knot) or 0..1 of UnitsTemp (C, F). Choosing another unit
  // converts what is held in the old one; choosing the present one does
  // nothing.
  void SetUnitsSpeed(int option);
  void SetUnitsTemp(int option);

  // --- Cycle, data file, delays and relay (config_editor_options.cpp)
  // Seconds between cycles, 10..60; a new value takes effect at the next Start.
  void SetRefreshPeriod(double seconds);
  void SetSaveFreq(double readings);
  void SetFileName(const std::string& name);
  void SetDataFolder(const std::string& folder);
  void SetLastReadOnly(int value);
  // The user data file's columns in their new order; a heading is cut to 25
  // characters, and a row whose field is not one of the 24 keeps its field.
  void SetFileColumns(const std::array<FileColumn, FileColumnCount>& columns);
  void SetSafeDelayVal(double seconds);
  void SetCloudAlarmDelay(double seconds);
  // The relay option: 0 the verdict drives the relay, 1 it does not.
  void SetSWRole(int option);

  // --- Sensors (config_editor_options.cpp)
  void SetCalcWindAvg(double readings);
  void SetCloudTempFactor(bool on);
  // Coefficient K1..K7 of the sky correction, as typed: no clamp.
  void SetCloudTempK(int k, double value);
  void SetHeatTemp(int index, double value);
  void SetHeatDelta(int index, double value);
  void SetHeatImpTemp(double value);
  void SetHeatImpDuration(double value);
  void SetHeatImpCycle(double value);

  // --- Graphs (config_editor_graphs.cpp)
  void SetGraphFreq(double readings);
  // A new number of points empties every graph.
  void SetGraphNoPoints(double points);
  void SetGraphGenerate(GraphKind kind, int value);
  void SetGraphImage(GraphKind kind, int value);
  // Colour `index` of a graph: 0 the axes, 1 the curve, 2 the temperature
  // graph's background.
  void SetGraphColour(GraphKind kind, int index, Colour colour);
  void SetGraphImagePath(const std::string& folder);
  void SetGraphTempMax(double value);
  void SetGraphTempMin(double value);

  // --- The window's remaining controls (config_editor_window.cpp)
  // The port as the user names it: "COMn" chooses the numbered port and
  // clears PortName; a device path goes to PortName. A blank entry changes nothing.
  void SetPortEntry(const std::string& entry);
  void SetPORTTimeout(double seconds);
  void SetCOMTimeout(double seconds);
  void SetAASL(double metres);
  void SetHeatMinValue(double percent);
  void SetHeatOffValue(double percent);
  void SetAmbTempOffset(double value);
  void SetIRTempOffset(double value);
  void SetDarkReference(double value);
  void SetWindAlarmDelay(double seconds);
  void SetCheckStartApp(int value);
  void SetCheckStartRecording(int value);
  // Option 0 "Master", 1 "Remote"; the role word follows.
  void SetNMRole(int option);
  void SetSWAnemoModel(int option);
  void SetDisableUnknownRain(int value);
  void SetDisableUnknownDay(int value);
  void SetUnKnownUnsafe(int value);
  void SetUnknowColour(Colour colour);
  void SetImageType(int value);
  void SetImageQuality(int option);
  void SetChkDebug(int value);
  void SetFileNameCCDAP4(const std::string& name);
  // The script of a verdict: its folder and its file name.
  void SetScript(bool unsafe, const std::string& folder, const std::string& file);
  // The shared folder of the transfer file, the master's or the remote's by role.
  void SetNetPath(const std::string& folder);
  void SetSingleLineFolder(const std::string& folder);
  // The ASCOM Alpaca server; the server takes them at the next start.
  void SetAlpacaEnabled(int value);
  // Only a numeric IPv4 address is taken: the server binds exactly that one.
  void SetAlpacaAddress(const std::string& address);
  void SetAlpacaPort(double port);
  void SetAlpacaDiscovery(int value);

 private:
  Nimbometer& nm_;
};

}  // namespace nbx
