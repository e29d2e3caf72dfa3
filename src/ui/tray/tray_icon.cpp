#include "ui/tray/tray_icon.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QWidget>

#include "automation/window_state.h"
#include "core/nimbometer.h"
#include "station/station.h"

namespace nbx {
namespace {

QColor FromColour(Colour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

void Apply(QAction* action, const Control& control) {
  action->setVisible(control.Visible);
  action->setEnabled(control.Enabled);
}

}  // namespace

QString TrayTipText(const Nimbometer& nm, const QString& versionTitle) {
  if (!nm.state.IsRunning) return versionTitle;
  const Display& d = nm.display;
  return QStringLiteral("NBX_Nimbometer: ") + QString::fromStdString(d.BarCloud[2].Caption) + "-" +
         QString::fromStdString(d.BarRain[2].Caption) + "-" +
         QString::fromStdString(d.BarDay[2].Caption);
}

QIcon ConditionIcon(Colour colour) {
  // A round sky in the condition's colour under a dark rim, readable on light
  // and dark panels alike.
  QIcon icon;
  for (int size : {16, 22, 32, 48, 64}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(40, 40, 40), std::max(1, size / 12)));
    painter.setBrush(FromColour(colour));
    const int margin = std::max(1, size / 16);
    painter.drawEllipse(QRect(margin, margin, size - 2 * margin - 1, size - 2 * margin - 1));
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

TrayIcon::TrayIcon(Station& station, QWidget* window, const QString& versionTitle)
    : station_(station), window_(window), versionTitle_(versionTitle) {
  menu_.setObjectName("mPopupSys");
  menu_.setTitle("&SysTray");
  auto add = [this](const char* name, const QString& caption) {
    QAction* action = menu_.addAction(caption);
    action->setObjectName(name);
    return action;
  };
  start_ = add("mPopStart", "&Start");
  stop_ = add("mPopStop", "S&top");
  separator0_ = menu_.addSeparator();
  separator0_->setObjectName("mSep0");
  minimize_ = add("mPopMinimize", "&Minimize");
  restore_ = add("mPopRestore", "&Restore");
  separator1_ = menu_.addSeparator();
  separator1_->setObjectName("mSep1");
  exit_ = add("mPopExit", "E&xit");
  connect(start_, &QAction::triggered, this, &TrayIcon::startRequested);
  connect(stop_, &QAction::triggered, this, &TrayIcon::stopRequested);
  connect(exit_, &QAction::triggered, this, &TrayIcon::exitRequested);
  connect(minimize_, &QAction::triggered, this, &TrayIcon::Minimize);
  connect(restore_, &QAction::triggered, this, &TrayIcon::Restore);
  connect(&menu_, &QMenu::aboutToShow, this, &TrayIcon::Update);

  if (QSystemTrayIcon::isSystemTrayAvailable()) {
    tray_ = std::make_unique<QSystemTrayIcon>();
    tray_->setContextMenu(&menu_);
    connect(tray_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
              if (reason == QSystemTrayIcon::Trigger) LeftClick();
              if (reason == QSystemTrayIcon::DoubleClick) DoubleClick();
              if (reason == QSystemTrayIcon::Context) {
                Update();
                if (window_) window_->activateWindow();
              }
            });
  }
  ShowIdle();
  if (tray_) tray_->show();
}

TrayIcon::~TrayIcon() {
  if (tray_) tray_->hide();
}

void TrayIcon::Update() {
  Nimbometer& nm = station_.nm();
  if (window_) nm.display.WindowMinimized = window_->isMinimized();
  RefreshMenus(nm);
  ApplyMenuState();
  icon_ = ConditionIcon(nm.display.BarCloud[2].BackColor);
  toolTip_ = TrayTipText(nm, versionTitle_);
  if (!tray_) return;
  tray_->setIcon(icon_);
  tray_->setToolTip(toolTip_);
}

void TrayIcon::ShowIdle() {
  ApplyMenuState();
  icon_ = QApplication::windowIcon().isNull() ? ConditionIcon(colours::PanelGrey)
                                               : QApplication::windowIcon();
  toolTip_ = versionTitle_;
  if (!tray_) return;
  tray_->setIcon(icon_);
  tray_->setToolTip(toolTip_);
}

void TrayIcon::ApplyMenuState() {
  const Display& d = station_.nm().display;
  Apply(start_, d.mPopStart);
  Apply(stop_, d.mPopStop);
  Apply(exit_, d.mPopExit);
  Apply(minimize_, d.mPopMinimize);
  Apply(restore_, d.mPopRestore);
  Apply(separator0_, d.mSep0);
  Apply(separator1_, d.mSep1);
}

void TrayIcon::LeftClick() {
  // A minimised window stays so: the click that begins a double click would
  // otherwise restore it, and the double click would minimise it again.
  if (!window_ || window_->isMinimized()) return;
  if (!window_->isVisible()) window_->show();
  window_->raise();
  window_->activateWindow();
}

void TrayIcon::DoubleClick() {
  if (!window_) return;
  if (window_->isMinimized())
    Restore();
  else if (QApplication::activeWindow() == window_)
    Minimize();
}

void TrayIcon::Restore() {
  if (!window_) return;
  window_->showNormal();
  window_->raise();
  window_->activateWindow();
  Update();
}

void TrayIcon::Minimize() {
  if (!window_) return;
  window_->showMinimized();
  Update();
}

}  // namespace nbx
