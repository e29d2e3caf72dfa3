#include "boxsim/box.h"

#include <algorithm>
#include <cmath>

#include "boxsim/replies.h"
#include "boxsim/thermistors.h"

namespace nbx::boxsim {
namespace {
// A host that never sends "!" must not make the box hoard its bytes.
constexpr std::size_t LongestPartialCommand = 64;
}  // namespace

std::string Box::Receive(std::string_view hostBytes, double nowSeconds) {
  AdvanceTo(nowSeconds);
  std::string answer;
  for (const char byte : hostBytes) {
    if (byte != '!') {
      partial_ += byte;
      if (partial_.size() > LongestPartialCommand) partial_.erase(0, partial_.size() - LongestPartialCommand);
      continue;
    }
    commands_.push_back(partial_);
    partial_.clear();
    answer += AnswerCommand(commands_.back());
  }
  return answer;
}

std::string Box::AnswerCommand(const std::string& command) {
  const std::size_t number = CommandCount();
  // A silent box is a dead one: it hears nothing, so nothing changes either.
  if (faults.silentFromCommand > 0 && number >= static_cast<std::size_t>(faults.silentFromCommand)) {
    return {};
  }
  std::string reply = ReplyTo(command, readings, faults);
  if (!ReplyGoesOut(number)) return {};
  return WithFaults(std::move(reply));
}

// With every other reply lost, the odd-numbered commands are the ones answered.
bool Box::ReplyGoesOut(std::size_t commandNumber) const {
  return !faults.answerEveryOther || commandNumber % 2 == 1;
}

std::string Box::WithFaults(std::string reply) const {
  if (!faults.garbageBetween.empty()) reply.insert(FrameLength, faults.garbageBetween);
  return faults.garbageBefore + reply;
}

void Box::SetAmbientCelsius(double c) {
  // Counts stay unrounded so that a temperature set here comes back as the
  // same temperature; "ambientcounts" gives whole counts like a real converter.
  if (const auto counts = CountsForCelsius(AmbientThermistor, c)) readings.ambientCounts = *counts;
}

void Box::SetRainPlateCelsius(double c) {
  if (const auto counts = CountsForCelsius(RainThermistor, c)) {
    readings.rainTempCounts = *counts;
    readings.plate.celsius = c;  // where the model, if on, goes on from
  }
}

void Box::SetReferenceVolts(double v) {
  if (const auto counts = ZenerCountsForVolts(v)) readings.zenerCounts = *counts;
}

// The infrared sensor reports whole hundredths of a degree.
void Box::SetSkyCelsius(double c) {
  if (std::isfinite(c)) readings.skyIR = std::round(c * 100);
}

void Box::SetSkySensorCelsius(double c) {
  if (std::isfinite(c)) readings.skySensor = std::round(c * 100);
}

// The plate moves under the duty it had all the while: a "P" in the same
// bytes acts only from now on.
void Box::AdvancePlate(double nowSeconds) {
  // A clock that went back (a new session) starts the model's time afresh.
  if (nowSeconds > plateSeconds_ && readings.plate.modelled)
    readings.plate.Advance(nowSeconds - plateSeconds_, readings.heaterDuty);
  plateSeconds_ = nowSeconds;
  if (!readings.plate.modelled) return;
  // Whole counts, as the box's converter gives them: a plate that has settled
  // reads the same from one cycle to the next.
  if (const auto counts = CountsForCelsius(RainThermistor, readings.plate.celsius))
    readings.rainTempCounts = std::round(*counts);
}

void Box::AddScriptStep(double atSeconds, std::string assignment) {
  const auto later = std::upper_bound(script_.begin(), script_.end(), atSeconds,
                                      [](double t, const ScriptStep& step) { return t < step.atSeconds; });
  script_.insert(later, ScriptStep{atSeconds, std::move(assignment)});
}

void Box::AdvanceTo(double nowSeconds) {
  AdvancePlate(nowSeconds);
  auto due = script_.begin();
  while (due != script_.end() && due->atSeconds <= nowSeconds) {
    Apply(due->assignment);  // a bad step is skipped, the rest still run
    ++due;
  }
  script_.erase(script_.begin(), due);
}

}  // namespace nbx::boxsim
