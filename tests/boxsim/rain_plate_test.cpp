#include <gtest/gtest.h>

#include <cmath>

#include "boxsim/assignments.h"
#include "boxsim/box.h"
#include "core/text.h"
#include "reply_frames.h"
#include "sensors/raw_conversions.h"

namespace nbx::boxsim {
namespace {

// The plate temperature the program reads from the "5" frame of a "C" reply at `nowSeconds`.
double PlateSeen(Box& box, double nowSeconds) {
  const std::string frame = FramesOf(box.Receive("C!", nowSeconds))[2];
  EXPECT_EQ(frame[1], '5');
  return ThermistorCelsius(ParseNumber(DataOf(frame)).value_or(-1), 1, 1, 3450);
}

// Air at 0, 20 degrees over it at full duty, a time constant of a minute.
Box PlateBox() {
  Box box;
  std::string why;
  EXPECT_TRUE(ApplyAll("platemodel=1 plateair=0 platerise=20 platetau=60 rainplate=0", box, why)) << why;
  return box;
}

TEST(RainPlate, ModelledItApproachesAirPlusHeatAtItsTimeConstantLessWhatWaterTakes) {
  Box box = PlateBox();
  box.Receive("P1023!", 0);
  // Whole counts, as the converter gives them, cost about a tenth of a degree.
  EXPECT_NEAR(PlateSeen(box, 60), 20 * (1 - std::exp(-1.0)), 0.1);
  EXPECT_NEAR(PlateSeen(box, 600), 20, 0.1);
  box.Receive("P0512!", 600);
  EXPECT_NEAR(PlateSeen(box, 1200), 10, 0.1);
  box.Apply("platewet=1");
  box.Apply("platewetdrop=4");
  EXPECT_NEAR(PlateSeen(box, 1800), 6, 0.1);
  // The time before a "P" passed under the old duty: the new one acts from now on.
  box.Receive("P0000!", 2400);
  EXPECT_NEAR(PlateSeen(box, 2400), 6, 0.1);
  // A clock set back moves nothing; time constant 0 settles at once.
  EXPECT_NEAR(PlateSeen(box, 100), 6, 0.1);
  box.Apply("platetau=0");
  EXPECT_NEAR(PlateSeen(box, 101), -4, 0.1);

  // Off by default: the plate says what it is told, heater or not.
  Box plain;
  plain.Apply("rainplate=12");
  plain.Receive("P1023!", 0);
  EXPECT_NEAR(PlateSeen(plain, 3600), 12, 1e-3);
  for (const char* refused : {"platetau=-1", "platewet=2", "platemodel=yes", "platerise=x"})
    EXPECT_FALSE(plain.Apply(refused)) << refused;
  EXPECT_FALSE(plain.readings.plate.modelled);
}

}  // namespace
}  // namespace nbx::boxsim
