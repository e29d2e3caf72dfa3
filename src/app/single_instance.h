#pragma once

#include <QLockFile>
#include <QString>

namespace nbx {

// One station per settings store: a lock file beside the store, held for the
// life of the process. Two stores on one machine are two stations.
class SingleInstance {
 public:
  explicit SingleInstance(const QString& settingsFile);
  // True when another running process holds the lock of this store. A lock
  // that cannot be made at all (a folder without rights) does not keep the
  // station from running.
  bool AnotherIsRunning();

 private:
  QLockFile lock_;
};

}  // namespace nbx
