#include <gtest/gtest.h>

#include <regex>

#include "fixed_site.h"
#include "outputs/data_outputs.h"
#include "outputs/debug_record.h"

namespace nbx {
namespace {

using test::FixedSite;

TEST(DebugRecord, SnapshotOfAMasterLineByLine) {
  FixedSite site;
  WriteSingleLineFiles(site.nm);
  const auto lines = site.Lines("DebugData.txt");
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
}

TEST(DebugRecord, RemoteLocaleAndAbsentSensors) {
  FixedSite site;
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
  const auto lines = site.Lines("DebugData.txt");
  ASSERT_EQ(lines.size(), 26u) << "no last update before the first reading";
  EXPECT_EQ(lines[1], "Remote reading from [" + site.dir.path() + "/net.dat]");
  EXPECT_EQ(lines[6], "* Clouds:       [-20,125]-> adjusted sky temp: [-18,46]");
  EXPECT_EQ(lines[8], "* Light:  [19,564]");
  EXPECT_EQ(lines[14], "* Pressure sensor not present");
  EXPECT_EQ(lines[22], "Zener [2.54] LDRMaxRes [2000] LDRPullUp [56] Rain Beta [3450] Rain res at 25 [1] Rain pullup [1]");
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
