#include "config/setting_conversions.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

#include "core/number_format.h"
#include "core/text.h"

namespace nbx {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The text as the C conversion reads it ("-12.5e3"), or nothing when it is
// not a number of the locale's notation.
std::optional<std::string> CanonicalNumber(std::string_view text, char decimalSeparator) {
  const std::string t = Trim(text);
  std::string canonical;
  std::size_t i = 0;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) {
    if (t[i] == '-') canonical += '-';
    ++i;
  }
  int digits = 0;
  for (; i < t.size() && IsDigit(t[i]); ++i, ++digits) canonical += t[i];
  if (i < t.size() && (t[i] == decimalSeparator || t[i] == '.')) {
    canonical += '.';
    for (++i; i < t.size() && IsDigit(t[i]); ++i, ++digits) canonical += t[i];
  }
  if (digits == 0) return std::nullopt;
  if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
    canonical += 'e';
    ++i;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) canonical += t[i++];
    int exponentDigits = 0;
    for (; i < t.size() && IsDigit(t[i]); ++i, ++exponentDigits) canonical += t[i];
    if (exponentDigits == 0) return std::nullopt;
  }
  if (i != t.size()) return std::nullopt;
  return canonical;
}

template <typename Int>
std::optional<Int> WholeFromText(std::string_view text, char decimalSeparator) {
  const std::optional<double> value = LocaleNumber(text, decimalSeparator);
  if (!value) return std::nullopt;
  const double whole = RoundHalfEven(*value);
  if (whole < static_cast<double>(std::numeric_limits<Int>::min()) ||
      whole > static_cast<double>(std::numeric_limits<Int>::max()))
    return std::nullopt;
  return static_cast<Int>(whole);
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

}  // namespace

std::optional<double> LocaleNumber(std::string_view text, char decimalSeparator) {
  const std::optional<std::string> canonical = CanonicalNumber(text, decimalSeparator);
  if (!canonical) return std::nullopt;
  double value = 0;
  const char* end = canonical->data() + canonical->size();
  const auto [stop, error] = std::from_chars(canonical->data(), end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<std::int32_t> LocaleLong(std::string_view text, char decimalSeparator) {
  return WholeFromText<std::int32_t>(text, decimalSeparator);
}

bool BoolFromSetting(std::string_view text, bool defaultValue) {
  if (Trim(text).empty()) return defaultValue;
  for (const char* falseWord : {"False", "Falso", "Falsch", "0", "Faux"})
    if (text == falseWord) return false;
  return true;
}

std::int16_t IntFromSetting(std::string_view text, std::int16_t defaultValue,
                            char decimalSeparator) {
  if (Trim(text).empty()) return defaultValue;
  return IntegerFromText(text, defaultValue, decimalSeparator);
}

std::int32_t LongFromSetting(std::string_view text, std::int32_t defaultValue,
                             char decimalSeparator) {
  if (Trim(text).empty()) return defaultValue;
  return LongFromText(text, defaultValue, decimalSeparator);
}

double DoubleFromSetting(std::string_view text, double defaultValue) {
  const std::string t = Trim(text);
  if (t.empty()) return defaultValue;
  double accumulator = 0;
  std::size_t separatorPosition = 0;  // counted from 1, as the walk counts characters
  for (std::size_t i = 0; i < t.size(); ++i) {
    if (t[i] == ',' || t[i] == '.') {
      separatorPosition = i + 1;
    } else if (IsDigit(t[i])) {
      accumulator = accumulator * 10 + (t[i] - '0');
    } else {
      return defaultValue;
    }
  }
  if (separatorPosition != 0)
    accumulator /= std::pow(10.0, static_cast<double>(t.size() - separatorPosition));
  // Some three hundred digits overflow the accumulator or its divisor.
  return std::isfinite(accumulator) ? accumulator : defaultValue;
}

double NumberFromText(std::string_view text, double defaultValue, char decimalSeparator) {
  return LocaleNumber(text, decimalSeparator).value_or(defaultValue);
}

std::int32_t LongFromText(std::string_view text, std::int32_t defaultValue, char decimalSeparator) {
  return LocaleLong(text, decimalSeparator).value_or(defaultValue);
}

std::int16_t IntegerFromText(std::string_view text, std::int16_t defaultValue,
                             char decimalSeparator) {
  return WholeFromText<std::int16_t>(text, decimalSeparator).value_or(defaultValue);
}

bool BooleanFromText(std::string_view text, bool defaultValue) {
  const std::string t = Trim(text);
  if (EqualsIgnoringCase(t, "True")) return true;
  if (EqualsIgnoringCase(t, "False")) return false;
  const std::optional<double> number = LocaleNumber(t, '.');
  return number ? *number != 0 : defaultValue;
}

Colour ColourFromText(std::string_view text, Colour defaultValue) {
  return static_cast<Colour>(
      LongFromText(text, static_cast<std::int32_t>(defaultValue), '.'));
}

std::string NumberToText(double value, char decimalSeparator) {
  if (!std::isfinite(value)) return {};
  if (value == 0) return "0";  // no "-0"
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.15g", value);
  std::string text = buffer;
  for (char& c : text)
    if (c == '.') c = decimalSeparator;
  return text;
}

std::string BooleanToText(bool value) { return value ? "True" : "False"; }

std::string ColourToText(Colour value) {
  return std::to_string(static_cast<std::int32_t>(value));
}

}  // namespace nbx
