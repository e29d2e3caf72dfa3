#include "fuzz_station.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "device/reading_cycle.h"
#include "device/stage_calls.h"
#include "device/wire_protocol.h"
#include "outputs/single_line_record.h"
#include "outputs/transfer_file.h"
#include "outputs/transfer_layout.h"

namespace nbx::fuzz {

void Require(bool condition, std::string_view promise) {
  if (condition) return;
  std::fprintf(stderr, "broken promise: %.*s\n", static_cast<int>(promise.size()), promise.data());
  std::abort();
}

void CheckCycleResult(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  for (double value :
       {s.Value_Cloud, s.Value_CloudRaw, s.Value_CloudTemp, s.Value_Cycle, s.Value_Day,
        s.Value_DewPointT, s.Value_DewPointDelta, s.Value_HumidityRel, s.Value_HumSensTemp,
        s.Value_Rain, s.Value_RainHeat, s.Value_RainTemp, s.Value_Temp, s.Value_Wind,
        s.Value_WindDir, s.Value_Gust, s.Value_AbsPressure, s.Value_RelPressure,
        s.Value_PresSensTemp, s.Value_Altitude, s.ReferenceVoltage})
    Require(std::isfinite(value), "a value that is not a number is never assigned");
  Require(!s.LastReading || std::isfinite(*s.LastReading), "the last reading is a date");
  for (Condition condition : {s.NBX_CloudCondition, s.NBX_RainCondition, s.NBX_WindCondition,
                              s.NBX_DayCondition, s.NBX_HumidityCondition, s.NBX_PressureCondition})
    Require(condition >= 0 && condition <= 3, "a condition is Unknown or one of three classes");
  for (SafeFlag flag : {s.NBX_CloudSafe, s.NBX_RainSafe, s.NBX_WindSafe, s.NBX_DaySafe,
                        s.NBX_HumiditySafe, s.NBX_PressureSafe})
    Require(flag >= 0 && flag <= 2, "a safe flag is Unknown, Safe or Unsafe");
  const std::string record = SingleLineRecord(nm);
  Require(record.size() == SingleLineRecordSize, "the single-line record keeps its width");
  Require(SingleLineRecordExtended(nm, record).size() == ExtendedRecordSize,
          "the extended record keeps its width");
  Require(EncodeTransferRecord(BuildTransferRecord(nm)).size() == TransferRecordSize,
          "the transfer record keeps its width");
}

namespace {

std::string ownScratchFolder;

void RemoveOwnScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(ownScratchFolder, ignored);
}

}  // namespace

const std::string& ScratchFolder() {
  static const std::string folder = [] {
    namespace fs = std::filesystem;
    if (const char* given = std::getenv("NBX_FUZZ_SCRATCH"); given && *given) {
      fs::create_directories(given);
      return std::string(given);
    }
    std::string pattern = (fs::temp_directory_path() / "nbx-fuzz-XXXXXX").string();
    Require(mkdtemp(pattern.data()) != nullptr, "a scratch folder can be made");
    // A folder of its own making goes when the process ends normally.
    ownScratchFolder = pattern;
    std::atexit(RemoveOwnScratchFolder);
    return pattern;
  }();
  return folder;
}

void WriteFileBytes(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

FuzzStation::FuzzStation() {
  nm.io.clock = &time;
  nm.io.timers = &time;
  nm.io.link = &link;
  ConnectStages(nm);
  nm.io.host = &host;
  nm.config.PortName = "/dev/ttyNBX0";
  KeepFilesInScratch();
  time.onTimer = [this](TimerId id) { OnTimer(nm, id); };
}

void FuzzStation::Receive(std::string_view bytes) {
  // A closed port hears nothing.
  if (!link.open) return;
  link.pending.append(bytes);
  OnComm(nm);
}

void FuzzStation::UseSimulatedBox() {
  nm.io.link = &boxLink;
  boxLink.onReceive = [this] { OnComm(nm); };
}

void FuzzStation::KeepFilesInScratch() {
  Config& c = nm.config;
  const std::string& folder = ScratchFolder();
  c.LblPathName = c.LblPathNameCCDAP4 = folder;
  c.NetPathMaster = c.NetPathRemote = folder;
  c.GraphImagePath = c.LastMusicDir = folder;
  c.ScriptPathSAFE = c.ScriptPathUNSAFE = folder;
}

}  // namespace nbx::fuzz
