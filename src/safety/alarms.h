#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// Stops the alarm sound.
void AlarmStop(Nimbometer& nm);
// Puts "f51 " / "f52 " in front of `codes` for a configured script that does
// not exist; true when one is missing.
bool CheckScripts(Nimbometer& nm, std::string& codes);

}  // namespace nbx
