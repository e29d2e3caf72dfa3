#include "fuzz_station.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "device/link_life.h"
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

// scripts/fuzz.sh gives each target a scratch folder, in memory when it can:
// the stations' own folders go there.
[[maybe_unused]] const bool kScratchIsTemporary = [] {
  const char* given = std::getenv("NBX_FUZZ_SCRATCH");
  return given != nullptr && *given != '\0' && ::setenv("TMPDIR", given, 1) == 0;
}();

}  // namespace

FuzzStation::FuzzStation() {
  nm.io.link = &hand;
  KeepFilesInScratch();
}

void FuzzStation::Receive(std::string_view bytes) {
  if (!hand.open) return;
  hand.pending.append(bytes);
  OnComm(nm);
}

void FuzzStation::KeepFilesInScratch() {
  Config& c = nm.config;
  c.LblPathName = c.LblPathNameCCDAP4 = files.path();
  c.NetPathMaster = c.NetPathRemote = files.path();
  c.GraphImagePath = c.LastMusicDir = files.path();
  c.ScriptPathSAFE = c.ScriptPathUNSAFE = files.path();
}

}  // namespace nbx::fuzz
