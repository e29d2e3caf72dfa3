#include <algorithm>

#include "config/electrical_settings.h"
#include "config/setting_access.h"
#include "config/setting_keys.h"
#include "config/settings_order.h"
#include "core/nimbometer.h"

namespace nbx {
namespace {

// A cycle queues four commands a pass and eight more, in a queue of 100.
constexpr std::int32_t MaxSamplePasses = (CommandQueueSize - 8) / 4;
constexpr std::int32_t SecondsInADay = 86400;

// A value that would stop the beat or exhaust the memory is unusable: the
// key's default takes its place.
template <typename T>
T Usable(T value, T low, T high, T defaultValue) {
  return value >= low && value <= high ? value : defaultValue;
}

// The defaults of a fresh installation, the one source of them.
struct Defaults {
  Config config;
  SiteState state;
  Display display;
};

// 1. The image library switch, the role, and the sample buffers.
void LoadImageUseRoleAndSampleBuffers(SettingsReader& r, Nimbometer& nm, const Defaults& d) {
  nm.config.FreeImageUse = r.PlainBoolean("FreeImage", "FreeImageUse", d.config.FreeImageUse);
  nm.state.DeviceMode = "MASTER";
  nm.state.Stats_Universe = Usable(r.LongFrom("Electrical", "Stats_Universe", d.state.Stats_Universe),
                                   1, MaxSamplePasses, d.state.Stats_Universe);
  nm.state.SizeSampleArrays();
}

// 3. The wind average and its buffer, the delays, offsets and the window's place.
void LoadWindAverageDelaysAndPlace(SettingsReader& r, Nimbometer& nm, const Config& d) {
  Config& c = nm.config;
  c.CalcWindAvg = r.Double("Window", "AvgWindCalc", d.CalcWindAvg);
  nm.state.WindSamples.assign(static_cast<std::size_t>(std::clamp(c.CalcWindAvg, 1.0, 30.0)), 0.0);
  c.SafeDelayVal = r.Double("Window", "SafeDelayVal", d.SafeDelayVal);
  c.AmbTempOffset = r.Double("Window", "AmbTempOffset", d.AmbTempOffset);
  c.IRTempOffset = r.Double("Window", "IRTempOffset", d.IRTempOffset);
  c.Left = r.LongOrNone("Window", "Left");
  c.Top = r.LongOrNone("Window", "Top");
  c.LastUpdateMsg = r.Text("Window", "LastUpdateMsg", d.LastUpdateMsg);
}

// The units: each option as the window's click takes it. The limits in the
// store are already in the stored unit, so only the unit letters follow.
void LoadUnits(SettingsReader& r, Config& c, const Config& d) {
  for (std::size_t i = 0; i < c.UnitsSpeed.size(); ++i)
    SetOption(c.UnitsSpeed, i,
              r.Boolean("Limit", "UnitsSpeed" + std::to_string(i), d.UnitsSpeed[i]));
  SetOption(c.UnitsTemp, 0, r.Boolean("Window", "UnitsTemp0", d.UnitsTemp[0]));
  SetOption(c.UnitsTemp, 1, r.Boolean("Window", "UnitsTemp", d.UnitsTemp[1]));
  c.UnitSpeedStr = d.UnitSpeedStr;
  for (std::size_t i = 0; i < c.UnitsSpeed.size(); ++i)
    if (c.UnitsSpeed[i]) c.UnitSpeedStr = SpeedUnitLetters[i];
  c.UnitTempStr = d.UnitTempStr;
  for (std::size_t i = 0; i < c.UnitsTemp.size(); ++i)
    if (c.UnitsTemp[i]) c.UnitTempStr = TemperatureUnitLetters[i];
}

// 4. Sky correction, units, the user data file, tabs and scroll bars, the
// unknown condition, and the running count of readings.
void LoadFactorsUnitsFileAndUnknown(SettingsReader& r, Nimbometer& nm, const Defaults& d) {
  Config& c = nm.config;
  const Config& dc = d.config;
  c.CloudTempFactor = r.Boolean("Window", "CloudTempFactor", dc.CloudTempFactor);
  LoadUnits(r, c, dc);
  c.CloudTempK1 = r.Double("Window", "CloudTempK1", dc.CloudTempK1);
  c.CloudTempK2 = r.Double("Window", "CloudTempK2", dc.CloudTempK2);
  c.CloudTempK3 = r.Double("Window", "CloudTempK3", dc.CloudTempK3);
  c.CloudTempK4 = r.Double("Window", "CloudTempK4", dc.CloudTempK4);
  c.CloudTempK5 = r.Double("Window", "CloudTempK5", dc.CloudTempK5);
  c.CloudTempK6 = r.Double("Window", "CloudTempK6", dc.CloudTempK6);
  c.CloudTempK7 = r.Double("Window", "CloudTempK7", dc.CloudTempK7);

  c.LblPathName = r.Path("Window", "PathName");
  c.FileName = r.Text("Window", "FileName", dc.FileName);
  c.LastReadOnly = r.Integer("Window", "LastReadOnly", dc.LastReadOnly);
  c.chkDebug = r.Integer("Window", "Debug", dc.chkDebug);
  c.SaveFreq = r.Long("Window", "FreqSave", dc.SaveFreq);

  c.SSTab1 = r.Integer("Window", "SSTAB1", dc.SSTab1);
  c.SSTab2 = r.Integer("Window", "SSTAB2", dc.SSTab2);
  c.SSTab3 = r.Integer("Window", "SSTAB3", dc.SSTab3);
  c.VScrollPos0 = r.Long("Window", "VScrollPos0", dc.VScrollPos0);
  c.VScrollPos3 = r.Long("Window", "VScrollPos3", dc.VScrollPos3);
  c.HScrollPos1 = r.Long("Window", "HScrollPos1", dc.HScrollPos1);

  c.SuspendSoundAlarm = r.Integer("Window", "SuspendSound", dc.SuspendSoundAlarm);
  c.UnknownNoReading = r.Long("Window", "UnknownNoReading", dc.UnknownNoReading);
  c.UnknownRS232NoError = r.Long("Window", "UnknownRS232Error", dc.UnknownRS232NoError);
  c.UnKnownUnsafe = r.Integer("Window", "UnknownUnsafe", dc.UnKnownUnsafe);
  c.LblUnknowColor = r.ColourValue("Window", "UnknownColor", dc.LblUnknowColor);
  // The label's caption is the count itself.
  nm.display.LblPECReading.Caption =
      r.Text("Window", "LblPECReading", d.display.LblPECReading.Caption);
}

// The unknown keys that belong to one family. The third cloud limit and the
// third rain limit have no key of their own: they follow the unknown values.
void LoadUnknownKeysOf(const FamilyKeys& f, SettingsReader& r, Config& c, const Config& d) {
  if (f.limits == &Config::CloudLimit) {
    c.UnknowCloudGT = r.Long("Window", "UnknownCloud", d.UnknowCloudGT);
    c.CloudLimit[2] = c.UnknowCloudGT;
  } else if (f.limits == &Config::RainLimit) {
    c.UnknowRainLT = r.Long("Window", "UnknownRain", d.UnknowRainLT);
    c.DisableUnknownRain = r.Integer("Window", "DisableUnknownRain", d.DisableUnknownRain);
    c.RainLimit[2] = c.UnknowRainLT;
  } else if (f.limits == &Config::DayLimit) {
    c.UnknownDayGT = r.Long("Window", "UnknownDay", d.UnknownDayGT);
    c.DisableUnknownDay = r.Integer("Window", "DisableUnknownDay", d.DisableUnknownDay);
  }
}

// 5. One condition family: limits, its unknown keys, words, colours, the
// check boxes' captions, sounds and alarm states. The window draws each
// alarm's icon from whether its sound is set.
void LoadConditionFamily(const FamilyKeys& f, SettingsReader& r, Nimbometer& nm,
                         const Defaults& d) {
  Config& c = nm.config;
  const Config& dc = d.config;
  for (std::size_t i = 0; i < 3; ++i) {
    const bool readable = f.limitKeys[i] && !(i == 2 && f.thirdLimitWrittenOnly);
    (c.*f.limits)[i] = readable ? r.Double("Limit", f.limitKeys[i], (dc.*f.limits)[i])
                                : (dc.*f.limits)[i];
  }
  LoadUnknownKeysOf(f, r, c, dc);
  for (std::size_t i = 0; i < 3; ++i)
    (c.*f.swatches)[i].Caption =
        r.Text("Description", f.classKeys[i], (dc.*f.swatches)[i].Caption);
  for (std::size_t i = 0; i < 3; ++i)
    (c.*f.swatches)[i].BackColor =
        r.ColourValue("Color", f.classKeys[i], (dc.*f.swatches)[i].BackColor);
  for (std::size_t i = 0; i < 3 && f.checkCaptions; ++i)
    (nm.display.*f.checkCaptions)[i].Caption = (c.*f.swatches)[i].Caption;
  for (std::size_t i = 0; i < 3; ++i)
    (c.*f.alarms)[i].Tag = r.Text(f.alarmSection, f.classKeys[i], (dc.*f.alarms)[i].Tag);
  for (std::size_t i = 0; i < 3; ++i)
    (c.*f.alarms)[i].Value =
        r.Integer(f.alarmSection, StateKey(f.classKeys[i]), (dc.*f.alarms)[i].Value);
}

void LoadUnsafeSwitches(SettingsReader& r, Config& c, const Config& d) {
  for (const FamilyKeys& f : ConditionFamilies)
    for (std::size_t i = 0; i < 3; ++i)
      (c.*f.unsafeChecks)[i] =
          r.Integer("Switch", f.switchPrefix + std::to_string(i), (d.*f.unsafeChecks)[i]);
}

void LoadFileColumns(SettingsReader& r, Config& c, const Config& d) {
  for (int row = 1; row <= FileColumnCount; ++row) {
    FileColumn& column = c.FileColumns[static_cast<std::size_t>(row - 1)];
    const FileColumn& fresh = d.FileColumns[static_cast<std::size_t>(row - 1)];
    column.Hdr = r.Text("File", FileColumnKey("Hdr", row), fresh.Hdr).substr(0, FileHeadingLength);
    column.Cal = r.Long("File", FileColumnKey("Cal", row), fresh.Cal);
    column.Prt = r.Boolean("File", FileColumnKey("Prt", row), fresh.Prt);
  }
}

void LoadLink(SettingsReader& r, Config& c, const Config& d) {
  c.RefreshPeriod = Usable(r.Long("Communication", "RefreshPeriod", d.RefreshPeriod), 1,
                           SecondsInADay, d.RefreshPeriod);
  c.AASL = r.Long("Window", "AASL", d.AASL);
  c.COMPort = r.Integer("Communication", "Port", d.COMPort);
  c.PortName = r.Text("Communication", "PortName", d.PortName);
  c.PORTTimeout = Usable(r.Long("Communication", "Timeout", d.PORTTimeout), 1, SecondsInADay,
                         static_cast<std::int32_t>(d.PORTTimeout));
  c.COMTimeout = r.Long("Communication", "COMTimeout", d.COMTimeout);
  c.CommSettings = r.Text("Communication", "RS232Setup", d.CommSettings);
}

void LoadAlpaca(SettingsReader& r, Config& c, const Config& d) {
  c.AlpacaEnabled = r.Integer("Alpaca", "Enabled", d.AlpacaEnabled);
  c.AlpacaAddress = r.Text("Alpaca", "Address", d.AlpacaAddress);
  c.AlpacaPort = Usable(r.Long("Alpaca", "Port", d.AlpacaPort), 1, 65535, d.AlpacaPort);
  c.AlpacaDiscovery = r.Integer("Alpaca", "Discovery", d.AlpacaDiscovery);
  c.AlpacaDiscoveryPort =
      Usable(r.Long("Alpaca", "DiscoveryPort", d.AlpacaDiscoveryPort), 1, 65535, d.AlpacaDiscoveryPort);
}

void LoadHeater(SettingsReader& r, Config& c, const Config& d) {
  c.HeatTemp[0] = r.Long("Heater", "Temp0", d.HeatTemp[0]);
  c.HeatTemp[1] = r.Long("Heater", "Temp1", d.HeatTemp[1]);
  c.HeatDelta[0] = r.Long("Heater", "Delta0", d.HeatDelta[0]);
  c.HeatDelta[1] = r.Long("Heater", "Delta1", d.HeatDelta[1]);
  c.HeatImpTemp = r.Long("Heater", "ImpTemp", d.HeatImpTemp);
  c.HeatImpDuration = r.Long("Heater", "ImpDuration", d.HeatImpDuration);
  c.HeatImpCycle = r.Long("Heater", "ImpCycle", d.HeatImpCycle);
  c.HeatMinValue = r.Long("Heater", "MinValue", d.HeatMinValue);
  c.HeatOffValue = r.Long("Heater", "OffValue", d.HeatOffValue);
}

// The graph colours' defaults are the colours the window was designed with.
void LoadGraphs(SettingsReader& r, Config& c, const Config& d) {
  c.GraphFreq = r.Long("Window", "GraphFreq", d.GraphFreq);
  for (const GraphKeys& g : Graphs) {
    const auto k = static_cast<std::size_t>(g.kind);
    c.GraphGenerate[k] = r.Integer("Window", std::string("Graph") + g.name, d.GraphGenerate[k]);
  }
  for (const GraphKeys& g : Graphs) {
    const auto k = static_cast<std::size_t>(g.kind);
    c.GraphImage[k] = r.Integer("Window", std::string("Image") + g.name, d.GraphImage[k]);
  }
  c.GraphImagePath = r.Path("Window", "GraphImagePath");
  c.ImageType = r.Integer("Window", "ImageType", d.ImageType);
  SetOption(c.ImageQuality, 0, r.Boolean("Window", "QualityTop", d.ImageQuality[0]));
  SetOption(c.ImageQuality, 1, r.Boolean("Window", "QualityGood", d.ImageQuality[1]));
  SetOption(c.ImageQuality, 2, r.Boolean("Window", "QualityNormal", d.ImageQuality[2]));
  c.GraphNoPoints = r.Long("Window", "GraphNoPoint", d.GraphNoPoints);
  for (const GraphKeys& g : Graphs) {
    const std::span<Colour> colours = GraphColours(c, g.kind);
    const std::span<const Colour> design = GraphColours(d, g.kind);
    for (std::size_t i = 0; i < colours.size(); ++i)
      colours[i] = r.ColourValue("Window", "GraphColor" + std::string(g.name) + std::to_string(i),
                                 design[i]);
  }
  c.GraphTempMax = r.Double("Window", "GraphTempMax", d.GraphTempMax);
  c.GraphTempMin = r.Double("Window", "GraphTempMin", d.GraphTempMin);
}

// The role, the transfer file and the single-line files.
void LoadCommFile(SettingsReader& r, Config& c, const Config& d) {
  c.AlarmCom.Tag = r.Text("COMMFile", "Alarm", d.AlarmCom.Tag);
  c.AlarmCom.Value = r.Integer("COMMFile", "AlarmStat", d.AlarmCom.Value);
  SetOption(c.NMRole, 0, r.Boolean("COMMFile", "NMRole0", d.NMRole[0]));
  SetOption(c.NMRole, 1, r.Boolean("COMMFile", "NMRole1", d.NMRole[1]));
  c.NetFileName = r.Text("COMMFile", "NetFileName", d.NetFileName);
  c.NetPathMaster = r.Path("COMMFile", "NetFilePath");
  c.NetPathRemote = r.Path("COMMFile", "NetFilePathRemote");
  c.FileNameCCDAP4 = r.Text("COMMFile", "FileNameCCDAP4", d.FileNameCCDAP4);
  c.LblPathNameCCDAP4 = r.Path("COMMFile", "PathNameCCDAP4");
}

void LoadScripts(SettingsReader& r, Config& c, const Config& d) {
  c.ScriptFileUNSAFE = r.Text("Window", "ScriptFileUNSAFE", d.ScriptFileUNSAFE);
  c.ScriptPathUNSAFE = r.Text("Window", "ScriptPathUNSAFE", d.ScriptPathUNSAFE);
  c.ScriptFileSAFE = r.Text("Window", "ScriptFileSAFE", d.ScriptFileSAFE);
  c.ScriptPathSAFE = r.Text("Window", "ScriptPathSAFE", d.ScriptPathSAFE);
}

// 6. Switches, the file columns, the link, the heater, the graphs, the sound
// folder, the role and transfer files, the relay, the scripts, the anemometer.
void LoadSwitchesLinkHeaterGraphsAndRoles(SettingsReader& r, Nimbometer& nm, const Config& d) {
  Config& c = nm.config;
  LoadUnsafeSwitches(r, c, d);
  LoadFileColumns(r, c, d);
  LoadLink(r, c, d);
  LoadAlpaca(r, c, d);
  c.UpdateBaseURL = r.Text("Update", "BaseURL", d.UpdateBaseURL);
  LoadHeater(r, c, d);
  LoadGraphs(r, c, d);
  c.LastMusicDir = r.Text("Window", "LastMusicDir", d.LastMusicDir);
  LoadCommFile(r, c, d);
  SetOption(c.SWRole, 0, r.Boolean("Switch", "SWRole0", d.SWRole[0]));
  SetOption(c.SWRole, 1, r.Boolean("Switch", "SWRole1", d.SWRole[1]));
  if (c.NMRole[0]) nm.state.DeviceMode = "MASTER";
  if (c.NMRole[1]) nm.state.DeviceMode = "REMOTE";
  LoadScripts(r, c, d);
  for (std::size_t i = 0; i < c.SWAnemoModel.size(); ++i)
    SetOption(c.SWAnemoModel, i,
              r.Boolean("Switch", "SWAnemoModel" + std::to_string(i), d.SWAnemoModel[i]));
  c.CloudAlarmDelay = r.Double("Window", "CloudAlarmDelay", d.CloudAlarmDelay);
}

// 8. Recording at start, the sky quality constants, and whether the box's
// constants were ever read.
void LoadStartSkyQualityAndInitialised(SettingsReader& r, Nimbometer& nm, const Defaults& d) {
  Config& c = nm.config;
  const Config& dc = d.config;
  c.CheckStartRecording = r.IntFrom("Window", "AutoStartRecording",
                                    static_cast<std::int16_t>(dc.CheckStartRecording));
  c.DarkReference = r.DoubleAny("SQM", "DarkReferenceValue", dc.DarkReference);
  c.SQMGainValue = r.DoubleAny("SQM", "SQMGain", dc.SQMGainValue);
  c.PulsesIn1Hz = r.LongFrom("SQM", "PulsesIn1Hz", dc.PulsesIn1Hz);
  c.SkyQualityError = r.LongFrom("SQM", "SkyQualityError", dc.SkyQualityError);
  c.UnknownSQV = r.IntFrom("SQM", "UnknownSQV", static_cast<std::int16_t>(dc.UnknownSQV));
  nm.state.DeviceInitialized = r.Long("Electrical", "Initiliazed", d.state.DeviceInitialized);
}

}  // namespace

void LoadSettings(Settings& store, Nimbometer& nm, const LoadContext& context) {
  SettingsReader r(store, context.decimalSeparator, context.documentsFolder);
  const Defaults d;
  LoadImageUseRoleAndSampleBuffers(r, nm, d);
  LoadElectricalConstants(r, nm.state);
  LoadWindAverageDelaysAndPlace(r, nm, d.config);
  LoadFactorsUnitsFileAndUnknown(r, nm, d);
  for (const FamilyKeys& family : ConditionFamilies) LoadConditionFamily(family, r, nm, d);
  LoadSwitchesLinkHeaterGraphsAndRoles(r, nm, d.config);
  if (context.runEntryPresent) nm.config.CheckStartApp = 1;
  LoadStartSkyQualityAndInitialised(r, nm, d);
}

}  // namespace nbx
