#include "device/wire_protocol.h"

#include <algorithm>
#include <limits>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/status.h"
#include "core/text.h"
#include "core/units.h"
#include "device/command_queue.h"
#include "device/device_constants.h"
#include "core/serial_link.h"
#include "safety/conditions.h"
#include "safety/relay.h"
#include "sensors/heater.h"
#include "sensors/humidity_pressure.h"
#include "sensors/raw_conversions.h"
#include "sensors/wind.h"

namespace nbx {
namespace {

void ShowBufferLength(Nimbometer& nm) {
  nm.display.LblBuffer.Caption = FormatNumber(static_cast<double>(nm.state.RxBuffer.size()), "#");
}

void CountError(std::int16_t& counter) {
  if (counter < std::numeric_limits<std::int16_t>::max()) ++counter;
}

int DigitAt(const std::string& text, std::size_t index) {
  if (index >= text.size()) return 0;
  const char c = text[index];
  return c >= '0' && c <= '9' ? c - '0' : 0;
}

// The wind frame: a running mean over the last CalcWindAvg speeds.
void OnWindFrame(Nimbometer& nm, std::string_view data) {
  SiteState& s = nm.state;
  const std::optional<double> value = ParseNumber(data);
  if (!value) return;
  const double speed = AnemometerSpeed(nm.config, *value);  // km/h
  const auto span = static_cast<std::size_t>(std::clamp(nm.config.CalcWindAvg, 1.0, 30.0));
  std::vector<double>& w = s.WindSamples;
  if (!w.empty() && span <= w.size()) {
    std::rotate(w.begin(), w.begin() + 1, w.end());
  } else {
    // A larger average takes effect at once, one element a frame; a smaller
    // one waits for the next Start.
    w.push_back(0.0);
  }
  w.back() = ConvertSpeed("K", nm.config.UnitSpeedStr, speed);
  double sum = 0, gust = 0;
  for (double v : w) {
    sum += v;
    gust = std::max(gust, v);
  }
  s.Value_Wind = sum / static_cast<double>(w.size());
  s.Value_Gust = gust;
  nm.display.LblWind.Caption = Trim(data);
}

void ShowWindPanels(Nimbometer& nm) {
  nm.display.WindNotAvailable.Visible = !nm.state.IsWindPresent;
}

void OnHumidityFrame(Nimbometer& nm, bool newFormat, std::string_view data) {
  SiteState& s = nm.state;
  s.OptionalReplySeen = true;
  const std::optional<double> value = ParseNumber(data);
  if (!value) return;
  const double v = *value;
  auto giveUp = [&] {
    s.HumidityPresent = 0;
    s.Value_HumidityRel = 50;
    UpdateHumidityCondition(nm);
    nm.display.LblRH.Caption.clear();
  };
  if (!newFormat) {
    if (v == 100) return giveUp();
    s.Value_HumidityRel = s.HumidityRelFrame = v * 125.0 / 100.0 - 6.0;
  } else {
    if (v == 65535) return;
    s.Value_HumidityRel = s.HumidityRelFrame = v * 125.0 / 65536.0 - 6.0;
    if (s.Value_HumidityRel <= 0 || s.Value_HumidityRel > 100) {
      // The "t" frames keep the error count; the value is given up only
      // after they have gone bad, and stays wrong for this cycle until then.
      if (s.RHErrors <= 10) return;
      nm.io.host->Trace("RH Error off");
      return giveUp();
    }
  }
  s.HumidityPresent = 1;
  nm.display.LblRH.Caption = FormatNumber(s.Value_HumidityRel, "0.0");
  RecomputeDewPoint(nm);
  UpdateHumidityCondition(nm);
}

void OnHumidityTempFrame(Nimbometer& nm, bool newFormat, std::string_view data) {
  SiteState& s = nm.state;
  const std::optional<double> value = ParseNumber(data);
  if (!value) return;
  const double v = *value;
  if (!newFormat) {
    if (v == 100) {
      s.HumidityPresent = 0;
      UpdateHumidityCondition(nm);
      nm.display.lblRHTemp.Caption.clear();
      return;
    }
    s.HumidityPresent = 1;
    s.Value_HumSensTemp = v * 1.7572 - 46.85;
  } else {
    s.Value_HumSensTemp = v * 175.72 / 65536.0 - 46.85;
    const bool bad = s.Value_HumSensTemp >= 100 || s.Value_HumSensTemp <= -40 || v == 65535;
    if (bad) {
      CountError(s.RHErrors);
      nm.io.host->Trace("RHErrors = " + std::to_string(s.RHErrors));
      if (s.RHErrors > 10) {
        nm.io.host->Trace("RHTemp Error off");
        s.HumidityPresent = 0;
        s.RHTempValid = false;
        UpdateHumidityCondition(nm);
        nm.display.lblRHTemp.Caption.clear();
      }
      return;
    }
    s.HumidityPresent = 1;
    s.RHErrors = 0;
    s.RHTempValid = true;
  }
  nm.display.lblRHTemp.Caption = FormatNumber(s.Value_HumSensTemp, "0.0");
  SelectAmbientTemp(nm);
  RecomputeDewPoint(nm);
}

void OnPressureFrame(Nimbometer& nm, std::string_view data) {
  SiteState& s = nm.state;
  s.OptionalReplySeen = true;
  const std::optional<double> value = ParseNumber(data);
  if (!value) return;
  const double v = *value;
  if (v == 65535 || v == 0) {
    CountError(s.AtmErrors);
    nm.io.host->Trace("Atmerrors = " + std::to_string(s.AtmErrors));
    if (s.AtmErrors >= 11) {
      nm.display.LblAtmPres.Caption.clear();
      s.PressurePresent = 0;
      UpdatePressureCondition(nm);
      s.Value_AbsPressure = 1000;
      s.Value_RelPressure = 1000;
    }
    return;
  }
  s.PressurePresent = 1;
  s.Value_AbsPressure = v / 16.0;
  nm.display.LblAtmPres.Caption = FormatNumber(s.Value_AbsPressure, "0.0");
  RecomputeRelPressure(nm);
  UpdatePressureCondition(nm);
  s.AtmErrors = 0;
}

// The box marks a sky reading it could not take with 10000.
std::optional<double> SkySample(std::string_view data) {
  std::optional<double> v = ParseNumber(data);
  if (v && *v == 10000) v = 99900;
  return v;
}

}  // namespace

void DispatchFrame(Nimbometer& nm, std::string_view frame, bool& endSeen) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  const char type = frame[1];
  const char subType = frame[2];
  const std::string_view data = frame.substr(3, 12);
  // Sample frames are taken only while cycles are wanted: after Stop the
  // rest of a reply is dropped.
  const bool guarded = !s.IsRunning;
  // The sample frames carry one number each; one that cannot be read keeps
  // the old value, and the cycle is then no complete reading.
  constexpr std::string_view SampleFrames = "1234568Rw";
  if (!guarded && SampleFrames.find(type) != std::string_view::npos && !ParseNumber(data))
    s.DamagedNumberInCycle = true;

  switch (type) {
    case EndOfReply:
      endSeen = true;
      break;
    case '1':
      if (!guarded) s.SamplesSkyIR.Add(SkySample(data));
      break;
    case '2':
      if (!guarded) s.SamplesSkySensor.Add(SkySample(data));
      break;
    case '3':
      if (!guarded) s.SamplesAmbient.Add(ParseNumber(data));
      break;
    case '4':
      if (guarded) break;
      d.LblLDR.Caption = Trim(data);
      s.SamplesLDR.Add(ParseNumber(data));
      break;
    case '5':
      if (!guarded) s.SamplesRainTemp.Add(ParseNumber(data));
      break;
    case '6':
      if (!guarded) s.SamplesZener.Add(ParseNumber(data));
      break;
    case '8': {
      if (guarded) break;
      // Only a reading declares the sky-quality meter fitted: it stays so
      // until the next Start, and line noise that happens to look like the
      // frame's start would otherwise leave Day Unknown all night.
      const std::optional<double> v = ParseNumber(data);
      if (!v && !s.SQMPresent) break;
      d.LblSQMFreq.Caption = Trim(data);
      s.SQMPresent = true;
      s.SamplesSQM.Add(v);
      break;
    }
    case 'R':
      if (guarded) break;
      s.SamplesRainFreq.Add(ParseNumber(data));
      SetStatusMain(d,
                    nm.config.RecOption[0] ? "Serial comm. ON - DATA is being recorded to file"
                                           : "Serial comm. ON",
                    colours::Navy);
      break;
    case 'w':
      OnWindFrame(nm, data);
      break;
    case 'v': {
      const std::optional<double> v = ParseNumber(data);
      s.IsWindPresent = v && *v == 1;
      if (!s.IsWindPresent) d.LblWind.Caption.clear();
      ShowWindPanels(nm);
      s.OptionalReplySeen = true;
      break;
    }
    case 'h':
      OnHumidityFrame(nm, subType == 'h', data);
      break;
    case 't':
      OnHumidityTempFrame(nm, subType == 'h', data);
      break;
    case 'p':
      OnPressureFrame(nm, data);
      break;
    case 'E': {
      Label* counters[] = {&d.LblPECByte1, &d.LblPECByte2, &d.LblPECByte3, &d.LblPECByte4};
      if (subType >= '1' && subType <= '4') counters[subType - '1']->Caption = Trim(data);
      break;
    }
    case 'K': {
      s.SerialNo = std::string(frame.substr(2, 4));
      const std::optional<double> number = ParseNumber(s.SerialNo);
      if (number && *number == 0) s.SerialNo = "0";
      d.lblSerial.Caption = s.SerialNo;
      ApplyDeviceConstants(s);
      s.DeviceInitialized = 1;
      break;
    }
    case 'V': {
      const std::string version = Trim(data);
      d.lblVersion.Caption = version;
      s.FirmwareMajor = DigitAt(version, 0);
      s.FirmwareMinor = DigitAt(version, 2);
      s.FirmwarePatch = DigitAt(version, 3);
      s.CommFailed = false;
      SetCycleLED(d, colours::LampGrey);
      SetCycleLED(d, colours::Blue);
      if (s.FirmwareMajor < 3) s.SerialNo = "N.A.";
      break;
    }
    case 'X':
      s.Value_Switch = 2;
      ShowSwitchState(nm, 2);
      break;
    case 'Y':
      s.Value_Switch = 1;
      ShowSwitchState(nm, 1);
      break;
    case 'Q': {
      const std::optional<double> v = ParseNumber(data);
      if (!v) break;
      s.Value_RainHeat = *v / 1023.0;
      if (guarded) break;
      d.LblRainH.Caption = FormatNumber(*v, "0.0");
      RefreshHeaterDisplay(nm);
      break;
    }
    default:  // "N", "q" and unknown types are ignored
      break;
  }
}

void OnComm(Nimbometer& nm) {
  SiteState& s = nm.state;
  // Any byte from the box is a sign of life, even garbage.
  s.CommFailed = false;
  s.RxBuffer += nm.io.link->ReadAll();
  ShowBufferLength(nm);
  const std::size_t start = s.RxBuffer.find('!');
  if (start == std::string::npos) return;
  // The only resynchronisation: later frames are taken by position, so a
  // stray byte inside a run shifts the frames behind it until the next send.
  s.RxBuffer.erase(0, start);
  bool endSeen = false;
  while (s.RxBuffer.size() >= FrameLength) {
    const std::string frame = s.RxBuffer.substr(0, FrameLength);
    s.RxBuffer.erase(0, FrameLength);
    nm.io.host->Trace("Rx Complete: " + frame);
    ShowBufferLength(nm);
    // A run shifted by a stray byte no longer starts its frames with "!":
    // what sits at the type position is then any byte of the stream, and
    // taking it would let line noise declare a sensor (an "8" makes the box
    // look fitted with a sky-quality meter until the next Start) or set the
    // relay. Such a frame is not understood; the cycle fails by its lost
    // end-of-reply.
    if (frame.front() != '!') continue;
    DispatchFrame(nm, frame, endSeen);
  }
  if (endSeen) {
    nm.io.timers->Disarm(TimerId::RS232Timeout);
    SendNextCommand(nm);
  }
}

}  // namespace nbx
