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

// The page of a help context as the window gives it for F1: 2001 plus the
// main tab, (201 + 4) * 10 + 1 plus the sub-tab of "Setup", 2061 for
// "Device"; any other context (0 for "Contents ...") gives the contents.
QString ManualPageForContext(int helpContext);

// Opens the page of the help context in the desktop's browser. False when
// the manual is missing or no browser took it.
bool OpenManual(int helpContext);

}  // namespace nbx
