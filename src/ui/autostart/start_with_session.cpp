#include "ui/autostart/start_with_session.h"

#include "core/host.h"
#include "station/system_areas.h"
#include "ui/widgets/message_box.h"

namespace nbx {

QString StartWithSessionCommand(const QString& programPath) {
  static const QString reserved = QStringLiteral(" \t\"'\\><~|&;$*?#()`");
  bool needsQuotes = false;
  for (QChar c : programPath) needsQuotes = needsQuotes || reserved.contains(c);
  if (!needsQuotes) return programPath;
  QString quoted;
  for (QChar c : programPath) {
    if (c == '"' || c == '`' || c == '$' || c == '\\') quoted += '\\';
    quoted += c;
  }
  // Within the desktop file a backslash is itself escaped once more.
  quoted.replace("\\", "\\\\");
  return '"' + quoted + '"';
}

bool ApplyStartWithSession(QWidget* over, bool on, const QString& programPath) {
  const bool done = on ? AddRunEntry(RunEntryName, StartWithSessionCommand(programPath).toStdString())
                       : RemoveRunEntry(RunEntryName);
  if (done) return true;
  ShowMessage(over,
              on ? "The program could not be set to start with the session: the autostart "
                   "entry could not be written."
                 : "The program's autostart entry could not be removed.",
              ButtonsOk, {});
  return false;
}

}  // namespace nbx
