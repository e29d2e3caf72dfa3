#include "config/electrical_settings.h"
#include "config/setting_access.h"
#include "config/setting_keys.h"
#include "config/settings_order.h"
#include "core/nimbometer.h"

namespace nbx {
namespace {

void SaveDelays(SettingsWriter& w, const Config& c) {
  w.Number("Window", "SafeDelayVal", c.SafeDelayVal);
  w.Number("Window", "CloudAlarmDelay", c.CloudAlarmDelay);
}

void SaveAnemometer(SettingsWriter& w, const Config& c) {
  for (std::size_t i = 0; i < c.SWAnemoModel.size(); ++i)
    w.Boolean("Switch", "SWAnemoModel" + std::to_string(i), c.SWAnemoModel[i]);
}

void SaveUnits(SettingsWriter& w, const Config& c) {
  for (std::size_t i = 0; i < c.UnitsSpeed.size(); ++i)
    w.Boolean("Limit", "UnitsSpeed" + std::to_string(i), c.UnitsSpeed[i]);
  w.Boolean("Window", "UnitsTemp0", c.UnitsTemp[0]);
  w.Boolean("Window", "UnitsTemp", c.UnitsTemp[1]);
}

void SaveFactors(SettingsWriter& w, const Config& c) {
  w.Boolean("Window", "CloudTempFactor", c.CloudTempFactor);
  w.Number("Window", "CloudTempK1", c.CloudTempK1);
  w.Number("Window", "CloudTempK2", c.CloudTempK2);
  w.Number("Window", "CloudTempK3", c.CloudTempK3);
  w.Number("Window", "CloudTempK4", c.CloudTempK4);
  w.Number("Window", "CloudTempK5", c.CloudTempK5);
  w.Number("Window", "CloudTempK6", c.CloudTempK6);
  w.Number("Window", "CloudTempK7", c.CloudTempK7);
  w.Number("Window", "AmbTempOffset", c.AmbTempOffset);
  w.Number("Window", "IRTempOffset", c.IRTempOffset);
}

// Rain's third limit is written though no load reads it, and the second
// humidity sound goes to "RHLight": the table keeps both as they were.
void SaveConditionFamily(SettingsWriter& w, const FamilyKeys& f, const Config& c) {
  for (std::size_t i = 0; i < 3; ++i)
    if (f.limitKeys[i]) w.Number("Limit", f.limitKeys[i], (c.*f.limits)[i]);
  for (std::size_t i = 0; i < 3; ++i)
    w.ColourValue("Color", f.classKeys[i], (c.*f.swatches)[i].BackColor);
  for (std::size_t i = 0; i < 3; ++i)
    w.Text("Description", f.classKeys[i], (c.*f.swatches)[i].Caption);
  for (std::size_t i = 0; i < 3; ++i)
    w.Text(f.alarmSection, f.soundKeysWritten[i], (c.*f.alarms)[i].Tag);
  for (std::size_t i = 0; i < 3; ++i)
    w.Whole(f.alarmSection, StateKey(f.classKeys[i]), (c.*f.alarms)[i].Value);
}

void SaveLink(SettingsWriter& w, const Config& c) {
  w.Whole("Communication", "RefreshPeriod", c.RefreshPeriod);
  w.Whole("Communication", "Port", c.COMPort);
  w.Text("Communication", "PortName", c.PortName);
  w.Number("Communication", "Timeout", c.PORTTimeout);
  w.Number("Communication", "COMTimeout", c.COMTimeout);
  w.Text("Communication", "RS232Setup", c.CommSettings);
}

void SaveAlpaca(SettingsWriter& w, const Config& c) {
  w.Whole("Alpaca", "Enabled", c.AlpacaEnabled);
  w.Text("Alpaca", "Address", c.AlpacaAddress);
  w.Whole("Alpaca", "Port", c.AlpacaPort);
  w.Whole("Alpaca", "Discovery", c.AlpacaDiscovery);
  w.Whole("Alpaca", "DiscoveryPort", c.AlpacaDiscoveryPort);
}

void SaveDataFile(SettingsWriter& w, const Config& c) {
  w.Text("Window", "PathName", c.LblPathName);
  w.Text("Window", "FileName", c.FileName);
  w.Whole("Window", "LastReadOnly", c.LastReadOnly);
  w.Whole("Window", "Debug", c.chkDebug);
  w.Number("Window", "FreqSave", c.SaveFreq);
}

// VScrollPos3 is read at load and never written.
void SaveTabsAndScrollBars(SettingsWriter& w, const Config& c) {
  w.Whole("Window", "SSTAB1", c.SSTab1);
  w.Whole("Window", "SSTAB2", c.SSTab2);
  w.Whole("Window", "SSTAB3", c.SSTab3);
  w.Whole("Window", "VScrollPos0", c.VScrollPos0);
  w.Whole("Window", "HScrollPos1", c.HScrollPos1);
}

void SaveUnsafeSwitches(SettingsWriter& w, const Config& c) {
  for (const FamilyKeys& f : ConditionFamilies)
    for (std::size_t i = 0; i < 3; ++i)
      w.Whole("Switch", f.switchPrefix + std::to_string(i), (c.*f.unsafeChecks)[i]);
}

void SaveHeater(SettingsWriter& w, const Config& c) {
  w.Number("Heater", "Temp0", c.HeatTemp[0]);
  w.Number("Heater", "Temp1", c.HeatTemp[1]);
  w.Number("Heater", "Delta0", c.HeatDelta[0]);
  w.Number("Heater", "Delta1", c.HeatDelta[1]);
  w.Number("Heater", "ImpTemp", c.HeatImpTemp);
  w.Number("Heater", "ImpDuration", c.HeatImpDuration);
  w.Number("Heater", "ImpCycle", c.HeatImpCycle);
  w.Number("Heater", "MinValue", c.HeatMinValue);
  w.Number("Heater", "OffValue", c.HeatOffValue);
}

void SaveGraphs(SettingsWriter& w, const Config& c) {
  w.Number("Window", "GraphFreq", c.GraphFreq);
  for (const GraphKeys& g : Graphs)
    w.Whole("Window", std::string("Graph") + g.name, c.GraphGenerate[static_cast<std::size_t>(g.kind)]);
  for (const GraphKeys& g : Graphs)
    w.Whole("Window", std::string("Image") + g.name, c.GraphImage[static_cast<std::size_t>(g.kind)]);
  w.Text("Window", "GraphImagePath", c.GraphImagePath);
  w.Whole("Window", "ImageType", c.ImageType);
  w.Boolean("Window", "QualityTop", c.ImageQuality[0]);
  w.Boolean("Window", "QualityGood", c.ImageQuality[1]);
  w.Boolean("Window", "QualityNormal", c.ImageQuality[2]);
  w.Number("Window", "GraphNoPoint", c.GraphNoPoints);
  for (const GraphKeys& g : Graphs) {
    const std::span<const Colour> colours = GraphColours(c, g.kind);
    for (std::size_t i = 0; i < colours.size(); ++i)
      w.ColourValue("Window", "GraphColor" + std::string(g.name) + std::to_string(i), colours[i]);
  }
  w.Number("Window", "GraphTempMax", c.GraphTempMax);
  w.Number("Window", "GraphTempMin", c.GraphTempMin);
}

void SaveUnknownCondition(SettingsWriter& w, const Nimbometer& nm) {
  const Config& c = nm.config;
  w.Whole("Window", "SuspendSound", c.SuspendSoundAlarm);
  w.Number("Window", "UnknownNoReading", c.UnknownNoReading);
  w.Number("Window", "UnknownRS232Error", c.UnknownRS232NoError);
  w.Whole("Window", "UnknownUnsafe", c.UnKnownUnsafe);
  w.Number("Window", "UnknownCloud", c.UnknowCloudGT);
  w.Number("Window", "UnknownRain", c.UnknowRainLT);
  w.Whole("Window", "DisableUnknownRain", c.DisableUnknownRain);
  w.Number("Window", "UnknownDay", c.UnknownDayGT);
  w.Whole("Window", "DisableUnknownDay", c.DisableUnknownDay);
  w.ColourValue("Window", "UnknownColor", c.LblUnknowColor);
  w.Text("Window", "LblPECReading", nm.display.LblPECReading.Caption);
}

void SaveFileColumns(SettingsWriter& w, const Config& c) {
  for (int row = 1; row <= FileColumnCount; ++row) {
    const FileColumn& column = c.FileColumns[static_cast<std::size_t>(row - 1)];
    w.Text("File", FileColumnKey("Hdr", row), column.Hdr);
    w.Whole("File", FileColumnKey("Cal", row), column.Cal);
    w.Boolean("File", FileColumnKey("Prt", row), column.Prt);
  }
}

void SaveCommFile(SettingsWriter& w, const Config& c) {
  w.Text("COMMFile", "Alarm", c.AlarmCom.Tag);
  w.Whole("COMMFile", "AlarmStat", c.AlarmCom.Value);
  w.Boolean("COMMFile", "NMRole0", c.NMRole[0]);
  w.Boolean("COMMFile", "NMRole1", c.NMRole[1]);
  w.Text("COMMFile", "NetFileName", c.NetFileName);
  w.Text("COMMFile", "NetFilePath", c.NetPathMaster);
  w.Text("COMMFile", "NetFilePathRemote", c.NetPathRemote);
  w.Text("COMMFile", "FileNameCCDAP4", c.FileNameCCDAP4);
  w.Text("COMMFile", "PathNameCCDAP4", c.LblPathNameCCDAP4);
}

void SaveScripts(SettingsWriter& w, const Config& c) {
  w.Text("Window", "ScriptFileUNSAFE", c.ScriptFileUNSAFE);
  w.Text("Window", "ScriptPathUNSAFE", c.ScriptPathUNSAFE);
  w.Text("Window", "ScriptFileSAFE", c.ScriptFileSAFE);
  w.Text("Window", "ScriptPathSAFE", c.ScriptPathSAFE);
}

void SaveSkyQuality(SettingsWriter& w, const Config& c) {
  w.Number("SQM", "DarkReferenceValue", c.DarkReference);
  w.Number("SQM", "SQMGain", c.SQMGainValue);
  w.Whole("SQM", "PulsesIn1Hz", c.PulsesIn1Hz);
  w.Whole("SQM", "SkyQualityError", c.SkyQualityError);
  w.Number("SQM", "UnknownSQV", c.UnknownSQV);
}

}  // namespace

bool UnloadSettings(Settings& store, const Nimbometer& nm, const UnloadContext& context) {
  if (nm.state.COMNoUsers != 0) return false;
  SettingsWriter w(store, context.decimalSeparator);
  const Config& c = nm.config;
  SaveDelays(w, c);
  SaveAnemometer(w, c);
  w.Number("Window", "AvgWindCalc", c.CalcWindAvg);
  SaveUnits(w, c);
  SaveFactors(w, c);
  SaveElectrical(w, nm.state);
  for (const FamilyKeys& family : ConditionFamilies) SaveConditionFamily(w, family, c);
  SaveLink(w, c);
  SaveAlpaca(w, c);
  w.Text("Update", "BaseURL", c.UpdateBaseURL);
  w.Number("Window", "AASL", c.AASL);
  if (context.windowIsNormal) {
    if (c.Left) w.Number("Window", "Left", *c.Left);
    if (c.Top) w.Number("Window", "Top", *c.Top);
  }
  w.Text("Window", "LastUpdateMsg", c.LastUpdateMsg);
  SaveDataFile(w, c);
  SaveTabsAndScrollBars(w, c);
  SaveUnsafeSwitches(w, c);
  SaveHeater(w, c);
  SaveGraphs(w, c);
  SaveUnknownCondition(w, nm);
  SaveFileColumns(w, c);
  w.Text("Window", "LastMusicDir", c.LastMusicDir);
  SaveCommFile(w, c);
  w.Boolean("Switch", "SWRole0", c.SWRole[0]);
  w.Boolean("Switch", "SWRole1", c.SWRole[1]);
  SaveScripts(w, c);
  w.Whole("Window", "AutoStartRecording", c.CheckStartRecording);
  SaveSkyQuality(w, c);
  return true;
}

}  // namespace nbx

