#pragma once

#include <string>

namespace nbx {

// The start-up steps that need nothing but the file system.

// "NBX_Nimbometer (v7.00.000)": major, minor as "00", revision as "000".
std::string VersionText(int major, int minor, int revision);

// Whether the file is in the folder; the name is compared ignoring case, as
// the update files have always been named by hand now and then.
bool FileExistsInAppPath(const std::string& name, const std::string& programFolder);

// Deletes the file of that name in the folder when it is there. An empty
// name deletes the path given as the folder. Failures are ignored.
void DeleteFile(const std::string& name, const std::string& folder);

inline constexpr const char* UpdaterFile = "NBX_Updater.exe";
inline constexpr const char* NewUpdaterFile = "NBX_Updater_net.exe";
inline constexpr const char* OldUpdaterFile = "NBX_Updater_exe.old";

// An updater fetched by the last update takes the place of the current one,
// which is kept as the old one. A rename or delete that fails is ignored:
// the next start tries again.
void SwapInNewUpdater(const std::string& programFolder);

}  // namespace nbx
