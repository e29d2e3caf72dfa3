#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>

#include "fixed_site.h"
#include "outputs/data_outputs.h"
#include "outputs/transfer_file.h"

namespace nbx {
namespace {

using test::FixedSite;

// The test's own reading of the layout, byte by byte at the offsets of the
// table, so that writer and reader cannot agree on a wrong one.
struct Bytes {
  std::string b = std::string(620, ' ');
  void Put(std::size_t at, std::uint64_t v, int size) {
    for (int i = 0; i < size; ++i) b[at + i] = static_cast<char>((v >> (8 * i)) & 0xFF);
  }
  void Double(std::size_t at, double v) {
    std::uint64_t u;
    std::memcpy(&u, &v, 8);
    Put(at, u, 8);
  }
  void Text(std::size_t at, const std::string& latin1) { b.replace(at, latin1.size(), latin1); }
  std::uint64_t Get(std::size_t at, int size) const {
    std::uint64_t v = 0;
    for (int i = 0; i < size; ++i) v |= std::uint64_t(static_cast<unsigned char>(b[at + i])) << (8 * i);
    return v;
  }
  double GetDouble(std::size_t at) const {
    const std::uint64_t u = Get(at, 8);
    double v;
    std::memcpy(&v, &u, 8);
    return v;
  }
};

// A remote beside the fixed site, reading the same folder.
void MakeRemote(FixedSite& site, const char* tempUnit, const char* speedUnit) {
  Config& c = site.nm.config;
  c.NMRole = {false, true};
  c.UnitTempStr = tempUnit;
  c.UnitSpeedStr = speedUnit;
  site.nm.state.LastReading.reset();
  site.nm.state.HumidityPresent = -1;
  site.nm.state.PressurePresent = -1;
}

TEST(TransferFile, WrittenAtTheOffsetsOfTheTable) {
  FixedSite site;
  site.nm.config.ColorRain[1] = {"Nass\xC3\xA4\xE2\x98\x81 und sehr viel mehr Text", 0x123456};
  site.nm.display.LblHeating.Caption = "Heating UP";
  WriteTransferFile(site.nm);
  Bytes f{site.Read("NBX_NMNetData.dat")};
  ASSERT_EQ(f.b.size(), 620u);
  EXPECT_EQ(f.GetDouble(0), 7.5);
  EXPECT_EQ(f.GetDouble(16), -20.125);
  EXPECT_EQ(f.b[24], 'C');
  EXPECT_EQ(f.GetDouble(25), 8.04);
  EXPECT_EQ(f.GetDouble(65), 1.0);
  EXPECT_EQ(f.GetDouble(89), 63.4);
  EXPECT_EQ(f.GetDouble(121), 19.96);
  EXPECT_EQ(f.GetDouble(129), 0.0);
  EXPECT_EQ(f.GetDouble(137), ToSerialDate({2026, 11, 21, 21, 59, 58}));
  EXPECT_EQ(f.b.substr(145, 30), "Heating UP" + std::string(20, ' '));
  EXPECT_EQ(f.Get(175, 4), 0x0000C0u);
  // Rain band 1 is the fifth record: its caption one byte a character, "?"
  // for what Latin-1 lacks, cut to 20.
  EXPECT_EQ(f.GetDouble(179 + 4 * 32), 2800.0);
  EXPECT_EQ(f.Get(179 + 4 * 32 + 8, 4), 0x123456u);
  EXPECT_EQ(f.b.substr(179 + 4 * 32 + 12, 20), "Nass\xE4? und sehr viel");
  EXPECT_EQ(f.GetDouble(467), 0.0);            // HeatTemp(0)
  EXPECT_EQ(f.GetDouble(467 + 8 * 8), 33.0);   // CloudTempK1
  EXPECT_EQ(f.GetDouble(467 + 13 * 8), 30.0);  // UnknowCloudGT
  EXPECT_EQ(f.GetDouble(467 + 15 * 8), 60000.0);
  EXPECT_EQ(f.b[611], 'K');
  EXPECT_EQ(f.Get(612, 2), 0xFFFFu);
  EXPECT_EQ(f.Get(614, 4), 39u);
  EXPECT_EQ(f.Get(618, 2), 0xFFFFu);

  // Without the optional sensors the master tells so with -1.
  site.nm.state.HumidityPresent = 0;
  site.nm.state.PressurePresent = 0;
  site.nm.state.SQMPresent = false;
  WriteTransferFile(site.nm);
  f.b = site.Read("NBX_NMNetData.dat");
  EXPECT_EQ(f.GetDouble(81), -1.0);
  EXPECT_EQ(f.GetDouble(89), -1.0);
  EXPECT_EQ(f.GetDouble(97), -1.0);
  EXPECT_EQ(f.Get(618, 2), 0u);

  // A vanished share: "w41", nothing else.
  site.nm.config.NetPathMaster = site.File("gone");
  WriteTransferFile(site.nm);
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "w41");
}

TEST(TransferFile, ARecordBuiltByHandIsReadRight) {
  FixedSite site;
  MakeRemote(site, "C", "K");
  Bytes f;
  f.Double(0, 50.0);   // Temp
  f.Double(8, -1.0);   // Cloud
  f.Double(16, -4.0);  // CloudRaw
  f.Text(24, "F");
  f.Double(25, 41.0);  // CloudTemp
  f.Double(33, 2900);  // Rain
  f.Double(41, 0.25);  // RainHeat
  f.Double(49, 212);   // RainTemp
  f.Double(57, 1234);  // Day
  f.Double(65, 0.0);   // Switch: anything but 1 is closed
  f.Double(73, 3.5);   // Cycle
  f.Double(81, 30.0);  // DewPoint, taken in the master's unit
  f.Double(89, -1.0);  // Humidity: no sensor
  f.Double(97, 1010);  // RelPressure
  f.Double(105, 10);   // Wind, mph
  f.Double(113, 90);   // WindDir
  f.Double(121, 20);   // Gust
  f.Double(137, site.nm.NowSerial());
  f.Text(145, "Heat Impulse - Warming up");
  f.Put(175, 255, 4);
  f.Text(179 + 12, "Klar\xE9");
  f.Double(467 + 8 * 8, 40.0);  // CloudTempK1
  f.Double(467 + 17 * 8, 7.0);  // CloudTempK7
  f.Text(611, "M");
  f.Put(612, 0xFFFF, 2);
  f.Put(618, 0, 2);
  test::WriteFile(site.File("NBX_NMNetData.dat"), f.b + "trailing bytes are ignored");

  EXPECT_TRUE(ReadTransferFile(site.nm));
  const SiteState& s = site.nm.state;
  EXPECT_DOUBLE_EQ(s.Value_Temp, 10.0);
  EXPECT_DOUBLE_EQ(s.Value_CloudRaw, -20.0);
  EXPECT_DOUBLE_EQ(s.Value_CloudTemp, 5.0);
  EXPECT_DOUBLE_EQ(s.Value_RainTemp, 100.0);
  EXPECT_EQ(s.Value_Rain, 2900);
  EXPECT_EQ(s.Value_RainHeat, 0.25);
  EXPECT_EQ(s.Value_Day, 1234);
  EXPECT_EQ(s.Value_Switch, 2);
  EXPECT_EQ(s.Value_Cycle, 3.5);
  EXPECT_EQ(s.Value_DewPointT, 30.0);
  EXPECT_EQ(s.HumidityPresent, 0);
  EXPECT_EQ(s.PressurePresent, 1);
  EXPECT_DOUBLE_EQ(s.Value_Wind, 16.09344);
  EXPECT_DOUBLE_EQ(s.Value_Gust, 32.18688);
  EXPECT_EQ(s.Value_WindDir, 90);
  EXPECT_TRUE(s.IsWindPresent);
  EXPECT_FALSE(s.SQMPresent);
  EXPECT_EQ(site.nm.display.LblSwitch.Caption, "Closed");
  EXPECT_EQ(site.nm.display.LblHeating.Caption, "Heat Impulse - Warming up");
  EXPECT_EQ(site.nm.display.LblHeating.ForeColor, 255u);
  EXPECT_EQ(s.TransferCopy.Bands[0].Caption, "Klar\xC3\xA9");
  EXPECT_TRUE(site.nm.display.ButtReload.Visible);
  EXPECT_EQ(site.host.cyclesProcessed, 1) << "the per-cycle work ran on the values";

  ReloadMasterConstants(site.nm);
  EXPECT_EQ(site.nm.config.CloudTempK1, 40.0);
  EXPECT_EQ(site.nm.config.CloudTempK7, 7.0);

  // The master's signs of a sensor without a reading. Humidity stays absent
  // for the run, whatever a later record says.
  f.Double(0, 100);     // Temp
  f.Double(16, 99);     // CloudRaw
  f.Double(33, -1);     // Rain
  f.Double(57, 65536);  // Day, without a sky quality sensor
  f.Double(105, -1);    // Wind
  f.Double(89, 55.0);
  test::WriteFile(site.File("NBX_NMNetData.dat"), f.b);
  ReadTransferFile(site.nm);
  EXPECT_EQ(s.Value_Temp, 999);
  EXPECT_EQ(site.nm.display.BarTemperature[0].Caption, " ");
  EXPECT_EQ(s.Value_CloudRaw, 99900);
  EXPECT_EQ(s.Value_CloudTemp, 99900);
  EXPECT_EQ(s.Value_Rain, -10);
  EXPECT_EQ(s.Value_Day, 99999);
  EXPECT_EQ(s.Value_Wind, 9999);
  EXPECT_EQ(s.WindUnknownCount, 6);
  EXPECT_EQ(s.HumidityPresent, 0);
}

TEST(TransferFile, WriteThenReadInAnotherUnitGivesTheSameValues) {
  FixedSite master;
  master.nm.display.LblHeating.Caption = "Heating DOWN";
  WriteTransferFile(master.nm);

  FixedSite remote;
  remote.nm.config.NetPathRemote = master.dir.path();
  MakeRemote(remote, "F", "m");
  ASSERT_TRUE(ReadTransferFile(remote.nm));
  const SiteState& m = master.nm.state;
  const SiteState& r = remote.nm.state;
  EXPECT_DOUBLE_EQ(r.Value_Temp, m.Value_Temp * 9 / 5 + 32);
  EXPECT_DOUBLE_EQ(r.Value_CloudRaw, m.Value_CloudRaw * 9 / 5 + 32);
  EXPECT_DOUBLE_EQ(r.Value_CloudTemp, m.Value_CloudTemp * 9 / 5 + 32);
  EXPECT_DOUBLE_EQ(r.Value_RainTemp, m.Value_RainTemp * 9 / 5 + 32);
  EXPECT_DOUBLE_EQ(r.Value_Wind, m.Value_Wind / 3.6);
  EXPECT_DOUBLE_EQ(r.Value_Gust, m.Value_Gust / 3.6);
  EXPECT_EQ(r.Value_DewPointT, m.Value_DewPointT);
  for (const auto field : {&SiteState::Value_Rain, &SiteState::Value_RainHeat, &SiteState::Value_Day,
                           &SiteState::Value_Cycle, &SiteState::Value_HumidityRel,
                           &SiteState::Value_RelPressure, &SiteState::Value_WindDir})
    EXPECT_EQ(r.*field, m.*field);
  EXPECT_EQ(r.Value_Switch, m.Value_Switch);
  EXPECT_EQ(r.LastReading, m.LastReading);
  EXPECT_TRUE(r.SQMPresent);
  EXPECT_EQ(remote.nm.display.LblHeating.Caption, "Heating DOWN");
  const TransferRecord& copy = r.TransferCopy;
  EXPECT_EQ(copy.Bands[8].Caption, "Very Light");
  EXPECT_EQ(copy.Bands[3].Limit, 3200);
  EXPECT_EQ(copy.HeatMinValue, 10);
  EXPECT_EQ(copy.Version, 39);
  EXPECT_FALSE(std::filesystem::exists(remote.File("NBX_NMNetData.dat"))) << "a remote writes no transfer file";
  EXPECT_EQ(remote.Read("NBX_SLD.dat").substr(23, 4), "F m ") << "the remote's own files, in its units";
}

TEST(TransferFile, FailedAndOldReads) {
  FixedSite site;
  MakeRemote(site, "C", "K");
  const SiteState& s = site.nm.state;
  // Missing on the first read: no reading yet counts as too old, so the
  // values go at once.
  EXPECT_FALSE(ReadTransferFile(site.nm));
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "r31");
  EXPECT_EQ(site.nm.display.StatusBar.Caption, "Error accessing MASTER data file");
  EXPECT_TRUE(s.XFERFileErr);
  EXPECT_FALSE(s.CycleBusy);
  EXPECT_EQ(s.Value_Temp, 999);
  EXPECT_EQ(s.Value_Cloud, 99900);
  EXPECT_EQ(s.Value_Wind, 9999);
  EXPECT_EQ(s.CloudUnknownCount, 6);
  EXPECT_EQ(site.host.cyclesProcessed, 1);

  // A good record, then a short one: the last values stand while young.
  FixedSite master;
  master.nm.config.NetPathMaster = site.dir.path();
  WriteTransferFile(master.nm);
  EXPECT_TRUE(ReadTransferFile(site.nm));
  EXPECT_FALSE(s.XFERFileErr);
  EXPECT_EQ(s.Value_Temp, 7.5);
  const std::string whole = site.Read("NBX_NMNetData.dat");
  test::WriteFile(site.File("NBX_NMNetData.dat"), whole.substr(0, 300));
  EXPECT_FALSE(ReadTransferFile(site.nm));
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "r31");
  EXPECT_EQ(s.Value_Temp, 7.5);
  EXPECT_EQ(site.host.cyclesProcessed, 2) << "a short failure runs no cycle";
  // So is a record whose reading has no date: it could never be seen to age.
  const std::optional<double> goodDate = s.LastReading;
  for (double noDate : {std::nan(""), 1e300}) {
    master.nm.state.LastReading = noDate;
    WriteTransferFile(master.nm);
    EXPECT_FALSE(ReadTransferFile(site.nm)) << noDate;
    EXPECT_EQ(site.nm.display.StatusBar2.Caption, "r31");
    EXPECT_EQ(s.LastReading, goodDate) << "the good record's date stands";
  }

  // A master whose clock runs two hours ahead: the age counts either way.
  // On a whole second: the read's half-second pause stays within it.
  site.time.RunFor(1000 - site.time.NowMs() % 1000);
  master.nm.state.LastReading = AddSeconds(site.nm.NowSerial(), 7200);
  WriteTransferFile(master.nm);
  EXPECT_FALSE(ReadTransferFile(site.nm));
  EXPECT_EQ(site.nm.display.StatusBar.Caption, "Reading is -7200 sec wrong");
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "w42");
  EXPECT_EQ(s.Value_Temp, 7.5) << "an old record is still read";
}

}  // namespace
}  // namespace nbx
