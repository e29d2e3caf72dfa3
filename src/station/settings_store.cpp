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

// The tolerant reading of a Boolean: the words of several languages for false.
void ReadBool(QSettings& settings, const char* key, bool& target) {
  const QString text = settings.value(key).toString().trimmed();
  if (text.isEmpty()) return;
  static const QStringList kFalse{"False", "Falso", "Falsch", "0", "Faux"};
  target = !kFalse.contains(text, Qt::CaseInsensitive);
}

void ReadText(QSettings& settings, const char* key, std::string& target) {
  if (settings.contains(key)) target = settings.value(key).toString().toStdString();
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
  ReadNumber(settings, "COMTimeout", config.COMTimeout);
  settings.endGroup();
  settings.beginGroup("Window");
  ReadNumber(settings, "UnknownRS232Error", config.UnknownRS232NoError);
  ReadNumber(settings, "UnknownNoReading", config.UnknownNoReading);
  ReadText(settings, "PathName", config.LblPathName);
  ReadText(settings, "FileName", config.FileName);
  ReadNumber(settings, "FreqSave", config.SaveFreq);
  ReadNumber(settings, "LastReadOnly", config.LastReadOnly);
  ReadNumber(settings, "Debug", config.chkDebug);
  ReadNumber(settings, "AutoStartRecording", config.CheckStartRecording);
  settings.endGroup();
  // The role and the files of the mirror and of the single-line family.
  settings.beginGroup("COMMFile");
  ReadBool(settings, "NMRole0", config.NMRole[0]);
  ReadBool(settings, "NMRole1", config.NMRole[1]);
  ReadText(settings, "NetFilePath", config.NetPathMaster);
  ReadText(settings, "NetFilePathRemote", config.NetPathRemote);
  ReadText(settings, "NetFileName", config.NetFileName);
  ReadText(settings, "FileNameCCDAP4", config.FileNameCCDAP4);
  ReadText(settings, "PathNameCCDAP4", config.LblPathNameCCDAP4);
  settings.endGroup();
}

}  // namespace nbx
