#pragma once

#include <QString>

class QWidget;

namespace nbx {

// The command of the autostart entry: the program's full path, quoted as a
// desktop file's Exec key wants a path with spaces or quotes in it.
QString StartWithSessionCommand(const QString& programPath);

// CheckStartApp: ticked, the program starts with the user's session (an
// autostart entry is written); cleared, the entry is removed. A failure is
// told through the program's message box over `over` and the box's state is
// left to the caller; false then.
bool ApplyStartWithSession(QWidget* over, bool on, const QString& programPath);

}  // namespace nbx
