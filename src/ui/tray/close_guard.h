#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;

namespace nbx {
struct Nimbometer;

// While automation clients are attached the window cannot be closed: its
// close requests are refused and its title bar loses the close button; when
// the last client leaves both come back. Clients come and go between cycles,
// so the button follows the Close item on a short poll.
class CloseGuard : public QObject {
  Q_OBJECT

 public:
  CloseGuard(Nimbometer& nm, QWidget* window);

  // Brings the title bar's button in line with the Close item at once.
  void Refresh();
  bool closeButtonShown() const { return closeButtonShown_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Nimbometer& nm_;
  QPointer<QWidget> window_;
  QTimer poll_;
  bool closeButtonShown_ = true;
};

}  // namespace nbx
