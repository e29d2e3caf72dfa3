#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <csignal>
#include <filesystem>
#include <thread>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

// A JSON file that its writer may be rewriting just now: read until it parses.
QJsonObject ReadJson(const std::string& path) {
  for (int attempt = 0; attempt < 50; ++attempt) {
    QJsonParseError error{};
    const QJsonDocument doc =
        QJsonDocument::fromJson(QByteArray::fromStdString(ReadFile(path)), &error);
    if (error.error == QJsonParseError::NoError && doc.isObject()) return doc.object();
    std::this_thread::sleep_for(20ms);
  }
  ADD_FAILURE() << "no valid JSON in " << path;
  return {};
}

TEST(MasterAndRemote, TheRemoteFollowsTheMasterAndNoticesWhenItStops) {
  TempDir dir;
  for (const char* sub : {"share", "master", "remote"}) std::filesystem::create_directory(dir.File(sub));

  // The box: its ambient comes from the humidity sensor, as warm as the
  // infrared sensor's body, so that both stations take the same ambient.
  BoxProgram box(dir, {"skyraw=-1852", "rain=3123", "humiditytemp=12", "skysensor=12"});
  ASSERT_TRUE(box.ready);

  const IniSections master = MasterSettings(
      box.link, dir.File("master"),
      {// A wind mean of one reading: the mean does not move from cycle to cycle.
       {"Window", {{"AvgWindCalc", "1"}}},
       {"COMMFile",
        {{"NMRole0", "True"},
         {"NMRole1", "False"},
         {"NetFilePath", dir.File("share")},
         {"NetFileName", "NBX_NMNetData.dat"},
         {"FileNameCCDAP4", "NBX_SLD.dat"}}}});
  const IniSections remote{
      {"Communication", {{"RefreshPeriod", "1"}, {"COMTimeout", "10"}}},
      {"Window", {{"PathName", dir.File("remote")}, {"FileName", "night"}, {"AutoStartRecording", "1"}}},
      {"COMMFile",
       {{"NMRole0", "False"},
        {"NMRole1", "True"},
        {"NetFilePathRemote", dir.File("share")},
        {"NetFileName", "NBX_NMNetData.dat"},
        {"FileNameCCDAP4", "NBX_SLD.dat"},
        {"PathNameCCDAP4", dir.File("remote")}}}};

  StationProgram masterStation(dir, master, "master");
  std::string masterLine;
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(masterStation.NextCycle(masterLine)) << "master cycle " << i;
  // -18.52 corrected for an ambient of 12 degrees: -(0.33 x 12 + 0.04 x exp(1.2)).
  ASSERT_EQ(Field(masterLine, "sky"), "-22.6") << masterLine;

  StationProgram remoteStation(dir, remote, "remote");
  std::string remoteLine;
  auto mirrored = [&](const std::string& l) { return Field(l, "sky") == Field(masterLine, "sky"); };
  ASSERT_TRUE(remoteStation.CycleWhere(mirrored, 6, remoteLine)) << remoteLine << "\n" << masterLine;
  for (const char* field : {"ambient", "rain", "humidity", "wind"})
    EXPECT_EQ(Field(remoteLine, field), Field(masterLine, field)) << field << "\n" << remoteLine;
  EXPECT_EQ(IsUnsafe(remoteLine), IsUnsafe(masterLine));
  EXPECT_EQ(Field(remoteLine, "codes"), "") << remoteLine;

  // The remote judges for itself from the mirrored values: the same
  // conditions and verdict in its own files.
  const QJsonObject m = ReadJson(dir.File("master/nbx_json.dat"));
  const QJsonObject r = ReadJson(dir.File("remote/nbx_json.dat"));
  for (const char* key : {"clouds", "cloudsSafe", "temp", "rain", "rainSafe", "windSafe", "safe", "hum"})
    EXPECT_EQ(r.value(key), m.value(key)) << key;
  EXPECT_EQ(r.value("nminfo").toString(), "Remote mode");
  EXPECT_EQ(r.value("slddata").toString().mid(93), m.value("slddata").toString().mid(93))
      << "conditions and verdict at their offsets";
  EXPECT_FALSE(std::filesystem::exists(dir.File("remote/NBX_NMNetData.dat")));
  const std::string remoteCsv = ReadFile(dir.File("remote/night.csv"));
  EXPECT_NE(remoteCsv.find("\"Relative Pressure\","), std::string::npos) << remoteCsv;
  EXPECT_EQ(remoteCsv.find("Absolute Pressure"), std::string::npos) << "a remote has no absolute pressure";
  EXPECT_NE(ReadFile(dir.File("master/night.csv")).find("\"Absolute Pressure\","), std::string::npos);

  // The master stops writing: past COMTimeout the remote says so, and keeps
  // the last values, which are far from five minutes old.
  masterStation.process.Signal(SIGTERM);
  EXPECT_EQ(masterStation.process.Wait(10s), 0);
  auto old = [](const std::string& l) { return Field(l, "codes") == "w42"; };
  EXPECT_TRUE(remoteStation.CycleWhere(old, 30, remoteLine)) << remoteLine;
  EXPECT_EQ(Field(remoteLine, "sky"), Field(masterLine, "sky")) << remoteLine;

  remoteStation.process.Signal(SIGTERM);
  EXPECT_EQ(remoteStation.process.Wait(10s), 0);
}

}  // namespace
}  // namespace nbx::test
