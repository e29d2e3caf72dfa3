#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// Plays a sound file; a name ending in "|repeat" plays on until stopped.
void AlarmStart(Nimbometer& nm, const std::string& file);
// Stops the alarm sound.
void AlarmStop(Nimbometer& nm);
// Puts "f51 " / "f52 " in front of `codes` for a configured script that does
// not exist; true when one is missing.
bool CheckScripts(Nimbometer& nm, std::string& codes);

}  // namespace nbx
