#include <gtest/gtest.h>

#include <cmath>

#include "boxsim/box.h"
#include "core/text.h"
#include "reply_frames.h"
#include "sensors/raw_conversions.h"

namespace nbx::boxsim {
namespace {

// The value the program takes from a frame of the reply to `command`.
double ProgramReads(Box& box, const std::string& command, char type) {
  for (const std::string& frame : FramesOf(box.Receive(command + "!"))) {
    if (frame[1] == type) return ParseNumber(frame.substr(3)).value_or(-99999);
  }
  ADD_FAILURE() << "no frame " << type << " in the reply to " << command;
  return -99999;
}

TEST(BoxPhysics, ThermistorCountsGiveBackTheTemperatureByTheProgramsFormula) {
  Box box;
  for (const double celsius : {-25.0, 0.0, 10.0, 25.0, 45.0}) {
    box.SetAmbientCelsius(celsius);
    box.SetRainPlateCelsius(celsius);
    EXPECT_NEAR(ThermistorCelsius(ProgramReads(box, "C", '3'), 9.9, 10, 3811), celsius, 0.05) << celsius;
    EXPECT_NEAR(ThermistorCelsius(ProgramReads(box, "C", '5'), 1, 1, 3450), celsius, 0.05) << celsius;
  }
  // Pull-up and thermistor are equal at 25 degrees: the divider sits at half scale.
  box.SetRainPlateCelsius(25);
  EXPECT_NEAR(box.readings.rainTempCounts, 511.5, 1e-9);

  const double counts = box.readings.ambientCounts;
  box.SetAmbientCelsius(-300);
  box.SetAmbientCelsius(std::nan(""));
  EXPECT_EQ(box.readings.ambientCounts, counts);
}

TEST(BoxPhysics, ReferenceAndInfraredTemperaturesAsTheProgramSeesThem) {
  Box box;
  box.SetReferenceVolts(4.85);
  EXPECT_NEAR(1023 * 2.54 / ProgramReads(box, "C", '6'), 4.85, 0.001);
  const double zener = box.readings.zenerCounts;
  box.SetReferenceVolts(0);
  box.SetReferenceVolts(-5);
  EXPECT_EQ(box.readings.zenerCounts, zener);

  box.SetSkyCelsius(-20.504);
  box.SetSkySensorCelsius(3.256);
  EXPECT_EQ(ProgramReads(box, "S", '1'), -2050);
  EXPECT_EQ(ProgramReads(box, "T", '2'), 326);
}

}  // namespace
}  // namespace nbx::boxsim
