#include "safety/alarms.h"

#include <array>

#include "core/nimbometer.h"
#include "safety/families.h"
#include "safety/safety_decision.h"
#include "safety/sound_player.h"

namespace nbx {
namespace {

constexpr int AlarmPollMs = 1000;

// The families that sound at the safety step, with the letter of their codes
// ("C0" is the alarm of the first cloud class). Humidity and pressure alarms
// are kept and shown, but never sound here.
struct SoundingFamily {
  Family family;
  char letter;
};
constexpr std::array<SoundingFamily, 4> SoundingFamilies{
    {{Family::Cloud, 'C'}, {Family::Rain, 'R'}, {Family::Wind, 'W'}, {Family::Day, 'D'}}};

std::string AlarmCode(char letter, int index) { return {letter, static_cast<char>('0' + index)}; }

// The class index 0..2 of a code of the family letter, or -1.
int CodeIndex(const std::string& code, char letter) {
  if (code.size() != 2 || code[0] != letter || code[1] < '0' || code[1] > '2') return -1;
  return code[1] - '0';
}

bool AlarmOn(Nimbometer& nm, Family family, int index) {
  return AlarmsOf(nm.config, family)[Slot(index)].Value == 1;
}

// The sound playing for a class is no longer right: its alarm was turned off
// or the family left that class.
bool ActiveAlarmStale(Nimbometer& nm) {
  SiteState& s = nm.state;
  const std::string& active = s.ActiveAlarmCode;
  bool stale = false;
  if (const int k = CodeIndex(active, 'C'); k >= 0) {
    const bool confirmed = CloudClassConfirmed(nm, s.NBX_CloudCondition, k + 1);
    stale = !AlarmOn(nm, Family::Cloud, k) || !confirmed;
  }
  if (const int k = CodeIndex(active, 'R'); k >= 0)
    stale = stale || s.NBX_RainCondition != k + 1 || !AlarmOn(nm, Family::Rain, k);
  if (const int k = CodeIndex(active, 'W'); k >= 0 && s.IsWindPresent)
    stale = stale || s.NBX_WindCondition != k + 1 || !AlarmOn(nm, Family::Wind, k);
  // Day is tested on the code last chosen, not on the one sounding: an old
  // quirk that sites are used to, kept on purpose.
  if (const int k = CodeIndex(s.PendingAlarmCode, 'D'); k >= 0)
    stale = stale || s.NBX_DayCondition != k + 1 || !AlarmOn(nm, Family::Day, k);
  return stale;
}

void ChoosePendingAlarm(Nimbometer& nm) {
  SiteState& s = nm.state;
  for (const SoundingFamily& sounding : SoundingFamilies) {
    if (sounding.family == Family::Wind && !s.IsWindPresent) continue;
    const Condition condition = ConditionOf(s, sounding.family);
    for (int k = 0; k < 3; ++k) {
      if (condition != k + 1 || !AlarmOn(nm, sounding.family, k)) continue;
      if (ChecksOf(nm.config, sounding.family)[Slot(k)] != 1) continue;
      s.PendingAlarmCode = AlarmCode(sounding.letter, k);
      s.PendingAlarmFile = AlarmsOf(nm.config, sounding.family)[Slot(k)].Tag;
      return;
    }
  }
}

}  // namespace

void AlarmStart(Nimbometer& nm, const std::string& file) {
  std::string path = file;
  bool repeat = false;
  if (const std::size_t bar = path.find('|'); bar != std::string::npos) {
    path.resize(bar);
    repeat = true;
  }
  AlarmStop(nm);
  if (nm.io.sound == nullptr || !nm.io.sound->Play(path, repeat)) return;
  nm.io.timers->Arm(TimerId::AlarmAjo, AlarmPollMs);
  nm.display.ButtStopAlarm.Visible = true;
}

void AlarmStop(Nimbometer& nm) {
  if (nm.io.sound != nullptr) nm.io.sound->Stop();
  nm.io.timers->Disarm(TimerId::AlarmAjo);
  nm.display.ButtStopAlarm.Visible = false;
}

void TimerAlarmAjoTick(Nimbometer& nm) {
  if (nm.io.sound != nullptr && nm.io.sound->IsPlaying()) return;
  nm.io.timers->Disarm(TimerId::AlarmAjo);
  nm.display.ButtStopAlarm.Visible = false;
}

void ChooseSoundAlarm(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.PendingAlarmFile.clear();
  if (ActiveAlarmStale(nm)) s.ActiveAlarmCode.clear();
  ChoosePendingAlarm(nm);
  if (!s.PendingAlarmFile.empty() && s.PendingAlarmCode != s.ActiveAlarmCode &&
      nm.config.SuspendSoundAlarm == 0 && !s.AlarmWindowON) {
    AlarmStart(nm, s.PendingAlarmFile);
    s.ActiveAlarmCode = s.PendingAlarmCode;
  } else if (s.ActiveAlarmCode.empty() && !s.AlarmWindowON && !s.AlarmHeld) {
    AlarmStop(nm);
  }
}

void SetAlarmIcons(Nimbometer& nm, Family family, int index, bool on) {
  if (index < 0 || index > 2) return;
  UnsafeBlockOf(nm.display, family).AlarmIconOn[Slot(index)] = on;
}

}  // namespace nbx
