#include "device/link_life.h"

#include <algorithm>
#include <cmath>

#include "core/nimbometer.h"
#include "core/status.h"
#include "core/text.h"
#include "core/number_format.h"
#include "device/command_queue.h"
#include "sensors/heater.h"
#include "device/reading_cycle.h"
#include "core/serial_link.h"
#include "graphs/graph_routines.h"
#include "outputs/data_outputs.h"
#include "safety/alarms.h"
#include "safety/safety_decision.h"
#include "safety/scripts.h"

namespace nbx {
namespace {

void ClearFirmware(SiteState& s) {
  s.FirmwareMajor = 0;
  s.FirmwareMinor = 0;
  s.FirmwarePatch = 0;
}

// Without a link nothing is known of the sky: the four families that decide
// the verdict and the safe flags of all go to Unknown.
void ForgetConditions(SiteState& s) {
  s.NBX_CloudCondition = 0;
  s.NBX_CloudSafe = 0;
  s.NBX_DayCondition = 0;
  s.NBX_DaySafe = 0;
  s.NBX_RainCondition = 0;
  s.NBX_RainSafe = 0;
  s.NBX_WindCondition = 0;
  s.NBX_WindSafe = 0;
  s.NBX_HumiditySafe = 0;
  s.NBX_PressureSafe = 0;
}

void ClearReadingPanels(Display& d) {
  for (Label* l : {&d.LblVref, &d.LblBuffer, &d.LblWind, &d.LblRH, &d.lblRHTemp, &d.LblAtmPres,
                   &d.LblLDR, &d.LblSQMFreq, &d.LblRainH, &d.LblSkyIRTemp, &d.LblSkySensorTemp,
                   &d.LblRainT, &d.LblRainF, &d.LblReadCycle})
    l->Caption.clear();
}

}  // namespace

// The sentinels that drive every family to Unknown once the link is given up.
void FillSentinels(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.SentinelsActive = true;
  s.SamplesRainTemp.Fill(999);
  s.SamplesAmbient.Fill(99999);
  s.SamplesSkyIR.Fill(99900);
  s.SamplesSkySensor.Fill(99900);
  s.SamplesRainFreq.Fill(-1);
  s.SamplesLDR.Fill(9999);
  s.SamplesSQM.Fill(0);
  s.Value_Wind = nm.config.WindLimit[2] + 9;
  AdvanceGraphCount(nm);
  const auto count = static_cast<std::int32_t>(
      RoundHalfEven(nm.config.UnknownRS232NoError + nm.config.UnknownNoReading));
  s.CloudUnknownCount = s.RainUnknownCount = s.WindUnknownCount = s.DayUnknownCount = count;
}

bool OpenDevicePort(Nimbometer& nm) {
  if (!nm.IsMaster()) return true;
  SiteState& s = nm.state;
  ClearFirmware(s);
  if (!nm.io.link->IsOpen()) {
    std::string error;
    if (!nm.io.link->Open(PortDevice(nm), nm.config.CommSettings, error)) {
      ForgetConditions(s);
      const std::string message = "Serial port " + PortEntry(nm) + " error: " + error;
      SetStatusMain(nm.display, message, colours::Red);
      // The status line is cut short; the whole reason goes to the trace.
      nm.io.host->Trace(message);
      nm.io.host->Beep();
      return false;
    }
  }
  DiscardInput(nm);
  ClearCommandQueue(nm);
  QueueCommand(nm, "z");
  return true;
}

void CloseDevicePort(Nimbometer& nm) {
  if (nm.IsMaster() && nm.io.link->IsOpen()) nm.io.link->Close();
}

bool DetectDevice(Nimbometer& nm) {
  if (!nm.IsMaster()) return false;
  SiteState& s = nm.state;
  const int waitMs = static_cast<int>(nm.config.PORTTimeout * 1000);
  ClearFirmware(s);
  for (int attempts = 0; s.FirmwareMajor == 0 && attempts < 2; ++attempts) {
    ClearCommandQueue(nm);
    QueueCommand(nm, "z");
    QueueCommand(nm, "B");
    QueueCommand(nm, "K");
    nm.io.host->WaitFor([&] { return s.FirmwareMajor != 0; }, waitMs);
  }
  s.HumidityPresent = -1;
  s.PressurePresent = -1;
  s.DewPointValid = false;
  if (s.FirmwareMajor == 0) {
    s.IsWindPresent = false;
    return false;
  }
  // Wind presence is learned from the "v!" that opens each cycle.
  nm.display.WindNotAvailable.Visible = !s.IsWindPresent;
  return true;
}

void StartAction(Nimbometer& nm) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  s.HumidityPresent = -1;
  s.PressurePresent = -1;
  s.SQMPresent = false;
  CloseDevicePort(nm);
  s.WindSamples.assign(static_cast<std::size_t>(std::clamp(nm.config.CalcWindAvg, 1.0, 30.0)), 0.0);
  ResetSafetyAtStart(nm);
  s.Value_Wind = 0;
  // A verdict of this run stands on readings of this run: the classes of the
  // last run, or of before a Stop, are not carried into the first decision.
  ForgetConditions(s);
  s.Started = true;
  s.GoodCycleSinceStart = false;

  SetStatusMain(d, "", colours::Black);
  SetStatusCode(d, "", colours::Black);
  s.CommFailed = false;
  ClearReadingPanels(d);
  s.ConsecutiveCommErrors = 0;
  s.CloudUnknownCount = s.RainUnknownCount = s.WindUnknownCount = s.DayUnknownCount = 0;
  s.CycleBusy = false;

  DeleteSingleLineFile(nm);
  std::string codes = CheckImageFolder(nm);
  codes += CheckDataFolder(nm);
  CheckScripts(nm, codes);
  if (!codes.empty()) SetStatusCode(d, codes, colours::Red);

  d.SetupLocked = true;
  SetCycleLED(d, colours::LampGrey);
  s.RefreshMillis = nm.config.RefreshPeriod * 1000;
  nm.io.timers->Arm(TimerId::CommOn, s.RefreshMillis);
  d.ButtSTART.Visible = false;
  d.ButtStop.Visible = true;
  d.FrameRun.Visible = true;
  d.FrameLEDSwitch.Visible = true;
  // The first cycle begins at once; the port opens in its tick.
  TimerCommOnTick(nm);
}

void StopAction(Nimbometer& nm) {
  SetStatusMain(nm.display, "Stopping.", colours::Navy);
  nm.display.ButtStop.Enabled = false;
  // A closed port has no heater to rest.
  if (nm.IsMaster() && nm.io.link->IsOpen())
    QueueCommand(nm, HeaterCommand(nm.config.HeatOffValue / 100.0));
  nm.state.IsRunning = false;
  nm.state.Started = false;
  nm.state.GoodCycleSinceStart = false;
  ClearVerdictShown(nm);
  // A tick's work still pending would find the station not running and open
  // the port again, as a Start does; the Stop tick drops one armed meanwhile.
  nm.io.timers->Disarm(TimerId::Graph);
  AlarmStop(nm);
  nm.io.timers->Arm(TimerId::Stop, 10);
}

// A station whose port has not opened yet is started all the same: a client's
// Start must not begin the run again (and clear its failure count), and its
// Stop must stop it.
void Start_Device(Nimbometer& nm) {
  if (!nm.state.CyclesWanted()) StartAction(nm);
  nm.display.ButtStop.Visible = false;
}

void Stop_Device(Nimbometer& nm) {
  if (nm.state.CyclesWanted()) StopAction(nm);
  nm.display.ButtStop.Visible = false;
}

void TimerStopTick(Nimbometer& nm) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  for (TimerId id : {TimerId::Stop, TimerId::RS232Timeout, TimerId::CommOn, TimerId::Graph})
    nm.io.timers->Disarm(id);
  AlarmStop(nm);
  // Stopped in the middle of a reply, the heater's resting command may still
  // wait behind the cycle's commands: it goes now, before the port closes, so
  // that the plate is not left heating at the last duty.
  if (nm.IsMaster() && s.QueueSent < s.QueueCount && nm.io.link->IsOpen()) {
    const std::string& last = s.CommandQueue[static_cast<std::size_t>(s.QueueCount)];
    if (!last.empty() && last[0] == 'P') {
      nm.io.link->Write(last + "!");
      nm.io.host->Trace("Tx: " + last + "!");
    }
  }
  ClearCommandQueue(nm);
  // The cycle cut short by Stop is over: the next Start's first exchange must
  // not finish it with stale samples.
  s.CycleLoaded = false;
  s.CycleBusy = false;
  CloseDevicePort(nm);
  d.ButtSTART.Visible = true;
  d.ButtStop.Visible = false;
  d.ButtStop.Enabled = true;
  d.FrameLEDSwitch.Visible = false;
  d.FrameRun.Visible = false;
  d.SetupLocked = false;
  RedrawGraphs(nm);
  SetStatusMain(d, "", colours::Black);
  SetStatusCode(d, "", colours::Black);
  d.SafeDelayMsg.Caption.clear();
}

void TimerRS232TimeoutTick(Nimbometer& nm) { CommandFailed(nm, true); }

void CommandFailed(Nimbometer& nm, bool reopenPort) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  s.CommFailed = true;
  d.LblRS232Errors.Caption =
      FormatNumber(ParseNumber(d.LblRS232Errors.Caption).value_or(0) + 1, "0");
  ClearCommandQueue(nm);
  nm.io.timers->Disarm(TimerId::RS232Timeout);
  SetCycleLED(d, colours::LampGrey);
  SetCycleLED(d, colours::Red);
  if (reopenPort) {
    // Each failure reopens the port, which cures a USB converter that has
    // dropped out; the "z!" of the open arms the time-out anew.
    CloseDevicePort(nm);
    OpenDevicePort(nm);
  }
  s.ConsecutiveCommErrors++;
  s.CycleLoaded = false;
  // A port that could not be opened keeps its own message on the status line.
  if (nm.io.link->IsOpen())
    SetStatusMain(d,
                  "Serial comm. OFF (" + std::to_string(s.ConsecutiveCommErrors) +
                      ") - check Cable and Power",
                  colours::Red);
  if (!(nm.config.UnknownRS232NoError > s.ConsecutiveCommErrors)) FillSentinels(nm);
  s.CycleLoaded = true;
  ProcessFinishedCycle(nm);
  s.CycleBusy = false;
}

}  // namespace nbx
