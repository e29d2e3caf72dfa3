#pragma once

#include <QLabel>
#include <QMouseEvent>

namespace nbx {

// A label that answers the mouse: swatches open the colour picker, and some
// labels of the window take a right click.
class ClickLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

 signals:
  void clicked();
  void rightClicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) emit clicked();
    if (event->button() == Qt::RightButton) emit rightClicked();
    QLabel::mouseReleaseEvent(event);
  }
};

}  // namespace nbx
