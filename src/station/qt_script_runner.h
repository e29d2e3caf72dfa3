#pragma once

#include "safety/script_runner.h"

namespace nbx {

// Starts a script as a program of its own: no shell (a path with blanks is
// one path), no window, no waiting.
class QtScriptRunner : public ScriptRunner {
 public:
  bool Start(const std::string& program) override;
};

}  // namespace nbx
