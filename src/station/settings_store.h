#pragma once

#include <QSettings>
#include <QString>

#include "config/settings.h"

namespace nbx {

// The per-user INI file of a program by its application name:
// $XDG_CONFIG_HOME/<application>/<application>.ini. Another program's
// settings ("NBX_Meteodesk") are read through an IniSettings on its file.
QString PerUserSettingsFile(const QString& application);

// The settings store as an INI file through QSettings: the per-user file
// ($XDG_CONFIG_HOME/NBX_Nimbometer/NBX_Nimbometer.ini) or the file named on
// the command line. Sections are INI groups, every value is written as text,
// and keys that this program does not know stay in the file when it saves.
class IniSettings : public Settings {
 public:
  // `file` empty: the per-user file of this program.
  explicit IniSettings(const QString& file = {});

  std::string Get(std::string_view section, std::string_view key,
                  std::string_view defaultText) override;
  void Save(std::string_view section, std::string_view key, std::string_view text) override;

  QString FileName() const { return settings_.fileName(); }
  // False, with a line on standard error, when the file is there but cannot
  // be read: the load then gives every default.
  bool CheckReadable();
  // Writes what was saved to the file; false, with a line on standard error,
  // when it cannot be written.
  bool Flush();

 private:
  QSettings settings_;
};

}  // namespace nbx
