#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// Runs the UNSAFE script when `unsafe`, else the SAFE one, on its own and
// without waiting: a script that is not configured or not there is skipped.
void RunSafetyScript(Nimbometer& nm, bool unsafe);
// True when the folder `path` holds a file named `file`, the name compared
// without regard to case.
bool ScriptExists(const std::string& path, const std::string& file);
// Puts "f51 " (UNSAFE) and then "f52 " (SAFE) in front of `codes` for each
// configured script that does not exist; true when one is missing.
bool CheckScripts(Nimbometer& nm, std::string& codes);

}  // namespace nbx
