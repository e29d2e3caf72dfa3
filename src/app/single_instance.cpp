#include "app/single_instance.h"

#include <QDir>
#include <QFileInfo>

namespace nbx {

// Not the ".lock" of QSettings, which takes that name while it writes.
SingleInstance::SingleInstance(const QString& settingsFile) : lock_(settingsFile + ".running") {
  // Held as long as the station runs; one left by a process that died is
  // taken over, as its process is gone.
  lock_.setStaleLockTime(0);
}

bool SingleInstance::AnotherIsRunning() {
  QDir().mkpath(QFileInfo(lock_.fileName()).path());
  if (lock_.tryLock(0)) return false;
  return lock_.error() == QLockFile::LockFailedError;
}

}  // namespace nbx
