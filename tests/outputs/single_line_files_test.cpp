#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <filesystem>
#include <sys/stat.h>

#include "fixed_site.h"
#include "outputs/data_outputs.h"
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

TEST(SingleLineFiles, RecordsAreByteExactAtTheirFixedNames) {
  FixedSite site;
  ASSERT_EQ(kRecord.size(), 104u);
  WriteSingleLineFiles(site.nm);
  EXPECT_EQ(site.Read("NBX_SLD.dat"), kRecord);
  EXPECT_EQ(site.Read("NBX_SLDs.dat"), kRecord + " +19.56");
  EXPECT_EQ(site.Read("CS-NBX_SLD.dat"),
            "2026-11-21 22:00:05,05 C K  -18,5    7,5    8,0   12,3  63    0,7   0 0 0 00003 "
            "046347,91672 1 2 1 3 0 0");
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "");

  // A decimal-comma machine: every number keeps its point, but the day number.
  site.host.decimalSeparator = ',';
  site.nm.state.SQMPresent = false;
  site.nm.state.HumidityPresent = 0;
  site.nm.state.Value_Unsafe = true;
  site.nm.state.NBX_RainCondition = 3;
  site.nm.state.Value_Cloud = -1234.56;
  WriteSingleLineFiles(site.nm);
  const std::string record = site.Read("NBX_SLD.dat");
  ASSERT_EQ(record.size(), 104u);
  EXPECT_EQ(record.substr(27, 7), "1234.6 ") << "a number too long loses its leading characters";
  EXPECT_EQ(record.substr(55, 11), " 50  -20.0 ") << "no humidity sensor";
  EXPECT_EQ(record.substr(70, 4), "2 2 ");
  EXPECT_EQ(record.substr(80, 13), "046347,91672 ");
  EXPECT_EQ(record.substr(97), "3 3 1 1");
  EXPECT_EQ(site.Read("NBX_SLDs.dat"), record + " -99.99");
  EXPECT_EQ(site.Read("CS-NBX_SLD.dat").substr(27, 7), "1234,6 ");
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

ino_t Inode(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? info.st_ino : 0;
}

TEST(SingleLineFiles, RewrittenInPlaceAndDeletedAtStart) {
  FixedSite site;
  // A longer file from elsewhere is cut back to the record.
  test::WriteFile(site.File("NBX_SLD.dat"), std::string(300, 'x'));
  const ino_t before = Inode(site.File("NBX_SLD.dat"));
  WriteSingleLineFiles(site.nm);
  EXPECT_EQ(site.Read("NBX_SLD.dat"), kRecord);
  site.time.RunFor(1000);
  WriteSingleLineFiles(site.nm);
  EXPECT_EQ(site.Read("NBX_SLD.dat").substr(11, 12), "22:00:06.06 ");
  // The same file all along: no temporary file renamed over it.
  EXPECT_EQ(Inode(site.File("NBX_SLD.dat")), before);

  DeleteSingleLineFile(site.nm);
  EXPECT_FALSE(std::filesystem::exists(site.File("NBX_SLD.dat")));
  EXPECT_TRUE(std::filesystem::exists(site.File("NBX_SLDs.dat"))) << "only the single-line file goes";
  DeleteSingleLineFile(site.nm);  // nothing to delete is fine
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

TEST(JsonFile, LinesAreByteExactAndParse) {
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
}

TEST(JsonFile, ConvertsUnitsAndDropsAbsentSensors) {
  FixedSite site;
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

}  // namespace
}  // namespace nbx
