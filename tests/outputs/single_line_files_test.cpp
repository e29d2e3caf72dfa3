#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <filesystem>
#include <regex>
#include <sys/stat.h>

#include "fixed_site.h"
#include "outputs/data_outputs.h"
#include "outputs/debug_record.h"
#include "outputs/single_line_record.h"

namespace nbx {
namespace {

using test::FixedSite;

// The record of the fixed site, field by field at its offsets.
const std::string kRecord =
    "2026-11-21 "     // 0   date
    "22:00:05.05 "    // 11  time, the seconds repeated after the point
    "C K "            // 23  units
    " -18.5    7.5 "  // 27  sky, ambient
    "   8.0   12.3 "  // 41  sensor temperature, wind
    " 63    0.7 "     // 55  humidity, dew point
    "  0 0 0 "        // 66  heater duty (a fraction in "0"), rain flag twice
    "00003 "          // 74  seconds since good data
    "046347.91672 "   // 80  day number
    "1 2 1 3 0 0";    // 93  conditions, verdict twice

ino_t Inode(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? info.st_ino : 0;
}

TEST(SingleLineFiles, RecordsAreByteExactRewrittenInPlaceAndDeletedAtStart) {
  FixedSite site;
  ASSERT_EQ(kRecord.size(), 104u);
  // A longer file from elsewhere is cut back to the record.
  test::WriteFile(site.File("NBX_SLD.dat"), std::string(300, 'x'));
  const ino_t inode = Inode(site.File("NBX_SLD.dat"));
  WriteSingleLineFiles(site.nm);
  EXPECT_EQ(site.Read("NBX_SLD.dat"), kRecord);
  EXPECT_EQ(site.Read("NBX_SLDs.dat"), kRecord + " +19.56");
  std::string commas = kRecord;
  std::ranges::replace(commas, '.', ',');
  EXPECT_EQ(site.Read("CS-NBX_SLD.dat"), commas);
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "");

  // A decimal-comma machine: every number keeps its point, but the day number.
  site.time.RunFor(1000);
  site.host.decimalSeparator = ',';
  site.nm.state.SQMPresent = false;
  site.nm.state.HumidityPresent = 0;
  site.nm.state.Value_Unsafe = true;
  site.nm.state.NBX_RainCondition = 3;
  site.nm.state.Value_Cloud = -1234.56;
  WriteSingleLineFiles(site.nm);
  const std::string record = site.Read("NBX_SLD.dat");
  ASSERT_EQ(record.size(), 104u);
  EXPECT_EQ(record.substr(11, 12), "22:00:06.06 ");
  EXPECT_EQ(record.substr(27, 7), "1234.6 ") << "a number too long loses its leading characters";
  EXPECT_EQ(record.substr(55, 11), " 50  -20.0 ") << "no humidity sensor";
  EXPECT_EQ(record.substr(70, 4), "2 2 ");
  EXPECT_EQ(record.substr(80, 13), "046347,91674 ");
  EXPECT_EQ(record.substr(97), "3 3 1 1");
  EXPECT_EQ(site.Read("NBX_SLDs.dat"), record + " -99.99");
  EXPECT_EQ(site.Read("CS-NBX_SLD.dat").substr(27, 7), "1234,6 ");
  // The same file all along: no temporary file renamed over it.
  EXPECT_EQ(Inode(site.File("NBX_SLD.dat")), inode);

  DeleteSingleLineFile(site.nm);
  EXPECT_FALSE(std::filesystem::exists(site.File("NBX_SLD.dat")));
  EXPECT_TRUE(std::filesystem::exists(site.File("NBX_SLDs.dat"))) << "only the single-line file goes";
  DeleteSingleLineFile(site.nm);  // nothing to delete is fine
}

TEST(SingleLineFiles, NamesOfTheFamily) {
  EXPECT_EQ(ExtendedFileName("a.b.txt"), "a.bs.txt");

  FixedSite site;
  site.nm.config.FileNameCCDAP4 = "data";
  site.nm.config.LblPathNameCCDAP4 = site.dir.path() + "/";
  WriteSingleLineFiles(site.nm);
  for (const char* name : {"data", "datas", "nbx_json.dat", "DebugData.txt", "CS-data"})
    EXPECT_TRUE(std::filesystem::exists(site.File(name))) << name;
  // The comma file takes the folder as it stands: a double separator, which
  // the file system reads as one.
  EXPECT_EQ(site.Read("CS-data").size(), 104u);

  FixedSite quiet;
  quiet.nm.config.FileNameCCDAP4 = "   ";
  WriteSingleLineFiles(quiet.nm);
  EXPECT_TRUE(std::filesystem::is_empty(quiet.dir.path())) << "no name, no files at all";
}

// The JSON lines of the fixed site, CR LF each.
const char* const kJson[] = {
    "{",
    "\"dateLocalTime\" : \"2026/11/21 22:00:05\",",
    "\"nminfo\" : \"Serial: 1234, FW: 6.10\",",
    nullptr,  // slddata, checked apart
    "\"clouds\" : -18.5,",
    "\"cloudsSafe\" : \"Safe\",",
    "\"temp\" : 7.5,",
    "\"wind\" : 12.3,",
    "\"windSafe\" : \"Unsafe\",",
    "\"gust\" : 20.0,",
    "\"rain\" : 3123,",
    "\"rainSafe\" : \"Safe\",",
    "\"lightmpsas\" : 19.56,",
    "\"lightSafe\" : \"Unknown\",",
    "\"switch\" : 1,",
    "\"safe\" : 1,",
    "\"hum\" : 63.400,",
    "\"humSafe\" : \"Safe\",",
    "\"dewp\" : 0.740,",
    "\"abspress\" : 1001.250, ",
    "\"relpress\" : 1013.200, ",
    "\"pressureSafe\" : \"Safe\",",
    "\"rawir\" : -20.125",
    "}",
};

QJsonObject ParseJson(const std::string& text) {
  QJsonParseError error{};
  const QJsonDocument doc = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString() << "\n" << text;
  return doc.object();
}

TEST(JsonFile, LinesAreByteExactAndParseInOtherUnitsAndWithoutSensors) {
  FixedSite site;
  site.host.decimalSeparator = ',';  // the file carries points all the same
  WriteSingleLineFiles(site.nm);
  const auto lines = site.Lines("nbx_json.dat");
  ASSERT_EQ(lines.size(), std::size(kJson));
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (kJson[i]) {
      EXPECT_EQ(lines[i], kJson[i]) << "line " << i + 1;
    }
  EXPECT_EQ(lines[3], "\"slddata\" : \"" + site.Read("NBX_SLDs.dat") + "\",");
  EXPECT_TRUE(site.Read("nbx_json.dat").ends_with("}\r\n"));
  ParseJson(site.Read("nbx_json.dat"));

  // Other units are converted back; absent sensors lose their lines.
  Nimbometer& nm = site.nm;
  nm.config.UnitTempStr = "F";
  nm.config.UnitSpeedStr = "M";
  nm.state.Value_Cloud = -1.3;   // -18.5 C
  nm.state.Value_Temp = 45.5;    // 7.5 C
  nm.state.Value_DewPointT = 41; // 5 C
  nm.state.Value_Wind = 10;      // 16.09 km/h
  nm.state.SQMPresent = false;
  nm.state.Value_Day = 41234.6;
  nm.state.Value_Rain = -10;
  nm.state.Value_Switch = 2;
  nm.state.Value_Unsafe = true;
  nm.state.Value_AbsPressure = 0;  // none read: no line for it
  WriteSingleLineFiles(nm);
  QJsonObject json = ParseJson(site.Read("nbx_json.dat"));
  const std::pair<const char*, double> values[] = {{"clouds", -18.5}, {"temp", 7.5}, {"dewp", 5.0},
                                                   {"wind", 16.1},    {"light", 41235}, {"rain", -10},
                                                   {"switch", 0},     {"safe", 0}};
  for (const auto& [key, value] : values) EXPECT_EQ(json.value(key).toDouble(), value) << key;
  EXPECT_FALSE(json.contains("lightmpsas"));
  EXPECT_FALSE(json.contains("abspress"));

  // A remote: no absolute pressure, no serial; no humidity sensor: no rows for it.
  nm.config.NMRole = {false, true};
  nm.state.HumidityPresent = 0;
  WriteSingleLineFiles(nm);
  json = ParseJson(site.Read("nbx_json.dat"));
  EXPECT_EQ(json.value("nminfo").toString(), "Remote mode");
  for (const char* key : {"abspress", "hum", "humSafe", "dewp"}) EXPECT_FALSE(json.contains(key)) << key;
  EXPECT_EQ(json.value("relpress").toDouble(), 1013.2);
  EXPECT_EQ(site.Lines("nbx_json.dat").size(), 20u);
}

TEST(DebugRecord, SnapshotOfAMasterLineByLineThenOfARemote) {
  FixedSite site;
  WriteSingleLineFiles(site.nm);
  auto lines = site.Lines("DebugData.txt");
  ASSERT_EQ(lines.size(), 27u);
  EXPECT_EQ(lines[0], "NBX Nimbometer debug information --------------------------------");
  EXPECT_TRUE(std::regex_match(
      lines[1], std::regex(R"(Serial num \[1234\] fw version \[6\.10\] sw version \[\d+\.\d\d\.\d\d\d\] port \[COM3\])")))
      << lines[1];
  const std::vector<std::string> expected = {
      "Output directory [" + site.dir.path() + "]",
      "Local Time : 2026/11/21 22:00:05",
      "Last Update : 2026/11/21 21:59:58",
      "Units: Temperature [C] Speed [K]",
      "Readings:",
      "* Clouds:      -1850 -1846  [-20.125]-> adjusted sky temp: [-18.46]",
      "* Ambient:     512 513  [7.5] Temperature : [7.5]",
      "* Sky Quality: 250000 249000  [19.564]",
      "* Rain sensor: 3120 3127.4  [3123.7]",
      "* Rain temp:   400 401  [2.25]",
      "* Rain duty:   [0.35]",
      "* Wind speed:  12 12.5  [12.25] Gust [19.96]",
      "* Relative humidity [63.4] Temp by relative humidity [9.5] calculated dew point [0.74]",
      "* Absolute pressure [1001.25] Relative [1013.2]",
      "* Voltage:  520 521  [5]",
      "Params:",
      "K factors: 33 0 4 100 100 0 0",
      "Heater: 0 20 6 4 10 60 600 10 10",
      "Limits: -5 0 30 3200 2800 0 5 10 999 2100 6 0 50 80 100 980 1030 1200",
      "Switch: Unknown [1]",
      "Errors: [4]",
      "Zener [2.54] LDRMaxRes [2000] LDRPullUp [56] Rain Beta [3450] Rain res at 25 [1] Rain pullup [1]",
      "Safe [1]",
      "Last unsafe: 2026/11/21 03:15:00",
      "NBX Halden debug information end ----------------------------",
  };
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(lines[i + 2], expected[i]) << "line " << i + 3;
  EXPECT_TRUE(site.Read("DebugData.txt").ends_with("\r\n"));

  // A remote on a decimal-comma machine, without the optional sensors.
  Nimbometer& nm = site.nm;
  nm.config.NMRole = {false, true};
  nm.config.NetFileName = "net.dat";
  nm.state.SQMPresent = false;
  nm.state.HumidityPresent = 0;
  nm.state.PressurePresent = 0;
  nm.state.LastReading.reset();
  nm.state.Value_Unsafe = true;
  site.host.decimalSeparator = ',';
  WriteSingleLineFiles(nm);
  lines = site.Lines("DebugData.txt");
  ASSERT_EQ(lines.size(), 26u) << "no last update before the first reading";
  EXPECT_EQ(lines[1], "Remote reading from [" + site.dir.path() + "/net.dat]");
  EXPECT_EQ(lines[6], "* Clouds:       [-20,125]-> adjusted sky temp: [-18,46]");
  EXPECT_EQ(lines[8], "* Light:  [19,564]");
  EXPECT_EQ(lines[14], "* Pressure sensor not present");
  EXPECT_EQ(lines[22], expected[21]) << "the electrical line keeps its points";
  EXPECT_EQ(lines[23], "Safe [0]");
}

TEST(DebugRecord, PlainNumbers) {
  const std::pair<double, const char*> rows[] = {{-0.0, "0"},       {0.1 + 0.2, "0.3"}, {0.0001, "0.0001"},
                                                  {0.00001, "1E-05"}, {123456789012345, "123456789012345"},
                                                  {1e15, "1E+15"}};
  for (const auto& [value, text] : rows) EXPECT_EQ(PlainNumber(value, '.'), text) << value;
}

}  // namespace
}  // namespace nbx
