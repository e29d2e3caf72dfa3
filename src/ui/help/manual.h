#pragma once

#include <QString>

namespace nbx {

// The HTML manual shipped beside the program: "manual" in the program's
// folder (the build tree), or "../share/nimbometer/manual" once installed.
// Empty when neither is there.
QString ManualFolder();

// The page of the manual for a tab of the main window, with the anchor of
// the sub-tab of "Setup" (tab 4); a tab it does not know gives the contents.
QString ManualPage(int tab, int setupSubTab);

// Opens the page in the desktop's browser; `contents` opens the contents
// page whatever the tab (the menu's "Contents ..."). False when the manual
// is missing or no browser took it.
bool OpenManual(int tab, int setupSubTab, bool contents);

}  // namespace nbx
