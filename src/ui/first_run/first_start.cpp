#include "ui/first_run/first_start.h"

#include "core/host.h"
#include "core/nimbometer.h"
#include "device/link_life.h"
#include "editing/config_editor.h"
#include "device/command_queue.h"
#include "station/station.h"
#include "ui/first_run/initial_form.h"
#include "ui/widgets/message_box.h"

namespace nbx {
namespace {

void Call(const std::function<void()>& f) {
  if (f) f();
}

// The box cannot be reached: the next start asks again.
FirstStartOutcome GiveUp(Nimbometer& nm, const FirstStartWindow& w, const char* reason) {
  CloseDevicePort(nm);
  nm.state.DeviceInitialized = 0;
  nm.display.WarningCOMPort.Visible = false;
  ShowMessage(w.window,
              QStringLiteral("Device is not communicating.\r\n%1\r\nProgram will unload now.").arg(reason),
              ButtonsOk, {});
  return FirstStartOutcome::Unload;
}

void SetBusy(Nimbometer& nm, const FirstStartWindow& w, bool busy) {
  nm.display.ButtSTART.Enabled = !busy;
  if (w.setControlsEnabled) w.setControlsEnabled(!busy);
}

}  // namespace

FirstStartOutcome RunFirstStart(Station& station, const FirstStartWindow& w) {
  Nimbometer& nm = station.nm();
  SiteState& s = nm.state;
  if (s.DeviceInitialized != 0 && s.DeviceInitialized != 3) return FirstStartOutcome::Ready;

  const int reply = ShowMessage(w.window, "Is this the MASTER installation ?",
                                s.DeviceInitialized == 3 ? ButtonsYesNo : ButtonsYesNoCancel,
                                "Initializing Device");
  if (reply == ReplyCancel) return FirstStartOutcome::Unload;
  if (reply == ReplyNo) {
    s.DeviceInitialized = 1;
    ConfigEditor(nm).SetNMRole(1);
    return FirstStartOutcome::Ready;
  }

  ConfigEditor(nm).SetNMRole(0);
  Call(w.showDeviceTab);
  InitialForm form(nm, w.window);
  form.exec();
  if (s.DeviceInitialized == 0) return FirstStartOutcome::Unload;

  SetBusy(nm, w, true);
  if (!OpenDevicePort(nm)) return GiveUp(nm, w, "Check COM port number.");
  nm.display.WarningCOMPort.Visible = true;
  Call(w.refresh);
  if (!DetectDevice(nm)) return GiveUp(nm, w, "Check device Power and Serial cable.");

  // A box too old for this program is left closed, without a word: Start
  // stays disabled.
  if (s.FirmwareMajor < 3) {
    CloseDevicePort(nm);
    Call(w.refresh);
    return FirstStartOutcome::Ready;
  }
  s.DeviceInitialized = 2;
  s.IsRunning = true;
  QueueCommand(nm, "K");
  SetBusy(nm, w, false);
  nm.display.WarningCOMPort.Visible = false;
  Call(w.refresh);
  return FirstStartOutcome::Ready;
}

}  // namespace nbx
