#include "safety/scripts.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "core/nimbometer.h"
#include "core/text.h"
#include "safety/script_runner.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;

struct ScriptSetting {
  const std::string& file;
  const std::string& path;
};

ScriptSetting ScriptFor(const Config& c, bool unsafe) {
  if (unsafe) return {c.ScriptFileUNSAFE, c.ScriptPathUNSAFE};
  return {c.ScriptFileSAFE, c.ScriptPathSAFE};
}

bool Configured(const ScriptSetting& script) { return !Trim(script.file).empty(); }

// The file in the folder whose name matches without regard to case, as the
// names of script files are given by people: the exact name first.
std::optional<fs::path> FindScript(const std::string& path, const std::string& file) {
  const fs::path joined = JoinPath(path, file);
  const fs::path name = joined.filename();
  if (name.empty()) return std::nullopt;
  const std::string wanted = ToUpperAscii(name.string());
  std::error_code error;
  if (fs::is_regular_file(joined, error)) return joined;
  const fs::path folder = joined.has_parent_path() ? joined.parent_path() : fs::path(".");
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    std::error_code kindError;
    if (ToUpperAscii(it->path().filename().string()) == wanted && it->is_regular_file(kindError))
      return it->path();
  }
  return std::nullopt;
}

}  // namespace

bool ScriptExists(const std::string& path, const std::string& file) {
  return FindScript(path, file).has_value();
}

void RunSafetyScript(Nimbometer& nm, bool unsafe) {
  const ScriptSetting script = ScriptFor(nm.config, unsafe);
  if (!Configured(script)) return;
  const std::optional<fs::path> found = FindScript(script.path, script.file);
  if (!found || nm.io.scripts == nullptr) return;
  nm.io.scripts->Start(found->string());
}

bool CheckScripts(Nimbometer& nm, std::string& codes) {
  bool failed = false;
  for (const bool unsafe : {true, false}) {
    const ScriptSetting script = ScriptFor(nm.config, unsafe);
    if (!Configured(script) || ScriptExists(script.path, script.file)) continue;
    codes.insert(0, unsafe ? "f51 " : "f52 ");
    failed = true;
  }
  return failed;
}

}  // namespace nbx
