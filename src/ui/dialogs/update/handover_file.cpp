#include "ui/dialogs/update/handover_file.h"

#include <QDir>
#include <QSaveFile>

namespace nbx {

QByteArray HandoverBytes(QPoint windowPosition, const QByteArray& updaterBytes) {
  return QStringLiteral("\"Title\",\"NBX_Nimbometer\",%1,%2,\"NBX_Nimbometer.exe\"\r\n")
             .arg(windowPosition.x())
             .arg(windowPosition.y())
             .toLatin1() +
         updaterBytes;
}

bool WriteHandoverFile(const QString& folder, QPoint windowPosition, const QByteArray& updaterBytes,
                       QString* error) {
  QSaveFile file(QDir(folder).filePath(HandoverFileName));
  const QByteArray bytes = HandoverBytes(windowPosition, updaterBytes);
  if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) return true;
  *error = QStringLiteral("%1 cannot be written: %2").arg(file.fileName(), file.errorString());
  return false;
}

}  // namespace nbx
