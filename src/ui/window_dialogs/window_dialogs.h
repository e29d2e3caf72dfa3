#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <optional>

#include "safety/conditions.h"

namespace nbx {
class CloseGuard;
class DeviceConstants;
class NBXNimbometerForm;
class Station;
class TrayIcon;

// The windows around the main one, joined to its hooks: the first start,
// the legend, the factor window, the file structure, the about box, the
// manual, the notification-area icon and the close button's guard. Made
// once, after the main window, for the program's life.
class WindowDialogs : public QObject {
  Q_OBJECT

 public:
  WindowDialogs(NBXNimbometerForm& window, Station& station);
  ~WindowDialogs() override;

  TrayIcon& tray() { return *tray_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FirstStart();
  // Finds the controls that open a window of their own and listens to them.
  void AttachToControls();
  bool ChooseSound(QWidget* entry);

  NBXNimbometerForm& window_;
  Station& station_;
  std::unique_ptr<TrayIcon> tray_;
  CloseGuard* guard_ = nullptr;
  DeviceConstants* constants_ = nullptr;
  QWidget* tempGraph_ = nullptr;
  // The alarm entries by family and class; no family: the link alarm.
  std::map<QWidget*, std::pair<std::optional<Family>, int>> soundEntries_;
};

}  // namespace nbx
