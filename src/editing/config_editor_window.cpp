// The controls that only the window edits: each keeps its value inside the
// range the logic can work with, so that a slip of the keyboard cannot stop
// the cycle.

#include <arpa/inet.h>

#include <algorithm>
#include <cmath>

#include "core/nimbometer.h"
#include "core/port_names.h"
#include "editing/config_editor.h"

namespace nbx {
namespace {

double Finite(double value, double fallback) { return std::isfinite(value) ? value : fallback; }

template <std::size_t N>
void ChooseOption(std::array<bool, N>& options, int option) {
  if (option < 0 || option >= static_cast<int>(N)) return;
  for (std::size_t i = 0; i < N; ++i) options[i] = static_cast<int>(i) == option;
}

}  // namespace

void ConfigEditor::SetPortEntry(const std::string& entry) {
  if (const std::optional<int> index = ComIndex(entry)) {
    nm_.config.COMPort = *index;
    nm_.config.PortName.clear();
  } else if (const std::string path = DeviceOfEntry(entry); !path.empty()) {
    nm_.config.PortName = path;
  }
}
// A reply needs at least a second at 9600 baud; a longer wait than a cycle
// would let the next cycle start before the reply is given up.
void ConfigEditor::SetPORTTimeout(double seconds) {
  nm_.config.PORTTimeout = std::clamp(Finite(seconds, 5), 1.0, 60.0);
}
void ConfigEditor::SetCOMTimeout(double seconds) {
  nm_.config.COMTimeout = std::max(1.0, Finite(seconds, 60));
}
void ConfigEditor::SetAASL(double metres) { nm_.config.AASL = Finite(metres, nm_.config.AASL); }
void ConfigEditor::SetHeatMinValue(double percent) {
  nm_.config.HeatMinValue = std::clamp(Finite(percent, 10), 0.0, 100.0);
}
void ConfigEditor::SetHeatOffValue(double percent) {
  nm_.config.HeatOffValue = std::clamp(Finite(percent, 10), 0.0, 100.0);
}
void ConfigEditor::SetAmbTempOffset(double value) {
  nm_.config.AmbTempOffset = Finite(value, nm_.config.AmbTempOffset);
}
void ConfigEditor::SetIRTempOffset(double value) {
  nm_.config.IRTempOffset = Finite(value, nm_.config.IRTempOffset);
}
void ConfigEditor::SetDarkReference(double value) {
  nm_.config.DarkReference = Finite(value, nm_.config.DarkReference);
}
void ConfigEditor::SetWindAlarmDelay(double seconds) {
  nm_.config.WindAlarmDelay = std::max(0.0, Finite(seconds, 0));
}
void ConfigEditor::SetCheckStartApp(int value) { nm_.config.CheckStartApp = value != 0; }
void ConfigEditor::SetCheckStartRecording(int value) { nm_.config.CheckStartRecording = value != 0; }

void ConfigEditor::SetNMRole(int option) {
  ChooseOption(nm_.config.NMRole, option);
  nm_.state.DeviceMode = nm_.config.NMRole[1] ? "REMOTE" : "MASTER";
}

void ConfigEditor::SetSWAnemoModel(int option) { ChooseOption(nm_.config.SWAnemoModel, option); }
void ConfigEditor::SetDisableUnknownRain(int value) { nm_.config.DisableUnknownRain = value != 0; }
void ConfigEditor::SetDisableUnknownDay(int value) { nm_.config.DisableUnknownDay = value != 0; }
void ConfigEditor::SetUnKnownUnsafe(int value) { nm_.config.UnKnownUnsafe = value != 0; }
void ConfigEditor::SetUnknowColour(Colour colour) { nm_.config.LblUnknowColor = colour & 0xFFFFFF; }
void ConfigEditor::SetImageType(int value) { nm_.config.ImageType = value != 0; }
void ConfigEditor::SetImageQuality(int option) { ChooseOption(nm_.config.ImageQuality, option); }
void ConfigEditor::SetChkDebug(int value) { nm_.config.chkDebug = value != 0; }

void ConfigEditor::SetFileNameCCDAP4(const std::string& name) {
  if (!name.empty()) nm_.config.FileNameCCDAP4 = name;
}

void ConfigEditor::SetScript(bool unsafe, const std::string& folder, const std::string& file) {
  Config& c = nm_.config;
  (unsafe ? c.ScriptPathUNSAFE : c.ScriptPathSAFE) = folder;
  (unsafe ? c.ScriptFileUNSAFE : c.ScriptFileSAFE) = file;
}

void ConfigEditor::SetNetPath(const std::string& folder) {
  (nm_.IsMaster() ? nm_.config.NetPathMaster : nm_.config.NetPathRemote) = folder;
}

void ConfigEditor::SetSingleLineFolder(const std::string& folder) {
  if (!folder.empty()) nm_.config.LblPathNameCCDAP4 = folder;
}

void ConfigEditor::SetAlpacaEnabled(int value) { nm_.config.AlpacaEnabled = value != 0; }

void ConfigEditor::SetAlpacaAddress(const std::string& address) {
  in_addr parsed{};
  if (inet_pton(AF_INET, address.c_str(), &parsed) == 1) nm_.config.AlpacaAddress = address;
}

void ConfigEditor::SetAlpacaPort(double port) {
  if (std::isfinite(port) && port >= 1 && port <= 65535) nm_.config.AlpacaPort = static_cast<std::int32_t>(port);
}

void ConfigEditor::SetAlpacaDiscovery(int value) { nm_.config.AlpacaDiscovery = value != 0; }

}  // namespace nbx
