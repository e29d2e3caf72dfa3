#include <cmath>

#include "config/setting_access.h"
#include "editing/config_editor.h"
#include "core/nimbometer.h"
#include "core/number_format.h"
#include "graphs/graph_span.h"
#include "outputs/user_data_file.h"
#include "sensors/sky_correction.h"
#include "sensors/wind.h"

namespace nbx {
namespace {

bool ValidPair(int index) { return index == 0 || index == 1; }

}  // namespace

void ConfigEditor::SetRefreshPeriod(double seconds) {
  if (!std::isfinite(seconds)) return;
  const double whole = RoundHalfEven(seconds);
  nm_.config.RefreshPeriod = static_cast<std::int32_t>(whole < 10 ? 10 : whole > 60 ? 60 : whole);
  UpdateGraphSpan(nm_);
}

void ConfigEditor::SetSaveFreq(double readings) {
  nm_.config.SaveFreq = readings;
  SaveFreq_Change(nm_);
}

void ConfigEditor::SetFileName(const std::string& name) { nm_.config.FileName = name; }

void ConfigEditor::SetDataFolder(const std::string& folder) { nm_.config.LblPathName = folder; }

void ConfigEditor::SetLastReadOnly(int value) { nm_.config.LastReadOnly = value; }

void ConfigEditor::SetFileColumns(const std::array<FileColumn, FileColumnCount>& columns) {
  for (std::size_t row = 0; row < columns.size(); ++row) {
    FileColumn& column = nm_.config.FileColumns[row];
    column.Hdr = columns[row].Hdr.substr(0, 25);
    if (columns[row].Cal >= 1 && columns[row].Cal <= FileColumnCount) column.Cal = columns[row].Cal;
    column.Prt = columns[row].Prt;
  }
}

void ConfigEditor::SetSafeDelayVal(double seconds) { nm_.config.SafeDelayVal = seconds; }

void ConfigEditor::SetCloudAlarmDelay(double seconds) { nm_.config.CloudAlarmDelay = seconds; }

void ConfigEditor::SetSWRole(int option) {
  if (ValidPair(option)) SetOption(nm_.config.SWRole, static_cast<std::size_t>(option), true);
}

void ConfigEditor::SetCalcWindAvg(double readings) { nm_.config.CalcWindAvg = CalcWindAvgChange(readings); }

void ConfigEditor::SetCloudTempFactor(bool on) {
  nm_.config.CloudTempFactor = on;
  CloudTempSet(nm_, on);
}

void ConfigEditor::SetCloudTempK(int k, double value) {
  Config& c = nm_.config;
  double* const factors[] = {&c.CloudTempK1, &c.CloudTempK2, &c.CloudTempK3, &c.CloudTempK4,
                             &c.CloudTempK5, &c.CloudTempK6, &c.CloudTempK7};
  if (k >= 1 && k <= 7) *factors[k - 1] = value;
}

void ConfigEditor::SetHeatTemp(int index, double value) {
  if (ValidPair(index)) nm_.config.HeatTemp[static_cast<std::size_t>(index)] = value;
}

void ConfigEditor::SetHeatDelta(int index, double value) {
  if (ValidPair(index)) nm_.config.HeatDelta[static_cast<std::size_t>(index)] = value;
}

void ConfigEditor::SetHeatImpTemp(double value) { nm_.config.HeatImpTemp = value; }

void ConfigEditor::SetHeatImpDuration(double value) { nm_.config.HeatImpDuration = value; }

void ConfigEditor::SetHeatImpCycle(double value) { nm_.config.HeatImpCycle = value; }

}  // namespace nbx
