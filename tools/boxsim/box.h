#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "boxsim/frames.h"
#include "boxsim/rain_plate.h"

namespace nbx::boxsim {

// What the box is told to report: the raw values of its frames.
struct Readings {
  std::string firmware = "6.10";
  std::string serial = "1234";
  double skyIR = -1500;     // hundredths of a degree C ("1" frame)
  double skySensor = 1200;  // hundredths ("2" frame)
  double ambientCounts = 512, ldrCounts = 40000, rainTempCounts = 400, zenerCounts = 520;
  double sqmFrequency = 250000;
  bool sqmFitted = false;
  double rainFrequency = 3300;
  bool windFitted = true;
  double windKmh = 7;
  bool humidityFitted = true;
  double humidity = 55;      // percent
  double humidityTemp = 12;  // deg C
  bool pressureFitted = true;
  double pressureHpa = 1005;
  int relay = 1;       // 1 opened ("Y"), 2 closed ("X")
  int heaterDuty = 0;  // 0..1023, last "P"
  RainPlate plate;     // with plate.modelled, sets the "5" counts as time goes by
  std::array<int, 4> errorCounters{0, 0, 0, 0};
  std::optional<bool> newHumidityFormat;  // default: firmware 6.00 and later
};

// Misbehaviour on demand.
struct Faults {
  // >0: from the Nth command received (1-based) on, no reply at all; the box
  // is dead, so relay and heater commands do nothing either.
  int silentFromCommand = 0;
  // Only the odd-numbered commands get their reply; the others still act.
  bool answerEveryOther = false;
  std::string garbageBefore;      // bytes sent before each reply
  std::string garbageBetween;     // bytes put after the first frame of each reply
  bool skySentinel = false;       // "1" and "2" frames carry 10000
  bool damagedNumbers = false;    // sample frames carry a damaged data field (e.g. "12x4")
};

// How the replies travel back; the box itself answers at once, whoever serves
// it on a line paces the bytes (see ReplyPacer).
struct Delivery {
  int baud = 0;             // 0: as fast as possible; 9600: 10 bits a byte pacing
  bool byteByByte = false;  // deliver each byte as its own write
};

class Box {
 public:
  Readings readings;
  Faults faults;
  Delivery delivery;

  // The host wrote these bytes (commands may arrive split or several at once)
  // at time `nowSeconds`; returns the bytes the box answers with, possibly empty.
  std::string Receive(std::string_view hostBytes, double nowSeconds = 0);
  // The commands received since the last ForgetCommands, without "!".
  const std::vector<std::string>& Commands() const { return commands_; }
  // How many commands have come since the box started, forgotten ones too.
  std::size_t CommandCount() const { return forgotten_ + commands_.size(); }
  // Lets go of the kept commands, so that a box that runs for weeks does not
  // grow; the count and the numbering of later commands go on.
  void ForgetCommands() {
    forgotten_ += commands_.size();
    std::vector<std::string>().swap(commands_);
  }
  // Forgets a command cut off half-way, as when the line is unplugged.
  void DropPartialCommand() { partial_.clear(); }

  // Physical helpers: set the raw values from physical quantities with the
  // box's constants (thermistors.h). Impossible values leave the raw value.
  void SetAmbientCelsius(double c);
  void SetRainPlateCelsius(double c);
  void SetReferenceVolts(double v);
  void SetSkyCelsius(double c);
  void SetSkySensorCelsius(double c);

  // Time moves the box: the rain plate warms or cools over the time since the
  // last call, and scripted values are applied once `nowSeconds` of a Receive
  // (or AdvanceTo) reaches their time. Steps of equal time keep their order.
  void AddScriptStep(double atSeconds, std::string assignment);
  void AdvanceTo(double nowSeconds);
  std::size_t PendingScriptSteps() const { return script_.size(); }

  // "key=value"; false for an unknown key or a bad value, which change nothing.
  bool Apply(std::string_view assignment);
  bool Apply(std::string_view assignment, std::string& why);

 private:
  struct ScriptStep {
    double atSeconds;
    std::string assignment;
  };
  std::string AnswerCommand(const std::string& command);
  bool ReplyGoesOut(std::size_t commandNumber) const;
  std::string WithFaults(std::string reply) const;
  void AdvancePlate(double nowSeconds);

  std::string partial_;
  std::vector<std::string> commands_;
  std::size_t forgotten_ = 0;
  std::vector<ScriptStep> script_;  // by time
  double plateSeconds_ = 0;         // the rain plate's model has come this far
};

}  // namespace nbx::boxsim
