#pragma once

#include <QDialog>

namespace nbx {

// NBXLegend, "Warnings": every short code of the second status line with
// its meaning, one line each, opened by a right click on that line.
class LegendDialog : public QDialog {
  Q_OBJECT

 public:
  explicit LegendDialog(QWidget* parent = nullptr);
};

}  // namespace nbx
