#include "outputs/user_data_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <sys/stat.h>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/status.h"
#include "core/text.h"
#include "outputs/data_outputs.h"
#include "outputs/file_writes.h"
#include "outputs/latin1.h"
#include "outputs/output_codes.h"
#include "safety/conditions.h"

namespace nbx {
namespace {

constexpr std::size_t kHeaderWidth = 25;

bool OpenRecordFile(Nimbometer& nm, bool append) {
  OutputFiles& files = nm.files;
  std::ofstream& file = files.RecordFile;
  if (file.is_open()) file.close();
  file.clear();
  const std::string name = UserDataFileName(nm);
  file.open(name, std::ios::binary | (append ? std::ios::app : std::ios::trunc));
  struct stat info {};
  if (!file.is_open() || ::stat(name.c_str(), &info) != 0) return file.is_open();
  files.RecordDevice = info.st_dev;
  files.RecordInode = info.st_ino;
  files.RecordFileLost = false;
  return true;
}

void CloseRecordFile(Nimbometer& nm) {
  std::ofstream& file = nm.files.RecordFile;
  if (file.is_open()) file.close();
  file.clear();
  nm.files.RecordFileLost = false;
}

bool NameLeadsToRecordFile(const Nimbometer& nm) {
  struct stat info {};
  return ::stat(UserDataFileName(nm).c_str(), &info) == 0 && info.st_dev == nm.files.RecordDevice &&
         info.st_ino == nm.files.RecordInode;
}

// A growing recording holds its file open all night. Here a folder can be
// deleted with the file open in it, and the lines would go on into a file
// that no one can read until the next Start. So before each line the name
// must still lead to the open file; if it does not, the name is opened
// again, appending, under a header of its own, as soon as the folder is
// back. A recording stopped on purpose is not opened again.
void KeepRecordFileFound(Nimbometer& nm) {
  OutputFiles& files = nm.files;
  if (!files.RecordFile.is_open() && !files.RecordFileLost) return;
  if (files.RecordFile.is_open() && NameLeadsToRecordFile(nm)) return;
  files.RecordFile.close();
  files.RecordFileLost = true;
  if (OpenRecordFile(nm, true)) WriteUserDataHeader(nm);
}

// Every field quoted, a comma behind every field, the last one too; a quote
// inside a field is not escaped. Errors are ignored: a closed file or a full
// disk in growing mode costs the line and nothing else.
void WriteFields(Nimbometer& nm, const std::string& fields) {
  KeepRecordFileFound(nm);
  std::ofstream& file = nm.files.RecordFile;
  file.clear();
  file << fields << "\r\n";
  // Flushed at once, so that a reader between two cycles sees the whole line.
  file.flush();
}

void AddField(std::string& line, const std::string& field) { line += '"' + field + "\","; }

std::string Number(const Nimbometer& nm, double value, const char* pattern) {
  return FormatNumber(value, pattern, nm.io.host->DecimalSeparator());
}

// Opens for the recording just switched on; false (recording stays off) when
// the file cannot be opened.
bool BeginRecording(Nimbometer& nm, bool append, bool withHeader) {
  SetRecordControlsEnabled(nm, false);
  if (!OpenRecordFile(nm, append)) {
    nm.state.RecordingActive = false;
    SetRecordControlsEnabled(nm, true);
    RecOption_Click(nm, 1);
    return false;
  }
  nm.state.RecordingActive = true;
  if (withHeader) WriteUserDataHeader(nm);
  return true;
}

}  // namespace

std::string UserDataFileName(const Nimbometer& nm) {
  return JoinPath(nm.config.LblPathName, Trim(nm.config.FileName)) + ".csv";
}

int FreqSave(const Config& config) {
  const double value = std::trunc(config.SaveFreq);
  return std::isfinite(value) && value >= 1 ? static_cast<int>(std::min(value, 2147483647.0)) : 1;
}

void SaveFreq_Change(Nimbometer& nm) { nm.config.SaveFreq = FreqSave(nm.config); }

bool ColumnPrinted(const Nimbometer& nm, int position) {
  if (position < 1 || position > FileColumnCount) return false;
  // The place, not the field: the transfer file carries no absolute pressure,
  // and whatever stands at place 23 goes with it on a remote.
  if (position == 23 && !nm.IsMaster()) return false;
  return nm.config.FileColumns[static_cast<std::size_t>(position - 1)].Prt;
}

std::string ColumnValue(const Nimbometer& nm, int fieldId) {
  const SiteState& s = nm.state;
  switch (fieldId) {
    case 1: return FormatDate(nm.Now(), "yyyy-mm-dd");
    case 2: return FormatDate(nm.Now(), "hh:mm:ss");
    case 3: return ConditionDescription(nm, Family::Cloud);
    case 4: return ConditionDescription(nm, Family::Rain);
    case 5: return ConditionDescription(nm, Family::Day);
    case 6: return Number(nm, s.Value_Cloud, "0.0");
    case 7: return Number(nm, s.Value_CloudTemp, "0.0");
    case 8: return Number(nm, s.Value_Rain, "0");
    case 9: return Number(nm, s.Value_Day, s.SQMPresent ? "0.00" : "0");
    case 10: return Number(nm, s.Value_Temp, "0.0");
    case 11: return Number(nm, s.Value_RainHeat, "0%");
    case 12: return Number(nm, s.Value_RainTemp, "0.0");
    case 13: return Trim(nm.display.LblHeating.Caption);
    case 14: return s.Value_Switch == 1 ? "Opened" : "Closed";
    case 15: return Number(nm, s.Value_Cycle, "0.000");
    case 16: return Number(nm, ParseNumber(nm.display.LblRS232Errors.Caption).value_or(0), "0");
    case 17: return s.Value_Unsafe ? "Unsafe" : "Safe";
    case 18: return ConditionDescription(nm, Family::Wind);
    case 19: return Number(nm, s.Value_Wind, "0.0");
    case 20: return Number(nm, s.Value_HumidityRel, "0");
    case 21: return Number(nm, s.Value_DewPointT, "0.0");
    case 22: return Number(nm, s.Value_CloudRaw, "0.0");
    case 23: return Number(nm, s.Value_AbsPressure, "0.0");
    case 24: return Number(nm, s.Value_RelPressure, "0.0");
    default: return {};
  }
}

void WriteUserDataHeader(Nimbometer& nm) {
  if (!nm.state.RecordingActive) return;
  std::string line;
  for (int position = 1; position <= FileColumnCount; ++position) {
    if (!ColumnPrinted(nm, position)) continue;
    FileColumn& column = nm.config.FileColumns[static_cast<std::size_t>(position - 1)];
    column.Hdr = Trim(FirstCharacters(column.Hdr, kHeaderWidth));
    AddField(line, column.Hdr);
  }
  WriteFields(nm, line);
}

void WriteUserDataLine(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  if (!s.RecordingActive) return;
  if (s.RecordCycleCount >= FreqSave(c)) s.RecordCycleCount = 0;
  if (s.RecordCycleCount != 0) {
    s.RecordCycleCount++;
    return;
  }
  if (c.LastReadOnly != 0) {
    CloseRecordFile(nm);
    if (!OpenRecordFile(nm, false)) {
      CloseRecordFile(nm);
      ShowOutputCode(nm, "d13");
      return;  // the counter stays, so the next cycle tries again
    }
    WriteUserDataHeader(nm);
  }
  std::string line;
  for (int position = 1; position <= FileColumnCount; ++position)
    if (ColumnPrinted(nm, position))
      AddField(line, ColumnValue(nm, c.FileColumns[static_cast<std::size_t>(position - 1)].Cal));
  WriteFields(nm, line);
  // Closed between two cycles, so that other programs can read it.
  if (c.LastReadOnly != 0) CloseRecordFile(nm);
  s.RecordCycleCount++;
}

void Record_Start(Nimbometer& nm, bool append) {
  SiteState& s = nm.state;
  s.RecordOptionBusy = true;
  if (!nm.config.RecOption[1]) {
    // Already recording.
    s.RecordOptionBusy = false;
    return;
  }
  RecOption_Click(nm, 0);
  if (Trim(nm.config.FileName).empty()) {
    s.RecordingActive = false;
    RecOption_Click(nm, 1);
    s.RecordOptionBusy = false;
    return;
  }
  if (nm.config.LastReadOnly == 0) {
    // A header in both cases: an appended file holds one header per recording.
    BeginRecording(nm, append, true);
  } else {
    // The header comes with the first line.
    BeginRecording(nm, false, false);
  }
  s.RecordOptionBusy = false;
}

void Record_Stop(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.RecordOptionBusy = true;
  RecOption_Click(nm, 1);
  SetRecordControlsEnabled(nm, true);
  CloseRecordFile(nm);
  // RecordingActive stays: the writer goes on, and its writes to the closed
  // file come to nothing.
  s.RecordOptionBusy = false;
}

void RecOption_Click(Nimbometer& nm, int index) {
  SiteState& s = nm.state;
  Config& c = nm.config;
  const bool on = index == 0;
  c.RecOption = {on, !on};
  if (s.RecordOptionBusy) return;

  s.RecordingActive = false;
  if (!on) {
    SetRecordControlsEnabled(nm, true);
    CloseRecordFile(nm);
    return;
  }
  if (Trim(c.FileName).empty()) {
    c.RecOption = {false, true};
    return;
  }
  if (c.LastReadOnly != 0) {
    BeginRecording(nm, false, false);
    return;
  }
  if (!FileExists(UserDataFileName(nm))) {
    BeginRecording(nm, false, true);
    return;
  }
  switch (nm.io.host->ShowMessage("Append to existing file", ButtonsYesNoCancel, "NBX Nimbometer")) {
    case ReplyYes:
      BeginRecording(nm, true, true);
      break;
    case ReplyNo:
      BeginRecording(nm, false, true);
      break;
    default:
      s.RecordingActive = false;
      SetRecordControlsEnabled(nm, true);
      CloseRecordFile(nm);
      c.RecOption = {false, true};
      break;
  }
}

void SetRecordControlsEnabled(Nimbometer& nm, bool enabled) {
  nm.display.RecordControlsEnabled = enabled;
}

void Record_DebugInfo(Nimbometer& nm, const std::string& message) {
  nm.io.host->DebugInfo(message);
  if (nm.config.chkDebug == 0 || !nm.state.RecordingActive) return;
  // One quoted field and no comma behind it, unlike the data lines.
  WriteFields(nm, '"' + FormatDate(nm.Now(), "hh:mm:ss.ss") + " debug msg: " + message + '"');
}

std::string CheckDataFolder(Nimbometer& nm) {
  const std::string& folder = nm.config.LblPathName;
  SetStatusMain(nm.display, "Checking Data File Path : " + folder, colours::DarkGreen);
  // An empty folder is the current one, which is there.
  if (folder.empty()) return {};
  std::error_code error;
  if (std::filesystem::is_directory(folder, error)) return {};
  std::filesystem::create_directories(folder, error);
  return std::filesystem::is_directory(folder, error) ? "d11" : "d12";
}

}  // namespace nbx
