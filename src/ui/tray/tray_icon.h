#pragma once

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>

#include "core/colours.h"

class QSystemTrayIcon;
class QWidget;

namespace nbx {
struct Nimbometer;
class Station;

// The tooltip of the icon: the version title while stopped, the cloud, rain
// and daylight words while the box runs.
QString TrayTipText(const Nimbometer& nm, const QString& versionTitle);

// The icon in a condition's colour (a colour as the window's labels hold it,
// blue in the high byte).
QIcon ConditionIcon(Colour colour);

// The window's presence in the notification area: the icon in the colour of
// the sky's condition, its tooltip, its clicks and the pop-up menu
// (mPopupSys). Where the desktop has no notification area nothing is shown
// and the window works as before.
class TrayIcon : public QObject {
  Q_OBJECT

 public:
  TrayIcon(Station& station, QWidget* window, const QString& versionTitle);
  ~TrayIcon() override;

  // UpdateTrayIcon: at the end of each cycle and on a change of window
  // state. Also brings the pop-up menu in line with RefreshMenus.
  void Update();
  // Back to the resting picture and the title tip, as the Stop action leaves it.
  void ShowIdle();

  // The pop-up menu with mPopStart, mPopStop, mPopMinimize, mPopRestore,
  // mPopExit, as RefreshMenus has set them.
  QMenu* menu() { return &menu_; }
  QString toolTip() const { return toolTip_; }
  QIcon icon() const { return icon_; }

  // The icon's clicks.
  void LeftClick();
  void DoubleClick();

 signals:
  void startRequested();
  void stopRequested();
  void exitRequested();

 private:
  void ApplyMenuState();
  void Restore();
  void Minimize();

  Station& station_;
  QPointer<QWidget> window_;
  QString versionTitle_;
  QMenu menu_;
  QAction* start_ = nullptr;
  QAction* stop_ = nullptr;
  QAction* separator0_ = nullptr;
  QAction* minimize_ = nullptr;
  QAction* restore_ = nullptr;
  QAction* separator1_ = nullptr;
  QAction* exit_ = nullptr;
  QString toolTip_;
  QIcon icon_;
  std::unique_ptr<QSystemTrayIcon> tray_;  // none where there is no notification area
};

}  // namespace nbx
