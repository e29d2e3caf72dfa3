#include "sensors/heater.h"

#include <algorithm>
#include <string>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/stage_calls.h"

namespace nbx {
namespace {

constexpr std::int32_t WarmingUp = 2, Holding = 3;
// However fast the cycles come, the duty moves at most once in this time, so
// that the plate has time to answer the last change.
constexpr double StepMillis = 5000;

constexpr Colour ImpulseColour = colours::Red;
constexpr Colour HeatingUpColour = colours::Orange;
constexpr Colour HeatingDownColour = colours::Navy;

enum class Direction { None, Up, Down };

void ShowStatus(Nimbometer& nm, Direction direction, double duty) {
  const SiteState& s = nm.state;
  if (s.HeatImpulseState == WarmingUp) {
    SetHeatingStatus(nm, "Heat Impulse - Warming up", ImpulseColour);
  } else if (s.HeatImpulseState == Holding) {
    SetHeatingStatus(nm, "Heat Impulse - Holding for " + FormatNumber(nm.config.HeatImpDuration, "0.###") + "s",
                     ImpulseColour);
  } else if (direction == Direction::Up && duty < 1) {
    SetHeatingStatus(nm, "Heating UP", HeatingUpColour);
  } else if (direction == Direction::Down && duty > nm.config.HeatMinValue / 100) {
    SetHeatingStatus(nm, "Heating DOWN", HeatingDownColour);
  }
}

// The plate is never left below the minimum duty: a change that goes under
// it sends the minimum, and so does a resting duty that is already there.
void SendDuty(Nimbometer& nm, Direction direction, double duty) {
  const double minimum = nm.config.HeatMinValue / 100;
  if (direction != Direction::None) {
    SendToBox(nm, HeaterCommand(duty <= minimum ? minimum : duty));
  } else if (nm.state.Value_RainHeat <= minimum) {
    SendToBox(nm, HeaterCommand(minimum));
  }
}

}  // namespace

void HeaterStep(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (!nm.IsMaster()) return RefreshHeaterDisplay(nm);
  HeaterImpulseStep(nm, s.HeatStarted);
  if (!s.HeatStarted) {
    s.HeatLastTemp = s.Value_RainTemp;
    s.HeatStarted = true;
  }
  Direction direction = Direction::None;
  double duty = s.Value_RainHeat;
  const double now = static_cast<double>(nm.MillisNow());
  if (now - s.HeatLastStep > StepMillis) {
    const double error = s.Value_RainTemp - HeaterTarget(nm);
    const double gain = HeaterGain(nm, error);
    // Warming up is not held back by a plate that is already rising.
    const double trend = s.HeatImpulseState == WarmingUp && error <= 0 ? 0 : s.Value_RainTemp - s.HeatLastTemp;
    // A plate already moving the right way gets no further change.
    if (error > 0 && gain > 0 && trend >= 0) {
      duty = std::max(s.Value_RainHeat - gain, 0.0);
      s.HeatLastStep = now;
      direction = Direction::Down;
    }
    if (error < 0 && gain > 0 && trend <= 0) {
      duty = std::min(s.Value_RainHeat + gain, 1.0);
      s.HeatLastStep = now;
      direction = Direction::Up;
    }
    s.HeatLastTemp = s.Value_RainTemp;
  }
  ShowStatus(nm, direction, duty);
  SendDuty(nm, direction, duty);
}

void SetHeatingStatus(Nimbometer& nm, std::string_view text, Colour colour) {
  nm.display.LblHeating.Caption = std::string(text);
  nm.display.LblHeating.ForeColor = colour;
}

void RefreshHeaterDisplay(Nimbometer& nm) {
  nm.display.LblRainH.Caption = FormatNumber(nm.state.Value_RainHeat * 1023, "0.0");
}

std::string HeaterCommand(double duty) {
  return "P" + FormatNumber(RoundHalfEven(duty * 1023.0), "0000");
}

}  // namespace nbx
