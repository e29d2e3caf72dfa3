#include <gtest/gtest.h>

#include <cmath>

#include "logic_fixture.h"
#include "sensors/wind.h"

namespace nbx {
namespace {

class Wind : public test::LogicFixture {};

TEST_F(Wind, WithoutAnAnemometerTheWindIsCalmAndItsBarsGrey) {
  SiteState& s = nm.state;
  s.WindSamples = {3, 9, 6};
  s.Value_Wind = 6;
  s.Value_Gust = 9;
  nm.display.BarWindSpeed[1] = {"Windy", 0, 0xC0FFFF};
  s.IsWindPresent = true;  // with one, the values stand for the classification
  ReadWind(nm);
  EXPECT_EQ(s.Value_Wind, 6);
  s.IsWindPresent = false;
  ReadWind(nm);
  EXPECT_EQ(s.Value_Wind, 0);
  EXPECT_EQ(s.Value_Gust, 0);
  EXPECT_EQ(s.WindSamples, (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(s.NBX_WindCondition, 1);
  for (const Label& bar : nm.display.BarWindSpeed) {
    EXPECT_EQ(bar.Caption, "");
    EXPECT_EQ(bar.BackColor, 0xE0E0E0u);
  }
}

}  // namespace
}  // namespace nbx
