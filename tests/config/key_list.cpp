#include "key_list.h"

#include <cstdio>
#include <sstream>

namespace nbx::test {
namespace {

const char* const kTables[][2] = {
    {"Electrical",
     "Stats_Universe Stats_Sigma ZenerVoltage LDRMax LDRPullup RainBeta RainResAt25 RainPullUp "
     "AmbBeta AmbResAt25 Resistance SerialNo Initiliazed"},
    {"Communication", "RefreshPeriod Port Timeout COMTimeout RS232Setup PortName"},
    {"Alpaca", "Enabled Address Port Discovery DiscoveryPort"},
    {"Update", "BaseURL"},
    {"Limit",
     "UnitsSpeed0 UnitsSpeed1 UnitsSpeed2 UnitsSpeed3 Clear Cloudy Dry Wet Rain> Calm Windy VWindy "
     "Dark Light VLight RHDry RHNormal PresLow PresNormal PresHigh"},
    {"Description",
     "Clear Cloudy Overcast Dry Wet Rain Calm Windy VWindy Dark Light VLight RHDry RHNormal RHHumid "
     "Low Normal High"},
    {"Color",
     "Clear Cloudy Overcast Dry Wet Rain Calm Windy VWindy Dark Light VLight RHDry RHNormal RHHumid "
     "Low Normal High"},
    {"AlarmCloud", "Clear Cloudy Overcast ClearStat CloudyStat OvercastStat"},
    {"AlarmRain", "Dry Wet Rain DryStat WetStat RainStat"},
    {"AlarmWind", "Calm Windy VWindy CalmStat WindyStat VWindyStat"},
    {"AlarmDay", "Dark Light VLight DarkStat LightStat VLightStat"},
    {"AlarmHumidity", "RHDry RHNormal< RHLight> RHHumid RHDryStat RHNormalStat RHHumidStat"},
    {"AlarmPressure", "Low Normal High LowStat NormalStat HighStat"},
    {"Switch",
     "Cloud0 Cloud1 Cloud2 Rain0 Rain1 Rain2 Wind0 Wind1 Wind2 Day0 Day1 Day2 Humidity0 Humidity1 "
     "Humidity2 Pressure0 Pressure1 Pressure2 SWRole0 SWRole1 SWAnemoModel0 SWAnemoModel1 "
     "SWAnemoModel2"},
    {"Heater", "Temp0 Temp1 Delta0 Delta1 ImpTemp ImpDuration ImpCycle MinValue OffValue"},
    {"COMMFile",
     "Alarm AlarmStat NMRole0 NMRole1 NetFileName NetFilePath NetFilePathRemote FileNameCCDAP4 "
     "PathNameCCDAP4"},
    {"SQM", "DarkReferenceValue SQMGain PulsesIn1Hz SkyQualityError UnknownSQV"},
    {"FreeImage", "FreeImageUse<"},
    {"Window",
     "Left Top SSTAB1 SSTAB2 SSTAB3 VScrollPos0 VScrollPos3< HScrollPos1 LastUpdateMsg UnitsTemp0 "
     "UnitsTemp CloudTempFactor CloudTempK1 CloudTempK2 CloudTempK3 CloudTempK4 CloudTempK5 "
     "CloudTempK6 CloudTempK7 AmbTempOffset IRTempOffset AASL AvgWindCalc SafeDelayVal "
     "CloudAlarmDelay AutoStartRecording LastMusicDir PathName FileName LastReadOnly Debug FreqSave "
     "SuspendSound UnknownNoReading UnknownRS232Error UnknownUnsafe UnknownCloud UnknownRain "
     "DisableUnknownRain UnknownDay DisableUnknownDay UnknownColor LblPECReading ScriptFileUNSAFE "
     "ScriptPathUNSAFE ScriptFileSAFE ScriptPathSAFE GraphFreq GraphCloud GraphDay GraphRain "
     "GraphWind GraphTemp GraphHumidity GraphPressure ImageCloud ImageDay ImageRain ImageWind "
     "ImageTemp ImageHumidity ImagePressure GraphImagePath ImageType QualityTop QualityGood "
     "QualityNormal GraphNoPoint GraphColorCloud0 GraphColorDay0 GraphColorRain0 GraphColorWind0 "
     "GraphColorTemp0 GraphColorHumidity0 GraphColorPressure0 GraphColorCloud1 GraphColorDay1 "
     "GraphColorRain1 GraphColorWind1 GraphColorTemp1 GraphColorHumidity1 GraphColorPressure1 "
     "GraphColorTemp2 GraphTempMax GraphTempMin"},
};

void Add(KeyList& list, const std::string& section, std::string key) {
  const char mark = key.back();
  if (mark == '<' || mark == '>') key.pop_back();
  if (mark != '>') list.read.insert({section, key});
  if (mark != '<') list.written.insert({section, key});
}

}  // namespace

KeyList ReferenceKeys() {
  KeyList list;
  for (const auto& [section, keys] : kTables) {
    std::istringstream words(keys);
    for (std::string key; words >> key;) Add(list, section, key);
  }
  for (int row = 1; row <= 24; ++row) {
    char index[4];
    std::snprintf(index, sizeof index, "%02d", row);
    for (const char* kind : {"Hdr", "Cal", "Prt"}) Add(list, "File", kind + std::string(index));
  }
  return list;
}

}  // namespace nbx::test
