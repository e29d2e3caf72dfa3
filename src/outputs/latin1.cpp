#include "outputs/latin1.h"

#include "core/text.h"

namespace nbx {
namespace {

// Decodes the character at `i`, moving `i` past it; -1 for a damaged sequence,
// of which one byte is consumed.
long NextCodePoint(std::string_view s, std::size_t& i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
  const unsigned char lead = byte(i);
  if (lead < 0x80) {
    ++i;
    return lead;
  }
  std::size_t length = 0;
  long cp = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2;
    cp = lead & 0x1F;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3;
    cp = lead & 0x0F;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4;
    cp = lead & 0x07;
  } else {
    ++i;
    return -1;
  }
  if (i + length > s.size()) {
    ++i;
    return -1;
  }
  for (std::size_t k = 1; k < length; ++k) {
    if ((byte(i + k) & 0xC0) != 0x80) {
      ++i;
      return -1;
    }
    cp = (cp << 6) | (byte(i + k) & 0x3F);
  }
  static const long kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  if (cp < kLeast[length] || cp > 0x10FFFF) {
    ++i;
    return -1;
  }
  i += length;
  return cp;
}

}  // namespace

std::string ToLatin1(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const long cp = NextCodePoint(utf8, i);
    out += cp >= 0 && cp <= 0xFF ? static_cast<char>(cp) : '?';
  }
  return out;
}

std::string Latin1Field(std::string_view utf8, int width) { return FixedWidth(ToLatin1(utf8), width); }

std::string FromLatin1(std::string_view latin1) {
  std::string out;
  out.reserve(latin1.size());
  for (const char c : latin1) {
    const auto b = static_cast<unsigned char>(c);
    if (b < 0x80) {
      out += c;
    } else {
      out += static_cast<char>(0xC0 | (b >> 6));
      out += static_cast<char>(0x80 | (b & 0x3F));
    }
  }
  return out;
}

std::string FirstCharacters(std::string_view utf8, std::size_t count) {
  std::size_t i = 0;
  for (std::size_t n = 0; n < count && i < utf8.size(); ++n) NextCodePoint(utf8, i);
  return std::string(utf8.substr(0, i));
}

}  // namespace nbx
