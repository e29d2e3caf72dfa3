#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nbx {

// Blanks (spaces only) off both ends, as the window's Trim does.
std::string Trim(std::string_view text);

// Joins a folder and a name with one "/"; an empty folder gives the name, and a
// folder that already ends in "/" gets no second one.
std::string JoinPath(std::string_view folder, std::string_view name);

// A number for a fixed-width record: formatted by `pattern`, right-aligned in
// width - 1 (so one blank stands behind it once the text is laid into the
// field), its leading characters lost when too long, and with a decimal point
// whatever the machine's separator. Width 1 or less formats without alignment.
std::string FormatField(double value, std::string_view pattern, int width,
                        char decimalSeparator = '.');

// The text cut to `width` characters or padded with blanks on the right up to
// it; width 0 leaves the text as it is.
std::string FixedWidth(std::string_view text, int width);

// Every "." replaced by ",".
std::string ToCommaDecimal(std::string_view text);

// Upper-cases ASCII letters.
std::string ToUpperAscii(std::string_view text);

// The number of a data field of the box, blanks trimmed: an optional sign,
// digits and an optional fraction behind ".". Anything else is damaged and
// gives no value, so that the field it was meant for keeps its old one.
std::optional<double> ParseNumber(std::string_view text);

}  // namespace nbx
