#pragma once

#include "app/command_line.h"

namespace nbx {

// The program's start, step by step, then the station's run; returns the
// exit code. A second start on the same settings store ends at once with 0.
int RunProgram(const ProgramOptions& options);

// Set as the very first act of the start.
bool StartUpHasBegun();

}  // namespace nbx
