#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "boxsim/box.h"

namespace nbx::boxsim {

inline constexpr std::string_view ProgramVersion = "nbx-boxsim 1.0.0";

struct ProgramOptions {
  std::string linkPath;
  std::string scriptPath;
  std::string logPath;
  bool help = false;
  bool version = false;
};

// The arguments after the program name. Settings of the box go straight into
// `box`; false with `why` on the first bad argument.
bool ParseCommandLine(const std::vector<std::string>& arguments, ProgramOptions& options, Box& box,
                      std::string& why);

std::string HelpText();

}  // namespace nbx::boxsim
