#include "ui/tray/close_guard.h"

#include <QCloseEvent>
#include <QWidget>

#include "core/nimbometer.h"

namespace nbx {

CloseGuard::CloseGuard(Nimbometer& nm, QWidget* window) : QObject(window), nm_(nm), window_(window) {
  window->installEventFilter(this);
  poll_.setInterval(250);
  connect(&poll_, &QTimer::timeout, this, &CloseGuard::Refresh);
  poll_.start();
}

void CloseGuard::Refresh() {
  if (!window_) return;
  const bool closable = nm_.display.CloseItem.Enabled;
  if (closeButtonShown_ == closable) return;
  closeButtonShown_ = closable;
  const bool wasVisible = window_->isVisible();
  // A title bar without the close button must be asked for hint by hint; the
  // plain window flags give the desktop's usual title bar back. Changing the
  // flags of a shown window hides it, so it is shown again.
  const Qt::WindowFlags flags = closable ? Qt::WindowFlags(Qt::Window)
                   : Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint;
  window_->setWindowFlags(flags);
  if (wasVisible) window_->show();
}

bool CloseGuard::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::Close && !nm_.display.CloseItem.Enabled) {
    event->ignore();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace nbx
