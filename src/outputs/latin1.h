#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nbx {

// The fixed records (single-line files, transfer file) hold one byte a
// character, in Latin-1; the program's own text is UTF-8. A character that
// Latin-1 lacks, or a damaged byte, becomes "?", so that a record never widens.
std::string ToLatin1(std::string_view utf8);
// The text in Latin-1, cut to `width` bytes or padded with blanks up to it.
std::string Latin1Field(std::string_view utf8, int width);
// Latin-1 bytes back to the program's text.
std::string FromLatin1(std::string_view latin1);

// The first `count` characters of a UTF-8 text (a character is never split).
std::string FirstCharacters(std::string_view utf8, std::size_t count);

}  // namespace nbx
