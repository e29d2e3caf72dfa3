#include "safety/safety_decision.h"

#include <cmath>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/status.h"
#include "core/stage_calls.h"
#include "safety/alarms.h"
#include "safety/conditions.h"
#include "safety/families.h"
#include "safety/relay.h"
#include "safety/scripts.h"

namespace nbx {
namespace {

constexpr std::int32_t TrendUnsafe = 1;
constexpr std::int32_t TrendSafe = 2;

void Log(Nimbometer& nm, const std::string& text) { LogToDebugRecord(nm, text); }

// Clouds: each of the three classes is asked, so that the delay sees the
// condition whichever boxes are ticked.
bool DetectedByClouds(Nimbometer& nm) {
  SiteState& s = nm.state;
  bool detected = false;
  for (Condition k = 3; k >= 1; --k) {
    const bool confirmed = CloudClassConfirmed(nm, s.NBX_CloudCondition, k);
    if (nm.config.CheckCloud[Slot(k - 1)] == 1 && confirmed) detected = true;
  }
  s.NBX_CloudSafe = detected ? 2 : 1;
  if (detected) Log(nm, "Detected unsafe by clouds");
  return detected;
}

// A family whose present class has its box ticked. Unknown has no box.
bool DetectedByClass(Nimbometer& nm, Family family, const char* logLine) {
  const Condition k = ConditionOf(nm.state, family);
  const bool detected = k >= 1 && k <= 3 && ChecksOf(nm.config, family)[Slot(k - 1)] == 1;
  SafeFlagOf(nm.state, family) = detected ? 2 : 1;
  if (detected) Log(nm, logLine);
  return detected;
}

// Only cloud, rain and day have the Unknown rule; an Unknown wind, humidity
// or pressure never counts against safety.
bool DetectedByUnknown(Nimbometer& nm, Family family, const char* logLine) {
  if (ConditionOf(nm.state, family) != 0) return false;
  SafeFlagOf(nm.state, family) = 0;
  if (nm.config.UnKnownUnsafe != 1) return false;
  Log(nm, logLine);
  return true;
}

bool RawVerdict(Nimbometer& nm) {
  bool detected = DetectedByClouds(nm);
  detected |= DetectedByClass(nm, Family::Rain, "Detected unsafe by rain");
  if (nm.state.IsWindPresent) detected |= DetectedByClass(nm, Family::Wind, "Detected unsafe by wind");
  detected |= DetectedByClass(nm, Family::Day, "Detected unsafe by light");
  detected |= DetectedByClass(nm, Family::Humidity, "Detected unsafe by Humidity");
  detected |= DetectedByClass(nm, Family::Pressure, "Detected unsafe by Pressure");
  detected |= DetectedByUnknown(nm, Family::Cloud, "Detected unsafe by unknown from IR sensor");
  detected |= DetectedByUnknown(nm, Family::Rain, "Detected unsafe by unknown from rain sensor");
  detected |= DetectedByUnknown(nm, Family::Day, "Detected unsafe by unknown from light sensor");
  return detected;
}

void ClearSafeDelay(Nimbometer& nm) {
  nm.display.SafeDelayMsg.Caption.clear();
  nm.state.SafeDelayWait = 0;
}

void Trend(SiteState& s, bool detected) { s.SafetyTrend = detected ? TrendUnsafe : TrendSafe; }

const char* SettingLine(bool unsafe) { return unsafe ? "Setting UNSAFE" : "Setting SAFE"; }

// Becoming unsafe is never delayed; becoming safe waits SafeDelayVal seconds
// of clear verdicts.
void ApplySafeDelay(Nimbometer& nm, bool detected) {
  SiteState& s = nm.state;
  const double delay = nm.config.SafeDelayVal;
  const double now = nm.NowSerial();
  bool& unsafe = s.Value_Unsafe;

  if (s.SafetyTrend == 0) {
    // Dated back by the delay, so that the first verdict takes effect at once.
    s.SafetyChangeTime = now - delay / 24.0 / 3600.0;
    ClearSafeDelay(nm);
    Trend(s, detected);
    unsafe = detected;
    Log(nm, detected ? "Just started, setting UNSAFE" : "Just started, setting SAFE");
    return;
  }
  if ((s.SafetyTrend == TrendUnsafe && !detected) || (s.SafetyTrend == TrendSafe && detected)) {
    s.SafetyChangeTime = now;
    Log(nm, "Safety condition changed");
  }
  if (delay <= 0 || detected) {
    ClearSafeDelay(nm);
    Trend(s, detected);
    if (unsafe != detected) Log(nm, SettingLine(detected));
    unsafe = detected;
    return;
  }
  const double elapsed = std::round(std::fabs(now - s.SafetyChangeTime) * 86400.0);
  if (elapsed < delay) {
    // Hold: still unsafe, whatever it was, while the clear spell is too short.
    s.SafeDelayWait = static_cast<std::int32_t>(RoundHalfEven(delay - elapsed));
    const std::string text = "SAFE condition delayed by " + std::to_string(s.SafeDelayWait) + " s";
    nm.display.SafeDelayMsg.Caption = text;
    Log(nm, text);
    Trend(s, detected);
    unsafe = true;
    return;
  }
  ClearSafeDelay(nm);
  Trend(s, detected);
  if (unsafe) Log(nm, "Setting SAFE after delay");
  unsafe = false;
}

// A change is a verdict that the indicator does not show yet; the first
// verdict after Start, on a grey indicator, is one.
void DetectSafetyChange(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.SafetyChanged = false;
  if (!s.CyclesWanted()) return;
  const Colour shown = nm.display.LEDUnsafe.FillColor;
  if ((s.Value_Unsafe && shown != colours::Red) || (!s.Value_Unsafe && shown != colours::Green))
    s.SafetyChanged = true;
}

void ActOnVerdict(Nimbometer& nm) {
  SiteState& s = nm.state;
  RelayStep(nm);
  if (s.Value_Unsafe) return ChooseSoundAlarm(nm);
  // The sound dialog's sample and the link alarm keep playing.
  if (!s.AlarmWindowON && !s.AlarmHeld) {
    AlarmStop(nm);
    s.ActiveAlarmCode.clear();
  }
}

}  // namespace

void EvaluateSafety(Nimbometer& nm) {
  SiteState& s = nm.state;
  // A client holds the verdict: it is only shown.
  if (s.LocalControl) return DispUnsafeStat(nm);
  const bool detected = RawVerdict(nm);
  ApplySafeDelay(nm, detected);
  if (s.Value_Unsafe) s.LastUnsafe = nm.NowSerial();
  DetectSafetyChange(nm);
  DispUnsafeStat(nm);
  if (s.CyclesWanted()) ActOnVerdict(nm);
  if (s.SafetyChanged) RunSafetyScript(nm, s.Value_Unsafe);
}

void ResetSafetyAtStart(Nimbometer& nm) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  d.SafeDelayMsg.Caption.clear();
  d.LblStatus.Caption.clear();
  d.LEDUnsafe.FillColor = colours::LampGrey;
  // Nothing is known of this run's sky until its first decision: the files
  // and clients see UNSAFE meanwhile, never the verdict of an earlier run.
  s.Value_Unsafe = true;
  s.SafetyTrend = 0;
  s.SafetyChangeTime = nm.NowSerial();
  s.CloudChangeTime = 0;
  s.LastCloudCondition = 2;
}

bool CloudClassConfirmed(Nimbometer& nm, Condition condition, Condition cls) {
  SiteState& s = nm.state;
  if (condition != cls) return false;
  const Condition previous = s.LastCloudCondition;
  const double now = nm.NowSerial();
  if (previous != condition) {
    s.LastCloudCondition = condition;
    s.CloudChangeTime = now;
  }
  // The delay holds only on the way up from Clear: a sky coming down from
  // Overcast stays unsafe without a pause.
  if (condition == 2 && previous != 3) {
    const double elapsed = (now - s.CloudChangeTime) * 86400.0;
    const std::int32_t delay = NBX_CloudAlarmDelay(nm);
    if (elapsed >= delay) return true;
    Log(nm, "Clouds detected but delayed as configured");
    if (delay > 0)
      SetStatusMain(nm.display, "Cloud Alarm Delay " + std::to_string(delay) + "s", colours::Red);
    return false;
  }
  // Cloudy reached from Overcast, or Overcast left: the following Cloudy
  // cycles pass at once as well.
  if (condition == 2 || previous == 3) s.CloudChangeTime = 0;
  return true;
}

std::int32_t NBX_CloudAlarmDelay(const Nimbometer& nm) {
  return static_cast<std::int32_t>(RoundHalfEven(nm.config.CloudAlarmDelay));
}

// A station whose port never opened still decides (UNSAFE, by unknown), and
// shows it.
void DispUnsafeStat(Nimbometer& nm) {
  if (!nm.state.CyclesWanted()) return;
  Display& d = nm.display;
  const bool unsafe = nm.state.Value_Unsafe;
  d.LblStatus.Caption = unsafe ? "Unsafe" : "Safe";
  d.LEDUnsafe.FillColor = unsafe ? colours::Red : colours::Green;
}

void HasControl(Nimbometer& nm, bool flag, const std::string& text) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  s.LocalControl = flag;
  d.ControlOwner.Caption = text;
  if (flag) {
    d.SafeDelayMsg.Caption.clear();
    AlarmStop(nm);
    s.ActiveAlarmCode.clear();
  }
  // The client's text shows where the alarm options were.
  d.Frame3.Visible = !flag;
}

bool VerdictGiven(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  return s.CyclesWanted() && (s.SafetyTrend != 0 || s.LocalControl);
}

bool ReportsSafe(const Nimbometer& nm) { return VerdictGiven(nm) && !nm.state.Value_Unsafe; }

void ClearVerdictShown(Nimbometer& nm) {
  nm.display.LEDUnsafe.FillColor = colours::LampGrey;
  nm.display.LblStatus.Caption.clear();
}

}  // namespace nbx
