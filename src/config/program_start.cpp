#include "config/program_start.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "core/number_format.h"

namespace nbx {
namespace fs = std::filesystem;
namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameNameIgnoringCase(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (Lower(a[i]) != Lower(b[i])) return false;
  return true;
}

// The file of the folder whose name is the wanted one, ignoring case.
std::optional<fs::path> FindInFolder(const std::string& name, const std::string& folder) {
  std::error_code error;
  const fs::path exact = fs::path(folder) / name;
  if (fs::is_regular_file(exact, error)) return exact;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
    if (SameNameIgnoringCase(it->path().filename().string(), name)) return it->path();
  return std::nullopt;
}

}  // namespace

std::string VersionText(int major, int minor, int revision) {
  return "NBX_Nimbometer (v" + std::to_string(major) + "." + FormatNumber(minor, "00") + "." +
         FormatNumber(revision, "000") + ")";
}

bool FileExistsInAppPath(const std::string& name, const std::string& programFolder) {
  return FindInFolder(name, programFolder).has_value();
}

void DeleteFile(const std::string& name, const std::string& folder) {
  std::error_code error;
  if (name.empty()) {
    fs::remove(folder, error);
    return;
  }
  if (const std::optional<fs::path> file = FindInFolder(name, folder)) fs::remove(*file, error);
}

void SwapInNewUpdater(const std::string& programFolder) {
  const std::optional<fs::path> fresh = FindInFolder(NewUpdaterFile, programFolder);
  if (!fresh) return;
  std::error_code error;
  if (const std::optional<fs::path> current = FindInFolder(UpdaterFile, programFolder)) {
    DeleteFile(OldUpdaterFile, programFolder);
    fs::rename(*current, fs::path(programFolder) / OldUpdaterFile, error);
  }
  fs::rename(*fresh, fs::path(programFolder) / UpdaterFile, error);
}

}  // namespace nbx
