// The window's own behaviour: the role's effect on the setup, the keys, the
// help context, and the parts of the records the bindings do not cover.

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QTabWidget>

#include "core/nimbometer.h"
#include "device/command_queue.h"
#include "device/link_life.h"
#include "device/reading_cycle.h"
#include "core/units.h"
#include "sensors/raw_conversions.h"
#include "sensors/sky_correction.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/widgets/message_box.h"

namespace nbx {

namespace {

QString SpeedUnitText(const std::string& letter) {
  if (letter == "M") return "mph";
  if (letter == "m") return "m/s";
  if (letter == "k") return "knot";
  return "km/h";
}

}  // namespace

// A remote reads the master's file: its serial and heater controls have
// nothing to act on and go out of sight, captions and all.
void NBXNimbometerForm::ApplyRole() {
  const bool master = station_.nm().IsMaster();
  for (QWidget* control : masterOnly_) control->setVisible(master);
  for (auto& [label, caption] : masterCaptions_) label->setText(master ? caption : QString());
  station_.nm().display.ButtReload.Visible = !master;
  setWindowTitle(FormTitle(station_.nm()));
}

void NBXNimbometerForm::RenderExtras() {
  const Nimbometer& nm = station_.nm();
  for (const CheckCaption& check : checkCaptions_) {
    const QString word = QString::fromStdString(check.word->Caption);
    if (check.box->text() != word) check.box->setText(word);
    QPalette palette = check.box->palette();
    palette.setColor(QPalette::Window, ScreenColour(*check.backColour));
    check.box->setAutoFillBackground(*check.backColour != colours::SystemButtonFace);
    check.box->setPalette(palette);
  }
  for (auto& [label, read] : textRefresh_) {
    const QString text = QString::fromStdString(read(nm.config));
    if (label->text() != text) label->setText(text);
  }
  if (portRefresh_) portRefresh_();
  if (controlOwner_) controlOwner_->setVisible(!nm.display.Frame3.Visible && nm.display.ControlOwner.Visible);
  for (QWidget* control : recordControls_) control->setEnabled(nm.display.RecordControlsEnabled);
  const QString temperature = QString::fromStdString(TemperatureUnitLabel(nm.config));
  const QString speed = SpeedUnitText(nm.config.UnitSpeedStr);
  for (auto& [label, isTemperature] : unitLabels_) label->setText(isTemperature ? temperature : speed);
}

int NBXNimbometerForm::HelpContext() const {
  const int tab = sstab1_->currentIndex();
  if (tab == 4) return (201 + tab) * 10 + sstab3_->currentIndex() + 1;
  if (tab == 5) return (201 + tab) * 10 + 1;
  return 2001 + tab;
}

void NBXNimbometerForm::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    // The menu's "Contents ..." opens the contents page, not the tab's.
    if (helpFromMenu_)
      helpFromMenu_ = false;
    else
      emit helpRequested(HelpContext());
    return;
  }
  QMainWindow::keyPressEvent(event);
}

void NBXNimbometerForm::keyReleaseEvent(QKeyEvent* event) {
  Nimbometer& nm = station_.nm();
  const int tab = sstab1_->currentIndex();
  const Qt::KeyboardModifiers modifiers = event->modifiers();
  if (event->key() == Qt::Key_F5 && modifiers == Qt::ShiftModifier && tab == 5) {
    if (nm.state.IsRunning) {
      nm.io.host->ShowMessage("Must STOP device before performing this operation.", ButtonsOk, "");
    } else {
      // The box's constants are read again through the first-start step.
      nm.state.DeviceInitialized = 3;
      emit firstStartRequested();
    }
  } else if (event->key() == Qt::Key_W && modifiers == Qt::ControlModifier && tab == 4 &&
             sstab3_->currentIndex() == 0) {
    ToggleCloudTempFactor(nm);
  } else if ((event->key() == Qt::Key_1 || event->key() == Qt::Key_2) && modifiers == Qt::ControlModifier &&
             tab == 0 && nm.state.IsRunning && nm.config.NMRole[0] && nm.config.SWRole[1]) {
    QueueCommand(nm, event->key() == Qt::Key_1 ? "G" : "H");
  } else {
    QMainWindow::keyReleaseEvent(event);
    return;
  }
  Render();
}

}  // namespace nbx
