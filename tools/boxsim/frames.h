#pragma once

#include <string>
#include <string_view>

namespace nbx::boxsim {

inline constexpr std::size_t FrameLength = 15;
inline constexpr std::size_t DataLength = 12;
inline constexpr char EndOfReplyType = '\x11';

// "!", the type, the sub-type and the data left-aligned in 12 blanks (cut to
// 12 when longer).
std::string Frame(char type, std::string_view data, char subType = ' ');

// "!", byte 17 and thirteen blanks: closes every reply.
std::string EndOfReplyFrame();

// "!K", the four characters of the serial (blank-padded) and blanks to 15:
// the serial sits where other frames keep their sub-type and data.
std::string SerialFrame(std::string_view serial);

// A number as the box writes it: fixed notation, no exponent, at most four
// decimals and no trailing zeros, so whole values have no decimal point.
std::string NumberText(double value);

// The same text with one character turned into "x" ("1234" gives "12x4"),
// the way a flipped bit on the line spoils a number.
std::string DamagedNumberText(std::string_view text);

}  // namespace nbx::boxsim
