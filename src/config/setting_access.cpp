#include "config/setting_access.h"

#include "config/setting_conversions.h"

namespace nbx {

double SettingsReader::Double(std::string_view section, std::string_view key, double defaultValue) {
  const std::string text = store_.Get(section, key, NumberToText(defaultValue, separator_));
  return NumberFromText(text, defaultValue, separator_);
}

double SettingsReader::DoubleAny(std::string_view section, std::string_view key,
                                 double defaultValue) {
  return DoubleFromSetting(store_.Get(section, key, NumberToText(defaultValue, separator_)),
                           defaultValue);
}

std::int32_t SettingsReader::Long(std::string_view section, std::string_view key,
                                  double defaultValue) {
  const std::string text = store_.Get(section, key, NumberToText(defaultValue, separator_));
  return LongFromText(text, static_cast<std::int32_t>(defaultValue), separator_);
}

std::int16_t SettingsReader::Integer(std::string_view section, std::string_view key,
                                     double defaultValue) {
  const std::string text = store_.Get(section, key, NumberToText(defaultValue, separator_));
  return IntegerFromText(text, static_cast<std::int16_t>(defaultValue), separator_);
}

std::optional<std::int32_t> SettingsReader::LongOrNone(std::string_view section,
                                                       std::string_view key) {
  return LocaleLong(store_.Get(section, key, ""), separator_);
}

std::int32_t SettingsReader::LongFrom(std::string_view section, std::string_view key,
                                      std::int32_t defaultValue) {
  const std::string text = store_.Get(section, key, NumberToText(defaultValue, separator_));
  return LongFromSetting(text, defaultValue, separator_);
}

std::int16_t SettingsReader::IntFrom(std::string_view section, std::string_view key,
                                     std::int16_t defaultValue) {
  const std::string text = store_.Get(section, key, NumberToText(defaultValue, separator_));
  return IntFromSetting(text, defaultValue, separator_);
}

bool SettingsReader::Boolean(std::string_view section, std::string_view key, bool defaultValue) {
  return BoolFromSetting(store_.Get(section, key, BooleanToText(defaultValue)), defaultValue);
}

bool SettingsReader::PlainBoolean(std::string_view section, std::string_view key,
                                  bool defaultValue) {
  return BooleanFromText(store_.Get(section, key, BooleanToText(defaultValue)), defaultValue);
}

std::string SettingsReader::Text(std::string_view section, std::string_view key,
                                 std::string_view defaultValue) {
  return store_.Get(section, key, defaultValue);
}

std::string SettingsReader::Path(std::string_view section, std::string_view key) {
  return store_.Get(section, key, documents_);
}

Colour SettingsReader::ColourValue(std::string_view section, std::string_view key,
                                   Colour defaultValue) {
  return ColourFromText(store_.Get(section, key, ColourToText(defaultValue)), defaultValue);
}

void SettingsWriter::Number(std::string_view section, std::string_view key, double value) {
  store_.Save(section, key, NumberToText(value, separator_));
}

void SettingsWriter::Whole(std::string_view section, std::string_view key, std::int64_t value) {
  store_.Save(section, key, std::to_string(value));
}

void SettingsWriter::Boolean(std::string_view section, std::string_view key, bool value) {
  store_.Save(section, key, BooleanToText(value));
}

void SettingsWriter::Text(std::string_view section, std::string_view key, std::string_view value) {
  store_.Save(section, key, value);
}

void SettingsWriter::ColourValue(std::string_view section, std::string_view key, Colour value) {
  store_.Save(section, key, ColourToText(value));
}

}  // namespace nbx
