// Tab "Sensor": a row per measure with its bar, its value and its condition word.

#include <QGridLayout>
#include <QLabel>

#include "core/nimbometer.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/widgets/click_label.h"

namespace nbx {

QWidget* NBXNimbometerForm::BuildSensorTab() {
  Display& d = station_.nm().display;
  auto* frame = new QWidget(this);
  frame->setObjectName("Frame0");
  auto* grid = new QGridLayout(frame);
  grid->setColumnStretch(1, 1);
  int row = 0;
  std::vector<QWidget*> windRows;
  auto addRow = [&](const QString& caption, const QString& name, Label* labels, int count, bool wind) {
    auto* title = new QLabel(caption, frame);
    grid->addWidget(title, row, 0);
    if (wind) windRows.push_back(title);
    for (int i = 0; i < count; ++i) {
      const QString labelName = count == 1 && name != "BarTemperature" ? name : QStringLiteral("%1(%2)").arg(name).arg(i);
      QLabel* shown = bind_.Shown(frame, labelName, labels[i], wind ? &d.WindNotAvailable : nullptr);
      shown->setAccessibleName(caption.trimmed());
      shown->setMinimumWidth(i == 0 ? 220 : 100);
      shown->setFrameShape(QFrame::Panel);
      shown->setFrameShadow(QFrame::Sunken);
      shown->setAlignment(i == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
      grid->addWidget(shown, row, 1 + i);
    }
    ++row;
  };
  addRow("Sky temp: ", "BarCloud", d.BarCloud.data(), 3, false);
  addRow("Rain:", "BarRain", d.BarRain.data(), 3, false);
  addRow("Brightness:", "BarDay", d.BarDay.data(), 3, false);
  addRow("Wind speed:", "BarWindSpeed", d.BarWindSpeed.data(), 3, true);
  addRow("Gust:", "BarWindGust", &d.BarWindGust, 1, true);
  addRow("Rel. humidity:", "BarRH", d.BarRH.data(), 3, false);
  addRow("Atm pressure:", "BarAtmPres", d.BarAtmPres.data(), 3, false);
  addRow("Ambient temp:", "BarTemperature", d.BarTemperature.data(), 1, false);
  addRow("Dew point:", "BarDewPoint", &d.BarDewPoint, 1, false);
  addRow("D.P. delta:", "BarDewPointDelta", d.BarDewPointDelta.data(), 3, false);
  grid->setRowStretch(row, 1);

  // Where there is no wind sensor its rows give way to one line saying so.
  QLabel* noWind = bind_.Shown(frame, "WindNotAvailable", d.WindNotAvailable);
  grid->addWidget(noWind, 3, 0, 2, 4, Qt::AlignCenter);
  windTitles_ = windRows;
  return frame;
}

}  // namespace nbx
