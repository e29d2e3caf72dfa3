#include "station/settings_store.h"

#include "core/config.h"

namespace nbx {
namespace {

// A key that is missing or not a number keeps the default.
template <typename T>
void ReadNumber(QSettings& settings, const char* key, T& target) {
  bool ok = false;
  const double value = settings.value(key).toString().trimmed().toDouble(&ok);
  if (ok) target = static_cast<T>(value);
}

}  // namespace

std::unique_ptr<QSettings> OpenSettings(const QString& file) {
  if (!file.isEmpty()) return std::make_unique<QSettings>(file, QSettings::IniFormat);
  return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, "NBX_Nimbometer",
                                     "NBX_Nimbometer");
}

void LoadLinkSettings(QSettings& settings, Config& config) {
  settings.beginGroup("Communication");
  ReadNumber(settings, "Port", config.COMPort);
  config.PortName = settings.value("PortName", "").toString().toStdString();
  config.CommSettings = settings.value("RS232Setup", "9600,n,8,1").toString().toStdString();
  ReadNumber(settings, "RefreshPeriod", config.RefreshPeriod);
  ReadNumber(settings, "Timeout", config.PORTTimeout);
  settings.endGroup();
  settings.beginGroup("Window");
  ReadNumber(settings, "UnknownRS232Error", config.UnknownRS232NoError);
  ReadNumber(settings, "UnknownNoReading", config.UnknownNoReading);
  settings.endGroup();
}

}  // namespace nbx
