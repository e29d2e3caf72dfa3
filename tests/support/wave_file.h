#pragma once

#include <cstdint>
#include <string>

#include "support/child_process.h"

namespace nbx::test {

// Writes a sound file of `seconds` of silence (8 kHz, mono, 16 bits, WAVE).
inline void WriteSilentWave(const std::string& path, double seconds) {
  const std::uint32_t rate = 8000;
  const auto data = static_cast<std::uint32_t>(seconds * rate) * 2;
  std::string wav;
  auto put = [&](std::uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) wav += static_cast<char>((v >> (8 * i)) & 0xFF);
  };
  wav += "RIFF";
  put(36 + data, 4);
  wav += "WAVEfmt ";
  put(16, 4), put(1, 2), put(1, 2), put(rate, 4), put(rate * 2, 4), put(2, 2), put(16, 2);
  wav += "data";
  put(data, 4);
  wav += std::string(data, '\0');
  WriteFile(path, wav);
}

}  // namespace nbx::test
