#pragma once

#include <cstdint>

namespace nbx {

// A colour as the window's controls hold it: 24 bits, red in the low byte and
// blue in the high byte (0x00BBGGRR).
using Colour = std::uint32_t;

namespace colours {
inline constexpr Colour Red = 0x0000FF;
inline constexpr Colour Green = 0x00FF00;        // the safe indicator
inline constexpr Colour DarkGreen = 0x008000;    // status texts, "Opened"
inline constexpr Colour Navy = 0x800000;         // "dark blue" status texts
inline constexpr Colour Blue = 0xFF0000;         // cycle lamp of a good cycle
inline constexpr Colour Orange = 0x0080FF;       // cycle lamp of a stretched cycle
inline constexpr Colour LampGrey = 0xC0C0C0;     // a lamp that is off
inline constexpr Colour PanelGrey = 0xE0E0E0;    // a panel without data
inline constexpr Colour Black = 0x000000;
inline constexpr Colour White = 0xFFFFFF;
inline constexpr Colour SystemButtonFace = 0x8000000F;  // the platform's default control colour
}  // namespace colours

}  // namespace nbx
