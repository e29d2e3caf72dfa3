#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <optional>
#include <string>

#include "core/colours.h"

namespace nbx {

// A class swatch: the user's word for a condition class and its colour.
struct Swatch {
  std::string Caption;
  Colour BackColor = 0;
  bool operator==(const Swatch&) const = default;
};

// An alarm entry of a class: its check state (1 is on) and its sound file,
// which may end in "|repeat".
struct AlarmEntry {
  std::int32_t Value = 0;
  std::string Tag;
  bool operator==(const AlarmEntry&) const = default;
};

// One position of the user data file's column table.
struct FileColumn {
  std::string Hdr;         // heading, at most 25 characters
  std::int32_t Cal = 0;    // field identifier 1..24
  bool Prt = true;         // printed
  bool operator==(const FileColumn&) const = default;
};

inline constexpr int FileColumnCount = 24;

// The configuration in use: every limit, factor and option that the logic
// reads, by the name of the control that holds it in the window. The
// initialisers are the defaults of a fresh installation; the settings store
// fills the record at load and writes it back at unload.
struct Config {
  // --- Communication
  std::int32_t RefreshPeriod = 10;       // seconds; 10..60 when edited
  std::int32_t COMPort = 0;              // index into "COM1".."COM32"
  std::string PortName;                  // device path; overrides COMPort when not blank
  double PORTTimeout = 5;                // seconds a command may wait for its reply
  double COMTimeout = 60;                // age of the transfer file a REMOTE accepts
  std::string CommSettings = "9600,n,8,1";

  // --- The ASCOM Alpaca server (section Alpaca): on loopback unless told otherwise
  std::int32_t AlpacaEnabled = 1;
  std::string AlpacaAddress = "127.0.0.1";  // 0.0.0.0 or an interface's address serves the network
  std::int32_t AlpacaPort = 11111;
  std::int32_t AlpacaDiscovery = 1;
  std::int32_t AlpacaDiscoveryPort = 32227;  // the port Alpaca clients ask; other values for tests

  // --- The update check (section Update): the server that holds the update
  // files; empty until the user names one, and then nothing is ever fetched
  std::string UpdateBaseURL;

  // --- Units
  std::array<bool, 4> UnitsSpeed{true, false, false, false};  // km/h, mph, m/s, knot
  std::array<bool, 2> UnitsTemp{true, false};                 // C, F
  std::string UnitSpeedStr = "K";
  std::string UnitTempStr = "C";

  // --- Thresholds of the conditions
  std::array<double, 3> CloudLimit{-5, 0, 30};   // (2) follows UnknowCloudGT
  std::array<double, 3> RainLimit{3200, 2800, 0};  // (2) follows UnknowRainLT
  std::array<double, 3> WindLimit{5, 10, 999};
  std::array<double, 3> DayLimit{2100, 6, 0};
  std::array<double, 3> HumidityLimit{50, 80, 100};
  std::array<double, 3> PressureLimit{980, 1030, 1200};
  double UnknowCloudGT = 30;
  double UnknowRainLT = 0;
  double UnknownDayGT = 60000;
  std::int32_t DisableUnknownRain = 0;
  std::int32_t DisableUnknownDay = 0;
  double UnknownNoReading = 3;
  double UnknownRS232NoError = 3;
  std::int32_t UnKnownUnsafe = 1;
  Colour LblUnknowColor = 0xFFC0C0;

  // --- Class words and colours
  std::array<Swatch, 3> ColorCloud{{{"Clear", 0xC0FFC0}, {"Cloudy", 0xC0FFFF}, {"Overcast", 0xC0E0FF}}};
  std::array<Swatch, 3> ColorRain{{{"Dry", 0xC0FFC0}, {"Wet", 0xC0FFFF}, {"Rain", 0xC0E0FF}}};
  std::array<Swatch, 3> ColorWind{{{"Calm", 0xC0FFC0}, {"Windy", 0xC0FFFF}, {"Very Windy", 0xC0E0FF}}};
  std::array<Swatch, 3> ColorDay{{{"Dark", 0xC0FFC0}, {"Light", 0xC0FFFF}, {"Very Light", 0xC0E0FF}}};
  std::array<Swatch, 3> ColorHumidity{{{"Dry", 0xC0FFC0}, {"Normal", 0xC0FFFF}, {"Humid", 0xC0E0FF}}};
  std::array<Swatch, 3> ColorPressure{{{"Low", 0xC0FFC0}, {"Normal", 0xC0FFFF}, {"High", 0xC0E0FF}}};

  // --- Which classes count as unsafe (value 1)
  std::array<std::int32_t, 3> CheckCloud{0, 0, 1};
  std::array<std::int32_t, 3> CheckRain{0, 0, 1};
  std::array<std::int32_t, 3> CheckWind{0, 0, 0};
  std::array<std::int32_t, 3> CheckDay{0, 0, 0};
  std::array<std::int32_t, 3> CheckHumidity{0, 0, 0};
  std::array<std::int32_t, 3> CheckPressure{0, 0, 0};

  // --- Sound alarms
  std::array<AlarmEntry, 3> AlarmCloud{};
  std::array<AlarmEntry, 3> AlarmRain{};
  std::array<AlarmEntry, 3> AlarmWind{};
  std::array<AlarmEntry, 3> AlarmDay{};
  std::array<AlarmEntry, 3> AlarmHumidity{};
  std::array<AlarmEntry, 3> AlarmPressure{};
  AlarmEntry AlarmCom{};
  std::int32_t SuspendSoundAlarm = 0;
  std::string LastMusicDir;

  // --- Safety
  double SafeDelayVal = 0;     // seconds a safe verdict must last
  double CloudAlarmDelay = 0;  // seconds "Cloudy" must last
  double WindAlarmDelay = 0;   // shown, read by no logic

  // --- Roles
  std::array<bool, 2> SWRole{true, false};        // relay "Enabled", "Disabled"
  std::array<bool, 2> NMRole{true, false};        // "Master", "Remote"
  std::array<bool, 3> SWAnemoModel{true, false, false};  // "Gray", "Black", "T.B.A."

  // --- Rain heater
  std::array<double, 2> HeatTemp{0, 20};
  std::array<double, 2> HeatDelta{6, 4};
  double HeatImpTemp = 10;
  double HeatImpDuration = 60;
  double HeatImpCycle = 600;
  double HeatMinValue = 10;  // percent
  double HeatOffValue = 10;  // percent, sent at Stop

  // --- Sky correction
  bool CloudTempFactor = true;
  double CloudTempK1 = 33, CloudTempK2 = 0, CloudTempK3 = 4, CloudTempK4 = 100,
         CloudTempK5 = 100, CloudTempK6 = 0, CloudTempK7 = 0;
  double AmbTempOffset = 0;
  double IRTempOffset = 0;
  double AASL = 100;
  double CalcWindAvg = 6;

  // --- Brightness sensor
  double DarkReference = 19.6;
  double SQMGainValue = 2.5;
  std::int32_t PulsesIn1Hz = 250000;
  std::int32_t SkyQualityError = 536870910;
  double UnknownSQV = 50;

  // --- User data file
  std::string LblPathName;               // folder; documents folder by default
  std::string FileName = "Nimbometer";
  std::int32_t LastReadOnly = 0;
  std::int32_t chkDebug = 0;
  double SaveFreq = 1;
  std::array<bool, 2> RecOption{false, true};  // (0) recording on, (1) off
  std::array<FileColumn, FileColumnCount> FileColumns = DefaultFileColumns();
  std::int32_t CheckStartApp = 0;
  std::int32_t CheckStartRecording = 0;

  // --- Single-line files and the transfer file
  std::string FileNameCCDAP4 = "NBX_SLD.dat";
  std::string LblPathNameCCDAP4;
  std::string NetFileName = "NBX_NMNetData.dat";
  std::string NetPathMaster;
  std::string NetPathRemote;

  // --- Scripts
  std::string ScriptFileUNSAFE, ScriptPathUNSAFE;
  std::string ScriptFileSAFE, ScriptPathSAFE;

  // --- Graphs and images
  double GraphFreq = 6;
  double GraphNoPoints = 120;
  std::array<std::int32_t, 7> GraphGenerate{1, 1, 1, 1, 1, 1, 1};  // by GraphKind
  std::array<std::int32_t, 7> GraphImage{1, 1, 1, 1, 1, 1, 1};     // by GraphKind
  std::string GraphImagePath;
  std::int32_t ImageType = 1;                      // checked: PNG, clear: JPEG
  std::array<bool, 3> ImageQuality{false, false, true};  // Top, Good, Normal
  std::array<Colour, 2> GraphColorCloud{0x404040, 0xC00000};
  std::array<Colour, 2> GraphColorRain{0x404040, 0xC00000};
  std::array<Colour, 2> GraphColorWind{0x404040, 0xC00000};
  std::array<Colour, 2> GraphColorDay{0x404040, 0xC00000};
  std::array<Colour, 2> GraphColorHumidity{0x404040, 0xC00000};
  std::array<Colour, 2> GraphColorPressure{0x404040, 0xC00000};
  std::array<Colour, 3> GraphColorTemp{0x404040, 0xC00000, 0xFFFFC0};
  double GraphTempMax = 30;
  double GraphTempMin = -30;
  bool FreeImageUse = true;

  // --- The window as it was left, for the next start
  std::optional<std::int32_t> Left, Top;  // none: centred on the screen
  std::int32_t SSTab1 = 0, SSTab2 = 0, SSTab3 = 0;  // selected tab of each tab control
  std::int32_t VScrollPos0 = 15;
  std::int32_t VScrollPos3 = 0;
  std::int32_t HScrollPos1 = 15;
  std::string LastUpdateMsg;  // shown once at the next start

  bool IsMaster() const { return NMRole[0]; }

  static std::array<FileColumn, FileColumnCount> DefaultFileColumns();

  bool operator==(const Config&) const = default;
};

// The seven graphs, in the order the cycle runs them.
enum class GraphKind { Cloud, Rain, Wind, Day, Temp, Humidity, Pressure };

// A graph's colours: axis, curve, and for the temperature graph its background.
std::span<Colour> GraphColours(Config& config, GraphKind kind);
std::span<const Colour> GraphColours(const Config& config, GraphKind kind);

}  // namespace nbx
