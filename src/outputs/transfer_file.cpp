#include "outputs/transfer_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/status.h"
#include "core/text.h"
#include "core/units.h"
#include "outputs/data_outputs.h"
#include "outputs/file_writes.h"
#include "outputs/output_codes.h"
#include "outputs/transfer_layout.h"
#include "safety/alarms.h"
#include "safety/relay.h"
#include "sensors/raw_conversions.h"

namespace nbx {
namespace {

constexpr int kOpenRetries = 15;
constexpr int kRetryPauseMs = 200;
constexpr int kStatusPauseMs = 500;
constexpr int kStillReadsOfAGoneMaster = 10;
constexpr double kStillSecondsOfAGoneMaster = 300;

// A field of a damaged record that is not a number leaves the value as it was.
void Assign(double& field, double value) {
  if (std::isfinite(value)) field = value;
}

std::int16_t Flag(bool value) { return value ? -1 : 0; }

// A whole number of the 32-bit range; what lies beyond it is held at its end.
std::int32_t ToLong(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<std::int32_t>(std::clamp(RoundHalfEven(value), -2147483648.0, 2147483647.0));
}

std::int32_t UnknownAtOnce(const Config& c) { return ToLong(c.UnknownRS232NoError + c.UnknownNoReading); }

// The communication alarm: once, while the box is checked, sounds are not
// suspended, the sound dialog is not open and no automation client holds the
// verdict (it drives the sounds itself). It is held against the safety step,
// which would otherwise stop it at the next safe verdict.
void StartCommAlarm(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  if (c.AlarmCom.Value == 1 && c.SuspendSoundAlarm == 0 && !s.RemoteCommAlarmOn && !s.AlarmWindowON &&
      !s.LocalControl) {
    AlarmStart(nm, c.AlarmCom.Tag);
    s.RemoteCommAlarmOn = true;
    s.AlarmHeld = true;
  }
}

void StopCommAlarm(Nimbometer& nm) {
  AlarmStop(nm);
  nm.state.RemoteCommAlarmOn = false;
  nm.state.AlarmHeld = false;
}

// The dates the file's date type holds: the years 100 to 9999.
bool IsSerialDate(double value) {
  static const double first = ToSerialDate({100, 1, 1, 0, 0, 0, 0});
  static const double last = ToSerialDate({9999, 12, 31, 23, 59, 59, 0});
  return std::isfinite(value) && value >= first && value <= last;
}

TransferRead ReadRecordFile(Nimbometer& nm, TransferRecord& record) {
  const SiteState& s = nm.state;
  const std::string path = TransferFilePath(nm);
  const std::string found = FileExists(path) ? std::filesystem::path(path).filename().string() : "";
  if (ToUpperAscii(found) != ToUpperAscii(nm.config.NetFileName)) return TransferRead::Failed;

  // A file that cannot be opened now may be one the master is writing: a few
  // short pauses, not a failure.
  std::optional<std::string> bytes = ReadStart(path, TransferRecordSize);
  for (int retries = 0; !bytes && retries < kOpenRetries && s.IsRunning; ++retries) {
    nm.io.host->WaitFor([&] { return !s.IsRunning; }, kRetryPauseMs);
    if (!s.IsRunning) return TransferRead::Stopped;
    bytes = ReadStart(path, TransferRecordSize);
  }
  if (!bytes) return TransferRead::Failed;
  // A short file is a failed read; a longer one is read for its first record.
  std::optional<TransferRecord> decoded = DecodeTransferRecord(*bytes);
  if (!decoded) return TransferRead::Failed;
  // Without the date of its reading a record cannot be judged by its age,
  // nor seen to stand still: it is as damaged as a short one.
  if (!IsSerialDate(decoded->LastReading)) return TransferRead::Failed;
  record = *decoded;
  return TransferRead::Read;
}

// The master's values in the remote's units; the signs of a missing reading
// (Temp 100, CloudRaw 99, Rain and Wind -1) and a master gone still give the
// values that drive the conditions to Unknown.
void TakeValues(Nimbometer& nm, const TransferRecord& r) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  Display& d = nm.display;
  const auto temperature = [&](double v) { return ConvertTemperature(r.TempUnit, c.UnitTempStr, v); };
  const auto speed = [&](double v) { return ConvertSpeed(r.SpeedUnit, c.UnitSpeedStr, v); };

  if (!s.LastReading) {
    s.LastReading = r.LastReading;
    s.SameReadingCount = 0;
  }
  if (r.LastReading == *s.LastReading) {
    s.SameReadingCount++;
  } else {
    s.LastReading = r.LastReading;
    s.SameReadingCount = 0;
  }
  const bool stale = MasterIsGone(nm);

  if (r.Temp != 100 && !stale) {
    Assign(s.Value_Temp, temperature(r.Temp));
  } else {
    s.Value_Temp = 999;
  }
  if (r.CloudRaw == 99 || stale) {
    s.Value_Cloud = s.Value_CloudRaw = s.Value_CloudTemp = 99900;
    s.CloudUnknownCount = UnknownAtOnce(c);
  } else {
    Assign(s.Value_Cloud, temperature(r.Cloud));
    Assign(s.Value_CloudRaw, temperature(r.CloudRaw));
    Assign(s.Value_CloudTemp, temperature(r.CloudTemp));
  }
  Assign(s.Value_RainTemp, temperature(r.RainTemp));
  s.IsWindPresent = r.WindPresent != 0;
  d.WindNotAvailable.Visible = !s.IsWindPresent;

  if (r.Rain == -1 || stale) {
    s.Value_Rain = -10;
    s.RainUnknownCount = UnknownAtOnce(c);
  } else {
    Assign(s.Value_Rain, r.Rain);
  }
  Assign(s.Value_RainHeat, r.RainHeat);

  const double dayError = s.SQMPresent ? static_cast<double>(c.SkyQualityError) : 65536.0;
  if (r.Day != dayError && !stale) {
    Assign(s.Value_Day, r.Day);
  } else {
    s.Value_Day = 99999;
    s.DayUnknownCount = UnknownAtOnce(c);
  }

  s.Value_Switch = r.Switch == 1 ? 1 : 2;
  Assign(s.Value_Cycle, r.Cycle);
  // The dew point travels in the master's unit and is taken as it stands.
  Assign(s.Value_DewPointT, r.DewPoint);
  Assign(s.Value_HumidityRel, r.Humidity);
  // Settled by the first record of a run: -1 from a master without the sensor.
  if (s.HumidityPresent == -1) s.HumidityPresent = s.Value_HumidityRel > 0 ? 1 : 0;
  Assign(s.Value_RelPressure, r.RelPressure);
  if (s.PressurePresent == -1) s.PressurePresent = s.Value_RelPressure > 0 ? 1 : 0;

  d.BarTemperature[0].Caption =
      r.Temp == 100 ? " " : FormatNumber(s.Value_Temp, "0.0") + " " + TemperatureUnitLabel(c);

  if (r.Wind == -1 || stale) {
    s.Value_Wind = 9999;
    s.WindUnknownCount = UnknownAtOnce(c);
  } else {
    Assign(s.Value_Wind, speed(r.Wind));
  }
  Assign(s.Value_WindDir, r.WindDir);
  Assign(s.Value_Gust, speed(r.Gust));

  s.CycleLoaded = true;
  ShowSwitchState(nm, s.Value_Switch);
  d.LblHeating.Caption = r.HeatText;
  d.LblHeating.ForeColor = static_cast<Colour>(r.HeatColor);
}

}  // namespace

bool DropOldMasterValues(Nimbometer& nm) {
  SiteState& s = nm.state;
  StartCommAlarm(nm);
  if (CheckTransferAge(nm)) return false;
  const std::int32_t count = UnknownAtOnce(nm.config);
  s.CloudUnknownCount = s.RainUnknownCount = s.WindUnknownCount = s.DayUnknownCount = count;
  s.GraphCycleCount++;
  s.Value_Temp = s.Value_RainTemp = 999;
  s.Value_Cloud = s.Value_CloudRaw = s.Value_CloudTemp = 99900;
  s.Value_Rain = s.Value_RainHeat = 0;
  s.Value_Wind = 9999;
  s.Value_Day = 99999;
  s.LastReading = AddSeconds(nm.NowSerial(), -86400);
  s.SameReadingCount = 0;
  s.CycleLoaded = true;
  return true;
}

void ShowTransferReadFailed(Nimbometer& nm) {
  SetStatusMain(nm.display, "Error accessing MASTER data file", colours::Red);
  ShowOutputCode(nm, "r31");
  nm.state.CycleBusy = false;
  nm.state.XFERFileErr = true;
}

std::string TransferFilePath(const Nimbometer& nm) {
  const Config& c = nm.config;
  return JoinPath(nm.IsMaster() ? c.NetPathMaster : c.NetPathRemote, c.NetFileName);
}

TransferRecord BuildTransferRecord(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  TransferRecord r;
  r.Temp = s.Value_Temp;
  r.Cloud = s.Value_Cloud;
  r.CloudRaw = s.Value_CloudRaw;
  r.TempUnit = c.UnitTempStr;
  r.CloudTemp = s.Value_CloudTemp;
  r.Rain = s.Value_Rain;
  r.RainHeat = s.Value_RainHeat;
  r.RainTemp = s.Value_RainTemp;
  r.Day = s.Value_Day;
  r.Switch = s.Value_Switch;
  r.Cycle = s.Value_Cycle;
  r.DewPoint = s.HumidityPresent == 1 ? s.Value_DewPointT : -1.0;
  r.Humidity = s.HumidityPresent == 1 ? s.Value_HumidityRel : -1.0;
  r.RelPressure = s.PressurePresent == 1 ? s.Value_RelPressure : -1.0;
  r.Wind = s.Value_Wind;
  r.WindDir = s.Value_WindDir;
  r.Gust = s.Value_Gust;
  r.Reserved = 0;
  r.LastReading = s.LastReading.value_or(0);
  r.HeatText = nm.display.LblHeating.Caption;
  r.HeatColor = static_cast<std::int32_t>(nm.display.LblHeating.ForeColor);
  const std::array<const std::array<double, 3>*, 3> limits{&c.CloudLimit, &c.RainLimit, &c.DayLimit};
  const std::array<const std::array<Swatch, 3>*, 3> swatches{&c.ColorCloud, &c.ColorRain, &c.ColorDay};
  for (std::size_t family = 0; family < 3; ++family)
    for (std::size_t i = 0; i < 3; ++i)
      r.Bands[family * 3 + i] = {(*limits[family])[i],
                                 static_cast<std::int32_t>((*swatches[family])[i].BackColor),
                                 (*swatches[family])[i].Caption};
  r.HeatTemp0 = c.HeatTemp[0];
  r.HeatTemp1 = c.HeatTemp[1];
  r.HeatDelta0 = c.HeatDelta[0];
  r.HeatDelta1 = c.HeatDelta[1];
  r.HeatImpTemp = c.HeatImpTemp;
  r.HeatImpDuration = c.HeatImpDuration;
  r.HeatImpCycle = c.HeatImpCycle;
  r.HeatMinValue = c.HeatMinValue;
  r.CloudTempK1 = c.CloudTempK1;
  r.CloudTempK2 = c.CloudTempK2;
  r.CloudTempK3 = c.CloudTempK3;
  r.CloudTempK4 = c.CloudTempK4;
  r.CloudTempK5 = c.CloudTempK5;
  r.UnknowCloudGT = c.UnknowCloudGT;
  r.UnknowRainLT = c.UnknowRainLT;
  r.UnknownDayGT = c.UnknownDayGT;
  r.CloudTempK6 = c.CloudTempK6;
  r.CloudTempK7 = c.CloudTempK7;
  r.SpeedUnit = c.UnitSpeedStr;
  r.WindPresent = Flag(s.IsWindPresent);
  r.Version = 39;
  r.SkyQualityPresent = Flag(s.SQMPresent);
  return r;
}

void WriteTransferFile(Nimbometer& nm) {
  const std::string bytes = EncodeTransferRecord(BuildTransferRecord(nm));
  const std::string_view all = bytes;
  // In place, the head and the closing block as two writes; a reader that
  // catches a half-written record is healed by its next read.
  if (!WriteInPlace(TransferFilePath(nm),
                    {all.substr(0, TransferMainSize), all.substr(TransferMainSize)}))
    ShowOutputCode(nm, "w41");
}

TransferRead TakeTransferFile(Nimbometer& nm) {
  SiteState& s = nm.state;
  SetStatusMain(nm.display, "Remote mode - Reading data", colours::Navy);
  SetCycleLED(nm.display, colours::LampGrey);
  SetCycleLED(nm.display, colours::Blue);
  // Long enough for the status to be seen; the event loop runs meanwhile,
  // and a tick that comes now finds the cycle busy.
  nm.io.host->WaitFor([] { return false; }, kStatusPauseMs);

  TransferRecord record;
  const TransferRead outcome = ReadRecordFile(nm, record);
  if (outcome != TransferRead::Read) return outcome;
  s.TransferCopy = record;
  s.SQMPresent = record.SkyQualityPresent != 0;
  TakeValues(nm, record);
  return outcome;
}

bool MasterValuesFresh(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  bool result = true;
  if (!CheckTransferAge(nm)) {
    StartCommAlarm(nm);
    result = false;
  } else if (s.RemoteCommAlarmOn) {
    StopCommAlarm(nm);
  }
  if ((c.AlarmCom.Value != 1 || c.SuspendSoundAlarm != 0) && s.RemoteCommAlarmOn) StopCommAlarm(nm);
  return result;
}

bool CheckTransferAge(Nimbometer& nm) {
  SiteState& s = nm.state;
  const double limit = nm.config.COMTimeout;
  double seconds = limit + 1;
  if (!s.LastReading) {
    s.SameReadingCount = 0;
  } else if (const double since = (nm.NowSerial() - *s.LastReading) * 86400.0; std::isfinite(since)) {
    seconds = since;
  }
  const std::int32_t age = ToLong(seconds);
  // Either way: a master whose clock runs ahead is as wrong as one gone quiet.
  if (limit < std::abs(static_cast<double>(age))) {
    ShowOutputCode(nm, "w42");
    SetStatusMain(nm.display, "Reading is " + std::to_string(age) + " sec wrong", colours::Red);
    s.XFERFileErr = true;
    return false;
  }
  s.XFERFileErr = false;
  return true;
}

bool MasterIsGone(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  return s.LastReading && s.SameReadingCount >= kStillReadsOfAGoneMaster &&
         (nm.NowSerial() - *s.LastReading) * 86400.0 >= kStillSecondsOfAGoneMaster - 1e-6;
}

}  // namespace nbx
