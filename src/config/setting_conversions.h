#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/colours.h"

namespace nbx {

// The tolerant readers of settings. Each takes the stored text and the key's
// default, never throws, and answers the default where the text says nothing.

// Empty or blank text gives the default. Otherwise false exactly when the
// text, as it stands, is one of "False", "Falso", "Falsch", "0", "Faux" (the
// word of a Spanish, Portuguese, Italian, German or French system); anything
// else is true. The blank test trims and the word test does not, so that
// " False" reads as true: stores in the field have always been read so.
bool BoolFromSetting(std::string_view text, bool defaultValue);

// Blank text gives the default, otherwise the integer conversion of
// IntegerFromText (16 bits) or LongFromText (32 bits).
std::int16_t IntFromSetting(std::string_view text, std::int16_t defaultValue,
                            char decimalSeparator = '.');
std::int32_t LongFromSetting(std::string_view text, std::int32_t defaultValue,
                             char decimalSeparator = '.');

// A number read the same under every locale: the blanks trimmed, each digit
// shifts into an accumulator, a "," or a "." marks where the fraction begins
// (the last one counts), and the accumulator is divided by ten to the number
// of characters behind it. There is no sign. A character that is neither a
// digit nor a separator makes the text no number, which gives the default;
// so do more digits than a double holds.
double DoubleFromSetting(std::string_view text, double defaultValue);

// The plain conversions of the other keys, as the machine's locale reads
// numbers. None of them stops the load: a text that is no number of the
// kind (a letter in it, "12a", "abc", a group separator, a number too large
// for the type, a blank text) gives the key's default.

// Blanks trimmed, an optional sign, digits with the locale's decimal
// separator (or the point, which every machine writes), an optional exponent;
// none for any other text.
std::optional<double> LocaleNumber(std::string_view text, char decimalSeparator);
// That number rounded to a whole one, ties to the even one ("12.5" is 12);
// none when it is no number or does not fit in 32 bits.
std::optional<std::int32_t> LocaleLong(std::string_view text, char decimalSeparator);

// The same with the key's default in place of none.
double NumberFromText(std::string_view text, double defaultValue, char decimalSeparator);
std::int32_t LongFromText(std::string_view text, std::int32_t defaultValue, char decimalSeparator);
// In 16 bits.
std::int16_t IntegerFromText(std::string_view text, std::int16_t defaultValue,
                             char decimalSeparator);
// "True" and "False" in any case, or a number: 0 is false, any other true.
bool BooleanFromText(std::string_view text, bool defaultValue);
// A colour is a Long holding the 0x00BBGGRR value.
Colour ColourFromText(std::string_view text, Colour defaultValue);

// The texts written to the store.

// Up to 15 significant digits, the shortest form, with the locale's
// separator ("9,9" on a German machine); a value that is not finite gives "".
std::string NumberToText(double value, char decimalSeparator);
std::string BooleanToText(bool value);  // "True" or "False"
std::string ColourToText(Colour value); // the signed Long of its bits

}  // namespace nbx
