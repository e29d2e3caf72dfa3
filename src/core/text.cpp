#include "core/text.h"

#include <cctype>
#include <charconv>
#include <cmath>

#include "core/number_format.h"

namespace nbx {

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const std::size_t last = text.find_last_not_of(' ');
  return std::string(text.substr(first, last - first + 1));
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  if (folder.empty()) return std::string(name);
  std::string out(folder);
  if (out.back() != '/') out += '/';
  out += name;
  return out;
}

std::string FormatField(double value, std::string_view pattern, int width, char decimalSeparator) {
  std::string text = FormatNumber(value, pattern, decimalSeparator);
  if (width > 1) {
    const std::size_t keep = static_cast<std::size_t>(width - 1);
    text.insert(0, keep, ' ');
    text = text.substr(text.size() - keep);
  }
  for (char& c : text)
    if (c == ',') c = '.';
  return text;
}

std::string FixedWidth(std::string_view text, int width) {
  if (width <= 0) return std::string(text);
  std::string out(text.substr(0, static_cast<std::size_t>(width)));
  out.resize(static_cast<std::size_t>(width), ' ');
  return out;
}

std::string ToCommaDecimal(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c == '.') c = ',';
  return out;
}

std::string ToUpperAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

std::optional<double> ParseNumber(std::string_view text) {
  const std::string trimmed = Trim(text);
  std::string_view s = trimmed;
  if (s.empty()) return std::nullopt;
  std::size_t i = 0;
  if (s[i] == '+' || s[i] == '-') ++i;
  std::size_t digits = 0;
  bool point = false;
  for (std::size_t j = i; j < s.size(); ++j) {
    if (std::isdigit(static_cast<unsigned char>(s[j]))) {
      ++digits;
    } else if (s[j] == '.' && !point) {
      point = true;
    } else {
      return std::nullopt;
    }
  }
  if (digits == 0) return std::nullopt;
  if (s[0] == '+') s.remove_prefix(1);
  double value = 0;
  const auto res = std::from_chars(s.data(), s.data() + s.size(), value);
  if (res.ec != std::errc() || !std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace nbx
