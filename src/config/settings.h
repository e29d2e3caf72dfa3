#pragma once

#include <string>
#include <string_view>

namespace nbx {

// The per-user store of the program's settings: text values addressed by
// section and key, under the application name of the program. Every value is
// text whatever its logical type; the readers of config/setting_conversions.h
// turn it into numbers and flags.
class Settings {
 public:
  virtual ~Settings() = default;
  // The stored text, or `defaultText` when the key is absent.
  virtual std::string Get(std::string_view section, std::string_view key,
                          std::string_view defaultText) = 0;
  // Writes the text, creating section and key.
  virtual void Save(std::string_view section, std::string_view key, std::string_view text) = 0;
};

}  // namespace nbx
