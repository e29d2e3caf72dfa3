#include "core/number_format.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace nbx {
namespace {

struct Pattern {
  std::string prefix;
  std::string suffix;
  int minIntegerDigits = 0;
  int requiredDecimals = 0;
  int optionalDecimals = 0;
  bool hasPoint = false;
  bool percent = false;
};

bool IsNumberChar(char c) { return c == '0' || c == '#' || c == '.' || c == ','; }

Pattern ParsePattern(std::string_view text) {
  Pattern p;
  std::size_t first = 0;
  while (first < text.size() && !IsNumberChar(text[first])) ++first;
  std::size_t last = first;
  while (last < text.size() && IsNumberChar(text[last])) ++last;
  p.prefix = std::string(text.substr(0, first));
  p.suffix = std::string(text.substr(last));
  for (std::size_t i = first; i < last; ++i) {
    const char c = text[i];
    if (c == '.') {
      p.hasPoint = true;
    } else if (c == '0') {
      (p.hasPoint ? p.requiredDecimals : p.minIntegerDigits)++;
    } else if (c == '#' && p.hasPoint) {
      p.optionalDecimals++;
    }
  }
  p.percent = p.prefix.find('%') != std::string::npos || p.suffix.find('%') != std::string::npos;
  return p;
}

// The value's decimal digits, rounded half away from zero to `decimals`
// places, as an integer part and a fraction part of exactly `decimals` digits.
void RoundToDecimals(double magnitude, int decimals, std::string& integerDigits,
                     std::string& fractionDigits) {
  // 15 significant digits in scientific notation: d.ddddddddddddddde±x
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific, 14);
  std::string sci(buf, res.ptr);
  const std::size_t ePos = sci.find('e');
  const int exponent = std::atoi(sci.c_str() + ePos + 1);
  std::string digits;
  for (std::size_t i = 0; i < ePos; ++i)
    if (sci[i] != '.') digits += sci[i];
  // digits d0 d1 ... with the point after position exponent + 1.
  int pointPos = exponent + 1;
  if (pointPos < 0) {
    digits.insert(0, static_cast<std::size_t>(-pointPos), '0');
    pointPos = 0;
  }
  if (static_cast<int>(digits.size()) < pointPos + decimals + 1)
    digits.append(static_cast<std::size_t>(pointPos + decimals + 1) - digits.size(), '0');
  const bool roundUp = digits[static_cast<std::size_t>(pointPos + decimals)] >= '5';
  digits.resize(static_cast<std::size_t>(pointPos + decimals));
  if (roundUp) {
    int i = static_cast<int>(digits.size()) - 1;
    for (; i >= 0; --i) {
      if (digits[static_cast<std::size_t>(i)] == '9') {
        digits[static_cast<std::size_t>(i)] = '0';
      } else {
        digits[static_cast<std::size_t>(i)]++;
        break;
      }
    }
    if (i < 0) {
      digits.insert(digits.begin(), '1');
      pointPos++;
    }
  }
  integerDigits = digits.substr(0, static_cast<std::size_t>(pointPos));
  fractionDigits = digits.substr(static_cast<std::size_t>(pointPos));
  const std::size_t nonZero = integerDigits.find_first_not_of('0');
  integerDigits = nonZero == std::string::npos ? std::string() : integerDigits.substr(nonZero);
}

}  // namespace

std::string FormatNumber(double value, std::string_view patternText, char decimalSeparator) {
  const Pattern p = ParsePattern(patternText);
  // A percentage of the largest values is no longer finite.
  if (p.percent) value *= 100.0;
  if (!std::isfinite(value)) return {};
  const bool negative = std::signbit(value) && value != 0.0;
  std::string integerDigits, fractionDigits;
  RoundToDecimals(std::fabs(value), p.requiredDecimals + p.optionalDecimals, integerDigits,
                  fractionDigits);
  if (static_cast<int>(integerDigits.size()) < p.minIntegerDigits)
    integerDigits.insert(0, static_cast<std::size_t>(p.minIntegerDigits) - integerDigits.size(),
                         '0');
  while (static_cast<int>(fractionDigits.size()) > p.requiredDecimals &&
         fractionDigits.back() == '0')
    fractionDigits.pop_back();

  std::string out = p.prefix;
  if (negative) out += '-';
  out += integerDigits;
  if (p.hasPoint && (!fractionDigits.empty() || p.requiredDecimals > 0)) {
    out += decimalSeparator;
    out += fractionDigits;
  }
  out += p.suffix;
  return out;
}

double RoundHalfEven(double value) { return std::nearbyint(value); }

}  // namespace nbx
