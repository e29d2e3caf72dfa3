#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace nbx {

// One class band of a family as the master has it: its limit, colour and word.
struct BandRecord {
  double Limit = 0;
  std::int32_t Color = 0;
  std::string Caption;  // at most 20 characters travel
};

// What a MASTER hands to its REMOTEs after each cycle: the values in the
// master's display units, and the parameters a remote may take over. Texts
// are held as the program's text; the file carries them in one byte a
// character.
struct TransferRecord {
  double Temp = 0;
  double Cloud = 0;
  double CloudRaw = 0;
  std::string TempUnit = "C";
  double CloudTemp = 0;
  double Rain = 0;
  double RainHeat = 0;
  double RainTemp = 0;
  double Day = 0;
  double Switch = 0;
  double Cycle = 0;
  double DewPoint = -1;     // -1: no humidity sensor
  double Humidity = -1;     // -1: no humidity sensor
  double RelPressure = -1;  // -1: no pressure sensor
  double Wind = 0;
  double WindDir = 0;
  double Gust = 0;
  double Reserved = 0;
  double LastReading = 0;   // serial date of the master's last good reading
  std::string HeatText;     // at most 30 characters travel
  std::int32_t HeatColor = 0;
  std::array<BandRecord, 9> Bands{};  // cloud 0..2, rain 0..2, daylight 0..2

  double HeatTemp0 = 0, HeatTemp1 = 0, HeatDelta0 = 0, HeatDelta1 = 0;
  double HeatImpTemp = 0, HeatImpDuration = 0, HeatImpCycle = 0, HeatMinValue = 0;
  double CloudTempK1 = 0, CloudTempK2 = 0, CloudTempK3 = 0, CloudTempK4 = 0, CloudTempK5 = 0;
  double UnknowCloudGT = 0, UnknowRainLT = 0, UnknownDayGT = 0;
  double CloudTempK6 = 0, CloudTempK7 = 0;

  std::string SpeedUnit = "K";
  std::int16_t WindPresent = 0;        // -1 true, 0 false
  std::int32_t Version = 39;           // read and ignored
  std::int16_t SkyQualityPresent = 0;  // -1 true, 0 false
};

}  // namespace nbx
