#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "config/settings.h"
#include "core/colours.h"

namespace nbx {

// Reads keys of the store by their logical type. The default goes to the
// store as text, in the locale's notation, as the platform's GetSetting
// takes it; the text that comes back, stored or default, is then converted,
// and a text that the conversion cannot read gives the default.
class SettingsReader {
 public:
  SettingsReader(Settings& store, char decimalSeparator, std::string documentsFolder)
      : store_(store), separator_(decimalSeparator), documents_(std::move(documentsFolder)) {}

  double Double(std::string_view section, std::string_view key, double defaultValue);
  // Through DoubleFromSetting: the same number under every locale.
  double DoubleAny(std::string_view section, std::string_view key, double defaultValue);
  std::int32_t Long(std::string_view section, std::string_view key, double defaultValue);
  std::int16_t Integer(std::string_view section, std::string_view key, double defaultValue);
  // A Long whose default is no value (the window computes it).
  std::optional<std::int32_t> LongOrNone(std::string_view section, std::string_view key);
  std::int32_t LongFrom(std::string_view section, std::string_view key, std::int32_t defaultValue);
  std::int16_t IntFrom(std::string_view section, std::string_view key, std::int16_t defaultValue);
  // Through BoolFromSetting, as every Boolean key but one is read.
  bool Boolean(std::string_view section, std::string_view key, bool defaultValue);
  // The platform's plain conversion of "True"/"False".
  bool PlainBoolean(std::string_view section, std::string_view key, bool defaultValue);
  std::string Text(std::string_view section, std::string_view key, std::string_view defaultValue);
  // A folder, whose default is the user's documents folder.
  std::string Path(std::string_view section, std::string_view key);
  Colour ColourValue(std::string_view section, std::string_view key, Colour defaultValue);

  char DecimalSeparator() const { return separator_; }

 private:
  Settings& store_;
  char separator_;
  std::string documents_;
};

// Writes keys to the store: numbers in the locale's notation, Booleans as
// "True"/"False", colours as decimal Longs.
class SettingsWriter {
 public:
  SettingsWriter(Settings& store, char decimalSeparator)
      : store_(store), separator_(decimalSeparator) {}

  // The value of a number control, whatever type the key is read as.
  void Number(std::string_view section, std::string_view key, double value);
  void Whole(std::string_view section, std::string_view key, std::int64_t value);
  void Boolean(std::string_view section, std::string_view key, bool value);
  void Text(std::string_view section, std::string_view key, std::string_view value);
  void ColourValue(std::string_view section, std::string_view key, Colour value);

  char DecimalSeparator() const { return separator_; }

 private:
  Settings& store_;
  char separator_;
};

// An option group takes the value of one of its buttons as the window does:
// a button set true clears the others, a button set false leaves them.
template <std::size_t N>
void SetOption(std::array<bool, N>& group, std::size_t index, bool value) {
  if (value) group.fill(false);
  group[index] = value;
}

}  // namespace nbx
