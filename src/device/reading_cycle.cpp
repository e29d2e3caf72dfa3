#include "device/reading_cycle.h"

#include <algorithm>
#include <cmath>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/status.h"
#include "core/text.h"
#include "device/command_queue.h"
#include "device/link_life.h"
#include "graphs/graph_routines.h"
#include "device/remote_reading.h"
#include "outputs/data_outputs.h"
#include "safety/alarms.h"
#include "safety/safety_decision.h"
#include "safety/scripts.h"
#include "sensors/brightness.h"
#include "sensors/heater.h"
#include "sensors/raw_conversions.h"
#include "sensors/wind.h"

namespace nbx {
namespace {

double CaptionNumber(const Label& label) { return ParseNumber(label.Caption).value_or(0.0); }

// The script check of every tick: a missing script's code goes to the second
// status line until the next tick finds it back.
void CheckScriptsAtTick(Nimbometer& nm) {
  std::string codes;
  if (CheckScripts(nm, codes)) {
    SetStatusCode(nm.display, codes, colours::Red);
  } else {
    SetStatusCode(nm.display, "", colours::Red);
  }
}

}  // namespace

void TimerCommOnTick(Nimbometer& nm) { nm.io.timers->Arm(TimerId::Graph, 10); }

void TimerGraphTick(Nimbometer& nm) {
  SiteState& s = nm.state;
  nm.io.timers->Disarm(TimerId::Graph);
  if (!s.IsRunning) {
    s.IsRunning = OpenDevicePort(nm);
    if (s.IsRunning) RedrawGraphs(nm);
  }
  if (s.CycleBusy) {
    // The last cycle hasn't finished: the period stretches, nothing stacks up.
    SetCycleLED(nm.display, colours::Orange);
    return;
  }
  CheckScriptsAtTick(nm);
  s.CycleBusy = true;
  AdvanceGraphCount(nm);
  if (!nm.IsMaster()) {
    if (!ReadTransferFile(nm)) SetCycleLED(nm.display, colours::Orange);
  } else if (!s.IsRunning) {
    // A port that does not open (no such path, not a serial device, busy,
    // no permission) sends nothing, so no time-out would ever count it and
    // the verdict of the last run, or none, would stand. It counts as a
    // failed cycle instead, and gives the readings up as a silent box does.
    s.CycleStartTick = static_cast<double>(nm.MillisNow());
    s.SentinelsActive = false;
    CommandFailed(nm, false);
  } else {
    StartReadingCycle(nm);
  }
}

void AdvanceGraphCount(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.GraphEvery = std::max(1, static_cast<int>(nm.config.GraphFreq));
  if (s.GraphCycleCount >= s.GraphEvery) s.GraphCycleCount = 0;
  s.GraphDue = s.GraphCycleCount == 0;
  s.GraphCycleCount++;
}

void StartReadingCycle(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.CycleStartTick = static_cast<double>(nm.MillisNow());
  s.SentinelsActive = false;
  s.DamagedNumberInCycle = false;
  if (s.CommFailed) {
    // Recovery: reopen and send "z!". The exchange finishes no cycle, as the
    // queue is not loaded; the next tick is a normal one if the box answers.
    SetCycleLED(nm.display, colours::Red);
    CloseDevicePort(nm);
    // A port that is gone sends nothing whose time-out would end this cycle:
    // it counts as a failed command at once, so that a vanished adapter
    // still turns the readings Unknown and the next tick retries.
    if (!OpenDevicePort(nm)) CommandFailed(nm, false);
    return;
  }
  SetCycleLED(nm.display, colours::LampGrey);
  SetCycleLED(nm.display, colours::Blue);
  // The failure count is not reset here, though the box has answered: a box
  // that loses every other reply answers the start of each cycle and never
  // finishes one. The count starts again only when a cycle has been read
  // whole, in ProcessFinishedCycle, so that such a box is given up as a
  // silent one is instead of its last verdict standing on no reading.
  s.NBX_DataReady = false;
  s.LastReading = nm.NowSerial();
  s.ClearSampleCounters();

  if (s.FirmwareMajor == 0) {
    // Unknown box: this cycle only asks who it is.
    QueueCommand(nm, "B");
    QueueCommand(nm, "K");
    return;
  }
  const int versionA = s.FirmwareMajor * 10 + s.FirmwareMinor;
  const int versionB = s.FirmwareMajor * 100 + s.FirmwareMinor * 10 + s.FirmwarePatch;
  if (s.FirmwareMajor >= 5) QueueCommand(nm, "v");
  if (versionA >= 56 && s.HumidityPresent != 0) {
    QueueCommand(nm, "h");
    QueueCommand(nm, "t");
  } else {
    s.HumidityPresent = 0;
  }
  // Release 6.00 is left out on purpose: its pressure frames are not to be trusted.
  if (versionB != 600 && versionB >= 582 && s.PressurePresent != 0) {
    QueueCommand(nm, "p");
  } else {
    s.PressurePresent = 0;
  }

  // Each command is tested as it is queued: a stop skips the rest of a pass,
  // a failed command is not queued.
  auto queueUnderTests = [&](const char* command) {
    if (!s.IsRunning) return false;
    if (!s.CommFailed) QueueCommand(nm, command);
    return true;
  };
  for (int pass = 0; pass < s.Stats_Universe; ++pass) {
    for (const char* command : {"S", "T", "C", "E"})
      if (!queueUnderTests(command)) break;
  }
  bool running = true;
  if (s.IsWindPresent) running = queueUnderTests("V");
  if (running) {
    for (const char* command : {"Q", "D", "F"})
      if (!queueUnderTests(command)) break;
  }
  // Set last, so that a queue that ran out before it was complete can't end
  // a cycle that was only half set up.
  s.CycleLoaded = true;
}

void ProcessFinishedCycle(Nimbometer& nm) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  if (!s.CycleLoaded) return;
  if (s.CyclesWanted()) {
    // A sample whose number could not be read leaves the old value standing
    // for a new one, so the cycle holds no complete reading. It counts as a
    // failed cycle, as a missing reply does: a box that garbles every frame
    // ends Unknown instead of looking healthy on its last good values.
    const bool damaged = !s.CommFailed && s.DamagedNumberInCycle;
    if (damaged && !(nm.config.UnknownRS232NoError > ++s.ConsecutiveCommErrors)) FillSentinels(nm);
    const bool failed = s.CommFailed || damaged;
    const bool readValues = !s.CommFailed || s.SentinelsActive;
    if (!s.CommFailed && !s.SentinelsActive) ReadReferenceVoltage(nm);
    if (readValues) {
      ReadAmbientTemp(nm);
      ReadSkyTemp(nm);
      ReadSkySensorTemp(nm);
      ReadRainSensorTemp(nm);
      ReadBrightness(nm);
      ReadRainFrequency(nm);
      ReadWind(nm);
    }
    // A failed command leaves the verdict alone until the failures reach the limit.
    if (!failed || !(nm.config.UnknownRS232NoError > s.ConsecutiveCommErrors)) EvaluateSafety(nm);
    if (!s.CommFailed) HeaterStep(nm);
    if (readValues) RunGraphRoutines(nm);
    if (!failed) {
      s.ConsecutiveCommErrors = 0;
      s.GoodCycleSinceStart = true;
      d.LblPECReading.Caption = FormatNumber(CaptionNumber(d.LblPECReading) + 1, "0");
      d.LblPECTot4.Caption =
          FormatNumber(CaptionNumber(d.LblPECTot4) + CaptionNumber(d.LblPECByte4), "0");
      s.NBX_DataReady = true;
    }
    if (nm.IsMaster()) {
      s.Value_Cycle = (static_cast<double>(nm.MillisNow()) - s.CycleStartTick) / 1000.0;
      d.LblReadCycle.Caption = FormatNumber(s.Value_Cycle, s.Value_Cycle > 9 ? "0 s" : "0.000 s");
    }
    d.LblRS232Errors.Caption = FormatNumber(CaptionNumber(d.LblRS232Errors), "0");
    WriteUserDataLine(nm);
    if (nm.IsMaster()) WriteTransferFile(nm);
    WriteSingleLineFiles(nm);
  }
  s.CycleLoaded = false;
  SetCycleLED(d, s.CommFailed ? colours::Red : colours::Blue);
  nm.io.host->CycleProcessed();
}

void OnTimer(Nimbometer& nm, TimerId id) {
  switch (id) {
    case TimerId::CommOn:
      return TimerCommOnTick(nm);
    case TimerId::Graph:
      return TimerGraphTick(nm);
    case TimerId::RS232Timeout:
      return TimerRS232TimeoutTick(nm);
    case TimerId::Stop:
      return TimerStopTick(nm);
    case TimerId::AlarmAjo:
      return TimerAlarmAjoTick(nm);
    case TimerId::Initialization:
      // Owned by the first-start dialogue.
      nm.io.timers->Disarm(id);
      return;
  }
}

}  // namespace nbx
