#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <csignal>
#include <filesystem>
#include <regex>

#include "support/child_process.h"

namespace nbx {
namespace {

using namespace std::chrono_literals;
using test::ChildProcess;

// A headless station with its own settings file; the lines it prints per cycle.
struct Station {
  Station(const std::string& settings, const std::string& home)
      : process(NBX_NIMBOMETER_PATH, {"--headless", "--settings", settings},
                {"XDG_CONFIG_HOME=" + home + "/config", "HOME=" + home}) {}
  bool NextCycle(std::string& line, std::chrono::milliseconds timeout = 10s) {
    while (process.ReadLine(line, timeout))
      if (line.find(" sky ") != std::string::npos) return true;
    return false;
  }
  ChildProcess process;
};

std::string Field(const std::string& line, const std::string& name) {
  std::smatch m;
  return std::regex_search(line, m, std::regex("  " + name + " (\\S+)")) ? m[1].str() : "";
}

// A JSON file that its writer may be rewriting just now: read until it parses.
QJsonObject ReadJson(const std::string& path) {
  for (int attempt = 0; attempt < 50; ++attempt) {
    QJsonParseError error{};
    const QJsonDocument doc =
        QJsonDocument::fromJson(QByteArray::fromStdString(test::ReadFile(path)), &error);
    if (error.error == QJsonParseError::NoError && doc.isObject()) return doc.object();
    std::this_thread::sleep_for(20ms);
  }
  ADD_FAILURE() << "no valid JSON in " << path;
  return {};
}

TEST(MasterAndRemote, TheRemoteFollowsTheMasterAndNoticesWhenItStops) {
  test::TempDir dir;
  for (const char* sub : {"share", "master", "remote"}) std::filesystem::create_directory(dir.File(sub));

  // The box: its ambient comes from the humidity sensor, as warm as the
  // infrared sensor's body, so that both stations take the same ambient.
  const std::string link = dir.File("ttyNBX");
  ChildProcess box(NBX_BOXSIM_PATH, {"--link", link, "skyraw=-1852", "rain=3123", "humiditytemp=12",
                                     "skysensor=12"});
  std::string line;
  ASSERT_TRUE(box.ReadLine(line, 5s) && line.rfind("PTY ", 0) == 0) << line;

  test::WriteFile(dir.File("master.ini"),
                  "[Communication]\nPortName=" + link + "\nRefreshPeriod=1\nTimeout=1\n"
                  "[Window]\nPathName=" + dir.File("master") + "\nFileName=night\nAutoStartRecording=1\n"
                  // A wind mean of one reading: the mean does not move from cycle to cycle.
                  "AvgWindCalc=1\n"
                  "[COMMFile]\nNMRole0=True\nNMRole1=False\nNetFilePath=" + dir.File("share") +
                  "\nNetFileName=NBX_NMNetData.dat\nFileNameCCDAP4=NBX_SLD.dat\nPathNameCCDAP4=" +
                  dir.File("master") + "\n");
  test::WriteFile(dir.File("remote.ini"),
                  "[Communication]\nRefreshPeriod=1\nCOMTimeout=10\n"
                  "[Window]\nPathName=" + dir.File("remote") + "\nFileName=night\nAutoStartRecording=1\n"
                  "[COMMFile]\nNMRole0=False\nNMRole1=True\nNetFilePathRemote=" + dir.File("share") +
                  "\nNetFileName=NBX_NMNetData.dat\nFileNameCCDAP4=NBX_SLD.dat\nPathNameCCDAP4=" +
                  dir.File("remote") + "\n");

  Station master(dir.File("master.ini"), dir.path());
  std::string masterLine;
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(master.NextCycle(masterLine)) << "master cycle " << i;
  // -18.52 corrected for an ambient of 12 degrees: -(0.33 x 12 + 0.04 x exp(1.2)).
  ASSERT_EQ(Field(masterLine, "sky"), "-22.6") << masterLine;

  Station remote(dir.File("remote.ini"), dir.path());
  std::string remoteLine;
  bool mirrored = false;
  for (int i = 0; i < 6 && !mirrored && remote.NextCycle(remoteLine); ++i)
    mirrored = Field(remoteLine, "sky") == Field(masterLine, "sky");
  ASSERT_TRUE(mirrored) << remoteLine << "\n" << masterLine;
  for (const char* field : {"ambient", "rain", "humidity", "wind"})
    EXPECT_EQ(Field(remoteLine, field), Field(masterLine, field)) << field << "\n" << remoteLine;
  EXPECT_EQ(remoteLine.find("SAFE") != std::string::npos, masterLine.find("SAFE") != std::string::npos);
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
  const std::string remoteCsv = test::ReadFile(dir.File("remote/night.csv"));
  EXPECT_NE(remoteCsv.find("\"Relative Pressure\","), std::string::npos) << remoteCsv;
  EXPECT_EQ(remoteCsv.find("Absolute Pressure"), std::string::npos) << "a remote has no absolute pressure";
  EXPECT_NE(test::ReadFile(dir.File("master/night.csv")).find("\"Absolute Pressure\","), std::string::npos);

  // The master stops writing: past COMTimeout the remote says so, and keeps
  // the last values, which are far from five minutes old.
  master.process.Signal(SIGTERM);
  EXPECT_EQ(master.process.Wait(10s), 0);
  bool old = false;
  for (int i = 0; i < 30 && !old && remote.NextCycle(remoteLine); ++i)
    old = Field(remoteLine, "codes") == "w42";
  EXPECT_TRUE(old) << remoteLine;
  EXPECT_EQ(Field(remoteLine, "sky"), Field(masterLine, "sky")) << remoteLine;

  remote.process.Signal(SIGTERM);
  EXPECT_EQ(remote.process.Wait(10s), 0);
}

}  // namespace
}  // namespace nbx
