#pragma once

#include <string>

#include "config/settings_order.h"

namespace nbx {

// What the machine tells the settings: the user's folders, the locale, and
// whether the program starts with the user's session.

// The user's documents folder, or the home folder where there is none; the
// default of every folder key.
std::string DocumentsFolder();
// The locale's decimal and group separators, read afresh at each call.
char DecimalSeparator();
char ThousandSeparator();

// The entry that starts a program with the session: a desktop file of that
// name in the user's autostart folder. AddRunEntry is true when the file
// was written; RemoveRunEntry is true when it is gone or was never there.
bool AddRunEntry(const std::string& name, const std::string& command);
bool RemoveRunEntry(const std::string& name);
bool HasRunEntry(const std::string& name);

// The name of this program's entry.
inline constexpr const char* RunEntryName = "NBX_Nimbometer";

// All the load needs of this machine.
LoadContext MachineLoadContext();

}  // namespace nbx
