// The tolerant readers of the settings store on any text, and the writers
// whose text they must read back.
//
// Input: one byte of set-up (bit 0: a comma is the machine's decimal
// separator), four bytes of a colour, then the stored text.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "config/setting_conversions.h"
#include "core/number_format.h"
#include "core/text.h"
#include "fuzz_station.h"

namespace {

using namespace nbx;
using nbx::fuzz::Require;

// Digits with at most one separator and few enough of them to be exact.
bool IsPlainShortNumber(std::string_view t) {
  const auto digits = std::count_if(t.begin(), t.end(), [](char c) { return c >= '0' && c <= '9'; });
  return t.find_first_not_of("0123456789.,") == std::string_view::npos && digits >= 1 && digits <= 15 &&
         t.size() - static_cast<std::size_t>(digits) <= 1;
}

void CheckLocaleNumbers(std::string_view text, char separator) {
  const std::optional<double> number = LocaleNumber(text, separator);
  Require(!number || std::isfinite(*number), "a number of the store is finite");
  if (number) {
    // What the unload writes, the next load reads as the same value.
    const std::string written = NumberToText(*number, separator);
    const std::optional<double> reread = LocaleNumber(written, separator);
    Require(reread.has_value(), "a number written to the store reads back");
    Require(std::fabs(*reread - *number) <= 1e-14 * std::fabs(*number),
            "a number written to the store keeps fifteen digits");
  }
  const std::optional<std::int32_t> whole = LocaleLong(text, separator);
  Require(!whole || number, "a whole number is a number");
  if (whole) Require(*whole == RoundHalfEven(*number), "a whole number is the rounded number");
  if (Trim(text).empty()) {
    Require(IntFromSetting(text, 7, separator) == 7, "blank text gives the default");
    Require(LongFromSetting(text, -7, separator) == -7, "blank text gives the default");
  }
  Require(LongFromText(text, 12345, separator) == whole.value_or(12345),
          "a Long is the whole number or the default");
}

void CheckLocaleFreeReaders(std::string_view text) {
  const bool blank = Trim(text).empty();
  Require(BoolFromSetting(text, true) == BoolFromSetting(text, false) || blank,
          "only blank text takes a flag's default");
  const double value = DoubleFromSetting(text, 2.5);
  Require(std::isfinite(value), "a number read under every locale is finite");
  const std::string t = Trim(text);
  if (IsPlainShortNumber(t)) {
    std::string pointed = t;
    for (char& c : pointed)
      if (c == ',') c = '.';
    Require(value == LocaleNumber(pointed, '.'), "a short plain number reads the same every way");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 5) return 0;
  const char separator = (data[0] & 1) != 0 ? ',' : '.';
  std::uint32_t bits = 0;
  std::memcpy(&bits, data + 1, 4);
  const std::string_view text(reinterpret_cast<const char*>(data) + 5, size - 5);

  CheckLocaleNumbers(text, separator);
  CheckLocaleFreeReaders(text);
  const Colour colour = bits;
  Require(ColourFromText(ColourToText(colour), 0) == colour, "a colour reads back as written");
  (void)ColourFromText(text, 0);
  (void)BooleanFromText(text, true);
  return 0;
}
