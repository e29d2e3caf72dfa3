// Tab "Device": the latest raw values and the counters of the link.

#include <QGridLayout>
#include <QLabel>

#include "core/nimbometer.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/widgets/click_label.h"
#include "ui/widgets/message_box.h"

namespace nbx {

QWidget* NBXNimbometerForm::BuildDeviceTab() {
  Display& d = station_.nm().display;
  auto* frame = new QWidget(this);
  frame->setObjectName("Frame5");
  auto* grid = new QGridLayout(frame);
  const std::pair<const char*, std::pair<const char*, Label*>> rows[] = {
      {"SQM Freq", {"LblSQMFreq", &d.LblSQMFreq}},
      {"Serial number:", {"lblSerial", &d.lblSerial}},
      {"Atm. pressure", {"LblAtmPres", &d.LblAtmPres}},
      {"EXT temp", {"lblRHTemp", &d.lblRHTemp}},
      {" Heating status", {"LblHeating", &d.LblHeating}},
      {"Rain Heater", {"LblRainH", &d.LblRainH}},
      {" Chars in Buffer", {"LblBuffer", &d.LblBuffer}},
      {" 1st byte Error", {"LblPECByte1", &d.LblPECByte1}},
      {" 2nd byte Error", {"LblPECByte2", &d.LblPECByte2}},
      {" 3rd byte Error", {"LblPECByte3", &d.LblPECByte3}},
      {" PEC byte Error", {"LblPECByte4", &d.LblPECByte4}},
      {" Internal Errors", {"LblPECTot4", &d.LblPECTot4}},
      {" Total Readings", {"LblPECReading", &d.LblPECReading}},
      {"IR (sky temp)", {"LblSkyIRTemp", &d.LblSkyIRTemp}},
      {"IRS temp", {"LblSkySensorTemp", &d.LblSkySensorTemp}},
      {"Rain Temp", {"LblRainT", &d.LblRainT}},
      {" Firmware ver.", {"lblVersion", &d.lblVersion}},
      {"Rain", {"LblRainF", &d.LblRainF}},
      {"Supply", {"LblVref", &d.LblVref}},
      {"Brightness", {"LblLDR", &d.LblLDR}},
      {" Timeout Errors", {"LblRS232Errors", &d.LblRS232Errors}},
      {"Read cycle", {"LblReadCycle", &d.LblReadCycle}},
      {"Wind Speed", {"LblWind", &d.LblWind}},
  };
  constexpr int PerColumn = 12;
  int index = 0;
  for (const auto& [caption, label] : rows) {
    ClickLabel* shown = bind_.Shown(frame, label.first, *label.second);
    shown->setAccessibleName(QString(caption).trimmed());
    shown->setMinimumWidth(140);
    shown->setFrameShape(QFrame::Panel);
    shown->setFrameShadow(QFrame::Sunken);
    grid->addWidget(new QLabel(caption, frame), index % PerColumn, (index / PerColumn) * 2);
    grid->addWidget(shown, index % PerColumn, (index / PerColumn) * 2 + 1);
    ++index;
  }
  auto* readings = frame->findChild<ClickLabel*>("LblPECReading");
  connect(readings, &ClickLabel::rightClicked, this, [this] {
    if (ShowMessage(this, "Reset counter ?", ButtonsYesNo, QString()) == ReplyYes)
      station_.nm().display.LblPECReading.Caption = "0";
    Render();
  });
  grid->setRowStretch(PerColumn, 1);
  grid->setColumnStretch(4, 1);
  return frame;
}

}  // namespace nbx
