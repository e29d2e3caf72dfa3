#include <gtest/gtest.h>

#include <filesystem>

#include "device/link_life.h"
#include "fixed_site.h"
#include "outputs/data_outputs.h"
#include "outputs/user_data_file.h"

namespace nbx {
namespace {

using test::FixedSite;

const std::string kHeader =
    "\"Date\",\"Time\",\"Cloud Condition\",\"Rain Condition\",\"Brightness Condition\",\"Cloud Value\","
    "\"Cloud Sensor Temperature\",\"Rain Value\",\"Brightness Value\",\"Ambient Temperature\","
    "\"Rain Heating Percentage\",\"Rain Sensor Temperature\",\"Heating Status\",\"Switch Status\","
    "\"Read Cycle\",\"Timeout Errors\",\"Safe Status\",\"Wind Condition\",\"Wind Value\","
    "\"Relative Humidity\",\"Dew Point\",\"Raw IR Temperature\",\"Absolute Pressure\","
    "\"Relative Pressure\",";

const std::string kLine =
    "\"2026-11-21\",\"22:00:05\",\"Clear\",\"Dry\",\"Very Light\",\"-18.5\",\"8.0\",\"3124\",\"19.56\","
    "\"7.5\",\"35%\",\"2.3\",\"Heating UP\",\"Opened\",\"2.345\",\"4\",\"Safe\",\"Windy\",\"12.3\","
    "\"63\",\"0.7\",\"-20.1\",\"1001.3\",\"1013.2\",";

std::string CsvName(const FixedSite& site) { return site.nm.config.FileName + ".csv"; }

TEST(UserDataFile, HeaderAndLineAreByteExactInEitherLocale) {
  FixedSite site;
  Record_Start(site.nm, false);
  WriteUserDataLine(site.nm);
  EXPECT_EQ(site.Read("Nimbometer.csv"), kHeader + "\r\n" + kLine + "\r\n");

  // This file takes the machine's separator; Unknown below 1; the other words.
  site.host.decimalSeparator = ',';
  site.nm.state.NBX_CloudCondition = 0;
  site.nm.state.NBX_WindCondition = -1;
  site.nm.state.SQMPresent = false;
  site.nm.state.Value_Switch = 2;
  site.nm.state.Value_Unsafe = true;
  WriteUserDataLine(site.nm);
  EXPECT_EQ(site.Lines("Nimbometer.csv").back(),
            "\"2026-11-21\",\"22:00:05\",\"Unknown\",\"Dry\",\"Very Light\",\"-18,5\",\"8,0\",\"3124\","
            "\"20\",\"7,5\",\"35%\",\"2,3\",\"Heating UP\",\"Closed\",\"2,345\",\"4\",\"Unsafe\","
            "\"Unknown\",\"12,3\",\"63\",\"0,7\",\"-20,1\",\"1001,3\",\"1013,2\",");
}

TEST(UserDataFile, ColumnsFollowTheTableAndTheRemoteLosesPlace23) {
  FixedSite site;
  Config& c = site.nm.config;
  for (auto& column : c.FileColumns) column.Prt = false;
  c.FileColumns[0] = {"  Stamp  ", 2, true};
  c.FileColumns[1] = {"Sky", 6, true};
  c.FileColumns[2] = {"Nothing", 99, true};
  c.FileColumns[22] = {"Relative Pressure", 24, true};
  c.FileColumns[23] = {"Absolute Pressure", 23, true};
  Record_Start(site.nm, false);
  WriteUserDataLine(site.nm);
  EXPECT_EQ(site.Lines(CsvName(site)),
            (std::vector<std::string>{
                "\"Stamp\",\"Sky\",\"Nothing\",\"Relative Pressure\",\"Absolute Pressure\",",
                "\"22:00:05\",\"-18.5\",\"\",\"1013.2\",\"1001.3\","}));
  EXPECT_EQ(c.FileColumns[0].Hdr, "Stamp") << "the trimmed heading is kept";
  Record_Stop(site.nm);

  // On a remote the place counts, not the field: what stands at 23 goes.
  c.NMRole = {false, true};
  site.nm.state.RecordingActive = false;
  Record_Start(site.nm, false);
  WriteUserDataLine(site.nm);
  EXPECT_EQ(site.Lines(CsvName(site)),
            (std::vector<std::string>{"\"Stamp\",\"Sky\",\"Nothing\",\"Absolute Pressure\",",
                                      "\"22:00:05\",\"-18.5\",\"\",\"1001.3\","}));
}

TEST(UserDataFile, FreqSaveFiveWritesCycles1And6And11) {
  FixedSite site;
  site.nm.config.SaveFreq = 5.9;
  for (auto& column : site.nm.config.FileColumns) column.Prt = column.Cal == 8;
  Record_Start(site.nm, false);
  for (int cycle = 1; cycle <= 12; ++cycle) {
    site.nm.state.Value_Rain = cycle;
    WriteUserDataLine(site.nm);
  }
  EXPECT_EQ(site.Lines(CsvName(site)),
            (std::vector<std::string>{"\"Rain Value\",", "\"1\",", "\"6\",", "\"11\","}));

  site.nm.config.SaveFreq = -3.5;
  EXPECT_EQ(FreqSave(site.nm.config), 1);
}

TEST(UserDataFile, LastReadingOnlyHoldsTwoLinesAndD13WhenItCannotReopen) {
  FixedSite site;
  Config& c = site.nm.config;
  c.LastReadOnly = 1;
  c.LblPathName = site.dir.path() + "/data";
  std::filesystem::create_directory(c.LblPathName);
  Record_Start(site.nm, true);
  for (int cycle = 1; cycle <= 3; ++cycle) {
    site.nm.state.Value_Cycle = cycle;
    WriteUserDataLine(site.nm);
    const auto lines = site.Lines("data/Nimbometer.csv");
    ASSERT_EQ(lines.size(), 2u) << "cycle " << cycle;
    EXPECT_EQ(lines[0], kHeader);
    EXPECT_NE(lines[1].find("\"" + std::to_string(cycle) + ".000\""), std::string::npos) << lines[1];
  }

  std::filesystem::remove_all(c.LblPathName);
  WriteUserDataLine(site.nm);
  EXPECT_EQ(site.nm.display.StatusBar2.Caption, "d13");
  EXPECT_EQ(site.nm.state.RecordCycleCount, 0) << "not counted: the next cycle tries again";
  std::filesystem::create_directory(c.LblPathName);
  WriteUserDataLine(site.nm);
  EXPECT_EQ(site.Lines("data/Nimbometer.csv").size(), 2u);
}

TEST(UserDataFile, StartStopAppendAndTheRecordingOption) {
  FixedSite site;
  Nimbometer& nm = site.nm;
  Record_Start(nm, false);
  WriteUserDataLine(nm);
  Record_Start(nm, true);  // already recording: nothing changes
  Record_Stop(nm);
  WriteUserDataLine(nm);  // into the closed file: nothing
  EXPECT_EQ(site.Lines(CsvName(site)).size(), 2u);

  // Appending: a second header in the middle of the file.
  nm.state.RecordingActive = false;
  Record_Start(nm, true);
  WriteUserDataLine(nm);
  EXPECT_EQ(site.Lines(CsvName(site)), (std::vector<std::string>{kHeader, kLine, kHeader, kLine}));
  Record_Stop(nm);

  // The user switches on with the file there: the question; No empties it.
  site.host.reply = ReplyNo;
  RecOption_Click(nm, 0);
  EXPECT_EQ(site.host.messages, (std::vector<std::string>{"Append to existing file"}));
  EXPECT_TRUE(nm.state.RecordingActive);
  EXPECT_EQ(site.Lines(CsvName(site)), (std::vector<std::string>{kHeader}));
  RecOption_Click(nm, 1);
  EXPECT_FALSE(nm.state.RecordingActive);

  // Cancel: recording stays off, the file as it was.
  site.host.reply = ReplyCancel;
  RecOption_Click(nm, 0);
  EXPECT_FALSE(nm.state.RecordingActive);
  EXPECT_EQ(nm.config.RecOption, (std::array<bool, 2>{false, true}));
  EXPECT_EQ(site.Lines(CsvName(site)).size(), 1u);

  // No file name: off at once.
  nm.config.FileName = "  ";
  RecOption_Click(nm, 0);
  EXPECT_FALSE(nm.state.RecordingActive);
  EXPECT_EQ(nm.config.RecOption, (std::array<bool, 2>{false, true}));
}

// Start makes a missing data folder and says so, and deletes the single-line
// file of an earlier run before any reader can take it for a new reading.
TEST(StartChecks, TheDataFolderCodesAndTheOldSingleLineFile) {
  test::SimStation st;
  Nimbometer& nm = st.nm;
  nm.config.LblPathName = st.files.File("new/deeper");
  test::WriteFile(st.files.File("NBX_SLD.dat"), "a reading of an earlier run");
  StartAction(nm);
  EXPECT_EQ(nm.display.StatusBar2.Caption, "d11");
  EXPECT_EQ(nm.display.StatusBar2.ForeColor, colours::Red);
  EXPECT_TRUE(std::filesystem::is_directory(nm.config.LblPathName));
  EXPECT_FALSE(std::filesystem::exists(st.files.File("NBX_SLD.dat")));

  EXPECT_EQ(CheckDataFolder(nm), "");
  test::WriteFile(st.files.File("plain"), "a file in the way");
  nm.config.LblPathName = st.files.File("plain/sub");
  EXPECT_EQ(CheckDataFolder(nm), "d12");
}

}  // namespace
}  // namespace nbx
