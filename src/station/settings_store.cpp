#include "station/settings_store.h"

#include <QFileInfo>
#include <QStringList>
#include <cstdio>

namespace nbx {
namespace {

QString Address(std::string_view section, std::string_view key) {
  return QString::fromUtf8(section.data(), static_cast<qsizetype>(section.size())) + '/' +
         QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

void Report(const char* what, const QString& file) {
  std::fprintf(stderr, "nimbometer: %s the settings file %s\n", what, qPrintable(file));
  std::fflush(stderr);
}

}  // namespace

QString PerUserSettingsFile(const QString& application) {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, application, application).fileName();
}

IniSettings::IniSettings(const QString& file)
    : settings_(file.isEmpty() ? PerUserSettingsFile("NBX_Nimbometer") : file,
                QSettings::IniFormat) {}

std::string IniSettings::Get(std::string_view section, std::string_view key,
                             std::string_view defaultText) {
  const QVariant value = settings_.value(Address(section, key));
  if (!value.isValid())
    return std::string(defaultText);
  // An unquoted value with commas, as a hand-written "RS232Setup=9600,n,8,1"
  // or a German "DarkReferenceValue=19,6", comes back as a list.
  if (value.typeId() == QMetaType::QStringList)
    return value.toStringList().join(',').toStdString();
  return value.toString().toStdString();
}

void IniSettings::Save(std::string_view section, std::string_view key, std::string_view text) {
  settings_.setValue(Address(section, key),
                     QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

bool IniSettings::CheckReadable() {
  const QFileInfo info(FileName());
  if ((info.exists() && (!info.isFile() || !info.isReadable())) ||
      settings_.status() == QSettings::FormatError) {
    Report("cannot read", FileName());
    return false;
  }
  return true;
}

bool IniSettings::Flush() {
  settings_.sync();
  if (settings_.status() != QSettings::NoError) {
    Report("cannot write", FileName());
    return false;
  }
  return true;
}

}  // namespace nbx
