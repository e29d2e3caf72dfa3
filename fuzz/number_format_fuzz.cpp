// The number formatter of the labels and the data files, with any value
// (infinities, not-a-numbers and the smallest fractions among them), any
// pattern and any field width.
//
// Input: eight bytes of the value's bits, one byte of set-up (bit 0: a comma
// is the decimal separator), one byte of the field width (signed), then the
// pattern.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "core/number_format.h"
#include "core/text.h"
#include "fuzz_station.h"

namespace {

using namespace nbx;
using nbx::fuzz::Require;

// A pattern of digit places with at most one point writes a plain number,
// with as many decimals as places behind the point.
std::optional<int> PlainDecimals(std::string_view pattern) {
  constexpr auto none = std::string_view::npos;
  const std::size_t point = pattern.find('.');
  if (pattern.find_first_not_of("0#.") != none || pattern.find_first_of("0#") == none ||
      (point != none && pattern.find('.', point + 1) != none))
    return std::nullopt;
  return point == none ? 0 : static_cast<int>(pattern.size() - point - 1);
}

// The text stands for the value, rounded to the pattern's decimals on the
// value's fifteen significant digits.
void CheckPlainNumber(double value, std::string_view pattern, const std::string& text) {
  const std::optional<int> decimals = PlainDecimals(pattern);
  if (!decimals || std::fabs(value) >= 1e300) return;
  // "#" writes nothing for a zero, and a sign alone for a small negative value.
  if (text.empty() || text == "-") return;
  const std::optional<double> read = ParseNumber(text);
  Require(read.has_value(), "a plain pattern writes a plain number");
  const double step = std::pow(10.0, -*decimals);
  Require(std::fabs(*read - value) <= step / 2 * (1 + 1e-9) + std::fabs(value) * 1e-14,
          "the number written is the value rounded to the pattern's decimals");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 10) return 0;
  std::uint64_t bits = 0;
  std::memcpy(&bits, data, 8);
  const double value = std::bit_cast<double>(bits);
  const char separator = (data[8] & 1) != 0 ? ',' : '.';
  const int width = static_cast<std::int8_t>(data[9]);
  const std::string_view pattern(reinterpret_cast<const char*>(data) + 10, size - 10);

  const std::string text = FormatNumber(value, pattern, separator);
  if (separator == '.') CheckPlainNumber(value, pattern, text);
  (void)FormatField(value, pattern, width, separator);
  return 0;
}
