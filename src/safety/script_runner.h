#pragma once

#include <string>

namespace nbx {

// Runs the user's SAFE and UNSAFE scripts: the program itself, no shell,
// no window, no waiting for its end.
class ScriptRunner {
 public:
  virtual ~ScriptRunner() = default;
  // Starts `program` (a full path, blanks and all) on its own; false when it
  // could not be started.
  virtual bool Start(const std::string& program) = 0;
};

}  // namespace nbx
