#pragma once

#include <string>

namespace nbx::test {

// Writes a sound file of `seconds` of silence (8 kHz, mono, 16 bits, WAVE).
void WriteSilentWave(const std::string& path, double seconds);

}  // namespace nbx::test
