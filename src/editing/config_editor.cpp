#include "editing/config_editor.h"

#include "core/nimbometer.h"
#include "safety/alarms.h"
#include "safety/families.h"
#include "safety/limit_order.h"
#include "safety/unsafe_checks.h"

namespace nbx {
namespace {

constexpr const char* MessageTitle = "NBX_Nimbometer";

bool ValidIndex(int index) { return index >= 0 && index <= 2; }

}  // namespace

bool ConfigEditor::SetLimit(Family family, int index, double value) {
  if (!ValidIndex(index)) return false;
  if (index == 2 && family == Family::Cloud) {
    SetUnknowCloudGT(value);
    return true;
  }
  if (index == 2 && family == Family::Rain) {
    SetUnknowRainLT(value);
    return true;
  }
  const std::string breach =
      LimitOrderBreach(nm_.config, family, index, value, nm_.io.host->DecimalSeparator());
  if (!breach.empty()) {
    nm_.io.host->ShowMessage(breach, ButtonsOk, MessageTitle);
    return false;
  }
  LimitsOf(nm_.config, family)[Slot(index)] = value;
  return true;
}

void ConfigEditor::SetUnknowCloudGT(double value) {
  Config& c = nm_.config;
  c.UnknowCloudGT = value;
  if (c.UnknowCloudGT <= c.CloudLimit[1]) c.UnknowCloudGT = c.CloudLimit[1] + 1.0;
  c.CloudLimit[2] = c.UnknowCloudGT;
}

void ConfigEditor::SetUnknowRainLT(double value) {
  Config& c = nm_.config;
  c.UnknowRainLT = value;
  if (c.UnknowRainLT >= c.RainLimit[1]) c.UnknowRainLT = c.RainLimit[1] - 1.0;
  c.RainLimit[2] = c.UnknowRainLT;
}

void ConfigEditor::SetUnknownDayGT(double value) {
  Config& c = nm_.config;
  c.UnknownDayGT = value;
  // A larger step than the others: brightness counts run in thousands.
  if (c.UnknownDayGT <= c.DayLimit[0]) c.UnknownDayGT = c.DayLimit[0] + 1000.0;
}

void ConfigEditor::SetUnknownNoReading(double value) {
  nm_.config.UnknownNoReading = value < 1.0 ? 1 : value;
}

void ConfigEditor::SetUnknownRS232NoError(double value) {
  nm_.config.UnknownRS232NoError = value < 1.0 ? 1 : value;
}

void ConfigEditor::SetCheck(Family family, int index, int value) {
  if (!ValidIndex(index)) return;
  ChecksOf(nm_.config, family)[Slot(index)] = value;
  ApplyCheckRule(nm_, family);
  SetCheckColours(nm_, family);
}

void ConfigEditor::SetAlarmState(Family family, int index, int value) {
  if (!ValidIndex(index)) return;
  AlarmEntry& entry = AlarmsOf(nm_.config, family)[Slot(index)];
  entry.Value = value;
  SetAlarmIcons(nm_, family, index, !entry.Tag.empty());
  if (entry.Tag.empty()) entry.Value = 0;
}

void ConfigEditor::SetAlarmSound(Family family, int index, const std::string& file) {
  if (!ValidIndex(index)) return;
  AlarmEntry& entry = AlarmsOf(nm_.config, family)[Slot(index)];
  entry.Tag = file;
  SetAlarmIcons(nm_, family, index, !entry.Tag.empty());
  if (entry.Tag.empty()) entry.Value = 0;
}

void ConfigEditor::SetSwatchColour(Family family, int index, Colour colour) {
  if (!ValidIndex(index)) return;
  SwatchesOf(nm_.config, family)[Slot(index)].BackColor = colour;
}

void ConfigEditor::SetDescription(Family family, int index, const std::string& caption) {
  if (!ValidIndex(index)) return;
  SwatchesOf(nm_.config, family)[Slot(index)].Caption = caption;
  CheckBoxesOf(nm_.display, family)[Slot(index)].Caption = caption;
}

void ConfigEditor::SetSuspendSoundAlarm(int value) {
  const bool turnedOn = value == 1 && nm_.config.SuspendSoundAlarm != 1;
  nm_.config.SuspendSoundAlarm = value;
  if (!turnedOn) return;
  AlarmStop(nm_);
  nm_.state.AlarmHeld = false;
  nm_.state.ActiveAlarmCode.clear();
}

}  // namespace nbx
