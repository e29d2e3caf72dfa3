#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <type_traits>

#include "fixed_site.h"
#include "device/link_life.h"
#include "device/remote_reading.h"
#include "editing/master_constants.h"
#include "outputs/data_outputs.h"
#include "outputs/transfer_file.h"
#include "support/child_process.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

using test::FixedSite;

// The test's own reading of the layout, little-endian at the offsets of the
// table, so that writer and reader cannot agree on a wrong one.
static_assert(std::endian::native == std::endian::little);
struct Bytes {
  std::string b = std::string(620, ' ');
  template <class T = double>
  void Put(std::size_t at, std::type_identity_t<T> v) { std::memcpy(b.data() + at, &v, sizeof v); }
  void Text(std::size_t at, const std::string& latin1) { b.replace(at, latin1.size(), latin1); }
  template <class T = double>
  T Get(std::size_t at) const {
    T v;
    std::memcpy(&v, b.data() + at, sizeof v);
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
  site.nm.config.ColorRain[1] = {"Nass\xC3\xA4\xE2\x98\x81\xC3\xBF\xC0\xAF und sehr viel mehr Text", 0x123456};
  site.nm.display.LblHeating.Caption = "Heating UP";
  WriteTransferFile(site.nm);
  Bytes f{site.Read("NBX_NMNetData.dat")};
  ASSERT_EQ(f.b.size(), 620u);
  const std::pair<std::size_t, double> doubles[] = {
      {0, 7.5}, {16, -20.125}, {25, 8.04}, {65, 1}, {89, 63.4}, {113, 270}, {121, 19.96}, {129, 0},
      {137, ToSerialDate({2026, 11, 21, 21, 59, 58})},
      {179 + 4 * 32, 2800},  // rain band 1, the fifth record
      // HeatTemp(0), CloudTempK1, UnknowCloudGT, UnknownDayGT
      {467, 0}, {467 + 8 * 8, 33}, {467 + 13 * 8, 30}, {467 + 15 * 8, 60000}};
  for (const auto& [at, value] : doubles) EXPECT_EQ(f.Get(at), value) << "at " << at;
  EXPECT_EQ(f.b[24], 'C');
  EXPECT_EQ(f.b.substr(145, 30), "Heating UP" + std::string(20, ' '));
  EXPECT_EQ(f.Get<std::uint32_t>(175), 0x0000C0u);
  // The band's caption one byte a character, "?" for what Latin-1 lacks and
  // for each byte of an overlong sequence, cut to 20.
  EXPECT_EQ(f.Get<std::uint32_t>(179 + 4 * 32 + 8), 0x123456u);
  EXPECT_EQ(f.b.substr(179 + 4 * 32 + 12, 20), "Nass\xE4?\xFF?? und sehr v");
  EXPECT_EQ(f.b[611], 'K');
  EXPECT_EQ(f.Get<std::int16_t>(612), -1);
  EXPECT_EQ(f.Get<std::int32_t>(614), 39);
  EXPECT_EQ(f.Get<std::int16_t>(618), -1);

  // Without the optional sensors the master tells so with -1.
  site.nm.state.HumidityPresent = 0;
  site.nm.state.PressurePresent = 0;
  site.nm.state.SQMPresent = false;
  WriteTransferFile(site.nm);
  f.b = site.Read("NBX_NMNetData.dat");
  for (std::size_t at : {81, 89, 97}) EXPECT_EQ(f.Get(at), -1.0) << "at " << at;
  EXPECT_EQ(f.Get<std::int16_t>(618), 0);

  // A vanished share: "w41", nothing else.
  site.nm.config.NetPathMaster = site.File("gone");
  WriteTransferFile(site.nm);
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "w41");
}

TEST(TransferFile, ARecordBuiltByHandIsReadRight) {
  FixedSite site;
  MakeRemote(site, "C", "K");
  struct Field {
    std::size_t at;
    double written;
    double SiteState::*value;
    double read;
  };
  // A master in F and mph; the remote takes all in C and km/h but the dew point.
  const Field fields[] = {
      {0, 50, &SiteState::Value_Temp, 10},          {16, -4, &SiteState::Value_CloudRaw, -20},
      {25, 41, &SiteState::Value_CloudTemp, 5},     {33, 2900, &SiteState::Value_Rain, 2900},
      {41, 0.25, &SiteState::Value_RainHeat, 0.25}, {49, 212, &SiteState::Value_RainTemp, 100},
      {57, 1234, &SiteState::Value_Day, 1234},      {73, 3.5, &SiteState::Value_Cycle, 3.5},
      {81, 30, &SiteState::Value_DewPointT, 30},    {97, 1010, &SiteState::Value_RelPressure, 1010},
      {105, 10, &SiteState::Value_Wind, 16.09344},  {113, 90, &SiteState::Value_WindDir, 90},
      {121, 20, &SiteState::Value_Gust, 32.18688}};
  Bytes f;
  for (const Field& field : fields) f.Put(field.at, field.written);
  f.Text(24, "F");
  f.Put(65, 0.0);   // Switch: anything but 1 is closed
  f.Put(89, -1.0);  // Humidity: no sensor
  f.Put(137, site.nm.NowSerial());
  f.Text(145, "Heat Impulse - Warming up");
  f.Put<std::int32_t>(175, 255);
  f.Text(179 + 12, "Klar\xE9");
  f.Put(467 + 8 * 8, 40.0);  // CloudTempK1
  f.Put(467 + 17 * 8, 7.0);  // CloudTempK7
  f.Text(611, "M");
  f.Put<std::int16_t>(612, -1);
  f.Put<std::int16_t>(618, 0);
  test::WriteFile(site.File("NBX_NMNetData.dat"), f.b + "trailing bytes are ignored");

  EXPECT_TRUE(ReadTransferFile(site.nm));
  const SiteState& s = site.nm.state;
  for (const Field& field : fields) EXPECT_DOUBLE_EQ(s.*field.value, field.read) << "at " << field.at;
  EXPECT_EQ(s.Value_Switch, 2);
  EXPECT_EQ(s.HumidityPresent, 0);
  EXPECT_EQ(s.PressurePresent, 1);
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

  // The master's signs of a sensor without a reading (the day's without a sky
  // quality sensor). Humidity stays absent for the run, whatever a later record says.
  const Field missing[] = {{0, 100, &SiteState::Value_Temp, 999},   {16, 99, &SiteState::Value_CloudTemp, 99900},
                           {33, -1, &SiteState::Value_Rain, -10},   {57, 65536, &SiteState::Value_Day, 99999},
                           {105, -1, &SiteState::Value_Wind, 9999}};
  for (const Field& field : missing) f.Put(field.at, field.written);
  f.Put(89, 55.0);
  test::WriteFile(site.File("NBX_NMNetData.dat"), f.b);
  ReadTransferFile(site.nm);
  for (const Field& field : missing) EXPECT_EQ(s.*field.value, field.read) << "at " << field.at;
  EXPECT_EQ(site.nm.display.BarTemperature[0].Caption, " ");
  EXPECT_EQ(s.WindUnknownCount, 6);
  EXPECT_EQ(s.HumidityPresent, 0);
}

TEST(TransferFile, AMastersRecordOnARemoteThenFailedAndOldReads) {
  FixedSite site;
  MakeRemote(site, "F", "m");
  const SiteState& s = site.nm.state;
  // Missing on the first read: no reading yet counts as too old, so the
  // values go at once.
  EXPECT_FALSE(ReadTransferFile(site.nm));
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "r31");
  EXPECT_TRUE(s.XFERFileErr);
  EXPECT_FALSE(s.CycleBusy);
  EXPECT_EQ(s.Value_Temp, 999);
  EXPECT_EQ(s.CloudUnknownCount, 6);
  EXPECT_EQ(site.host.cyclesProcessed, 1);

  // A real master's record, in the remote's units, with the tables it carries.
  FixedSite master;
  master.nm.config.NetPathMaster = site.dir.path();
  WriteTransferFile(master.nm);
  EXPECT_TRUE(ReadTransferFile(site.nm));
  EXPECT_FALSE(s.XFERFileErr);
  EXPECT_DOUBLE_EQ(s.Value_Temp, 45.5);
  EXPECT_DOUBLE_EQ(s.Value_Wind, 12.25 / 3.6);
  EXPECT_EQ(s.Value_HumidityRel, 63.4);
  EXPECT_EQ(s.Value_Switch, 1);
  EXPECT_TRUE(s.SQMPresent);
  EXPECT_EQ(s.TransferCopy.Bands[8].Caption, "Very Light");
  EXPECT_EQ(s.TransferCopy.HeatMinValue, 10);
  EXPECT_EQ(site.Read("NBX_SLD.dat").substr(23, 4), "F m ") << "the remote's own files, in its units";

  // A record whose reading has no date is a failed read: it could never be
  // seen to age. The last values stand while young, and no cycle runs.
  const std::optional<double> goodDate = s.LastReading;
  for (double noDate : {std::nan(""), 1e300}) {
    master.nm.state.LastReading = noDate;
    WriteTransferFile(master.nm);
    EXPECT_FALSE(ReadTransferFile(site.nm)) << noDate;
    EXPECT_EQ(site.nm.display.StatusBar2.Caption, "r31");
    EXPECT_EQ(s.LastReading, goodDate) << "the good record's date stands";
    EXPECT_DOUBLE_EQ(s.Value_Temp, 45.5);
  }
  EXPECT_EQ(site.host.cyclesProcessed, 2);

  // A master whose clock runs two hours ahead: the age counts either way.
  // On a whole second: the read's half-second pause stays within it.
  site.time.RunFor(1000 - site.time.NowMs() % 1000);
  master.nm.state.LastReading = AddSeconds(site.nm.NowSerial(), 7200);
  WriteTransferFile(master.nm);
  EXPECT_FALSE(ReadTransferFile(site.nm));
  EXPECT_EQ(site.nm.display.StatusBar.Caption, "Reading is -7200 sec wrong");
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "w42");
  EXPECT_DOUBLE_EQ(s.Value_Temp, 45.5) << "an old record is still read";
}

// A master gone still is one whose record stood through ten reads AND five
// minutes; the values go Unknown at the first read where both hold. A short
// period makes the time bind, a long one the count. The communication alarm
// follows the age of the data meanwhile. Remote and master share one clock.
TEST(RemoteStation, AStillRecordBlanksAfterTenReadsAndFiveMinutes) {
  for (int period : {5, 60}) {
    SCOPED_TRACE(period);
    test::TempDir share;
    test::SimStation remote;
    Nimbometer master;
    Config& c = remote.nm.config;
    SiteState& s = remote.nm.state;
    c.NMRole = {false, true};
    c.NetPathRemote = c.LblPathNameCCDAP4 = c.LblPathName = master.config.NetPathMaster = share.path();
    c.COMTimeout = 20;
    c.RefreshPeriod = period;
    c.AlarmCom = {1, "lost.wav"};
    master.io.clock = &remote.time;
    master.io.host = &remote.host;
    master.state.Value_Temp = 11.5;
    const auto masterWrites = [&] {
      master.state.LastReading = master.NowSerial();
      WriteTransferFile(master);
    };
    const auto age = [&] { return (remote.nm.NowSerial() - *s.LastReading) * 86400; };
    masterWrites();
    StartAction(remote.nm);
    remote.RunPeriods(1);
    EXPECT_FALSE(s.RemoteCommAlarmOn);
    remote.time.RunUntil([&] { return s.LastReading && (s.SameReadingCount >= 10 || age() >= 300); }, 900000);
    EXPECT_EQ(s.Value_Temp, 11.5) << "one of the two alone keeps the values";
    remote.time.RunUntil([&] { return s.Value_Temp == 999; }, 900000);
    EXPECT_GE(s.SameReadingCount, 10);
    EXPECT_GE(age(), 300);
    EXPECT_TRUE(s.SameReadingCount == 10 || age() < 300 + period) << "blanked a read late";
    EXPECT_EQ(s.Value_CloudRaw, 99900);
    EXPECT_EQ(s.Value_Rain, -10);
    EXPECT_TRUE(s.RemoteCommAlarmOn);
    EXPECT_TRUE(s.AlarmHeld) << "the safety step must not stop it";
    if (period > 20) continue;
    masterWrites();
    remote.RunPeriods(1);
    EXPECT_FALSE(s.RemoteCommAlarmOn);
    EXPECT_FALSE(s.AlarmHeld);
    // Unchecking the box ends a sounding alarm, old data or not.
    remote.RunPeriods(5);
    ASSERT_TRUE(s.RemoteCommAlarmOn);
    c.AlarmCom.Value = 0;
    remote.RunPeriods(1);
    EXPECT_FALSE(s.RemoteCommAlarmOn);
  }
}

}  // namespace
}  // namespace nbx
