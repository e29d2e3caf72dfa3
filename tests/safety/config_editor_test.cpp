#include <gtest/gtest.h>

#include <tuple>

#include "editing/config_editor.h"
#include "night.h"
#include "safety/alarms.h"
#include "safety/families.h"

namespace nbx {
namespace {

class ConfigEditing : public ::testing::Test {
 protected:
  test::Night n;
  Config& c = n.nm.config;
  ConfigEditor editor{n.nm};
};

TEST_F(ConfigEditing, EachBreachOfTheLimitOrderHasItsMessageAndKeepsTheLimit) {
  const struct {
    Family family;
    int index;
    double value;
    const char* message;
    int lowered = -1;  // a limit of the family set to -10 first, to reach a later row
  } cases[] = {
      {Family::Cloud, 0, 0, "CLEAR value CANNOT be greater or equal than CLOUDY value"},
      {Family::Day, 0, 60000,
       "DARK value CANNOT be greater or equal than 'Unknown Condition' value (ie. 60000)"},
      {Family::Day, 0, 0, "DARK value CANNOT be smaller or equal than VERY LIGHT value", 1},
      {Family::Day, 1, 0, "LIGHT value CANNOT be smaller or equal than VERY LIGHT value"},
      {Family::Rain, 0, 0, "DRY value CANNOT be smaller or equal than RAIN value", 1},
      {Family::Rain, 1, 0, "WET value CANNOT be smaller or equal than RAIN value"},
      {Family::Wind, 0, 10, "CALM value CANNOT be greater or equal than WINDY value"},
      {Family::Wind, 0, 0, "CALM value CANNOT be greater or equal than VERY WINDY value", 2},
      {Family::Wind, 1, 999, "WINDY value CANNOT be greater than VERY WINDY value"},
      {Family::Wind, 2, 7, "VERY WINDY value CANNOT be smaller than WINDY value"},
  };
  for (const auto& k : cases) {
    c = Config{};
    if (k.lowered >= 0) LimitsOf(c, k.family)[Slot(k.lowered)] = -10;
    const double before = LimitsOf(c, k.family)[Slot(k.index)];
    n.st.host.messages.clear();
    EXPECT_FALSE(editor.SetLimit(k.family, k.index, k.value)) << k.message;
    EXPECT_EQ(n.st.host.messages, std::vector<std::string>{k.message});
    EXPECT_EQ(LimitsOf(c, k.family)[Slot(k.index)], before) << k.message;
  }
  // In order, or without an order to keep: stored, no message; the words are the user's.
  n.st.host.messages.clear();
  EXPECT_TRUE(editor.SetLimit(Family::Wind, 1, 20) && editor.SetLimit(Family::Humidity, 0, 90));
  EXPECT_TRUE(n.st.host.messages.empty());
  EXPECT_DOUBLE_EQ(c.WindLimit[1], 20);
  c.ColorWind[0].Caption = "Brezza";
  c.ColorWind[1].Caption = "Vento forte";
  EXPECT_FALSE(editor.SetLimit(Family::Wind, 0, 25));
  EXPECT_EQ(n.st.host.messages.back(), "BREZZA value CANNOT be greater or equal than VENTO FORTE value");
}

TEST_F(ConfigEditing, UnknownThresholdsCorrectThemselvesAndCarryTheirThirdLimits) {
  editor.SetUnknowCloudGT(0);  // not above Cloudy: one degree above it
  EXPECT_EQ(std::tuple(c.UnknowCloudGT, c.CloudLimit[2]), std::tuple(1.0, 1.0));
  editor.SetLimit(Family::Cloud, 2, 25);
  EXPECT_DOUBLE_EQ(c.UnknowCloudGT, 25);
  editor.SetUnknowRainLT(2800);  // not below Wet: one below it
  EXPECT_DOUBLE_EQ(c.RainLimit[2], 2799);
  editor.SetLimit(Family::Rain, 2, 100);
  EXPECT_DOUBLE_EQ(c.UnknowRainLT, 100);
  editor.SetUnknownDayGT(2100);  // not above Dark: a thousand above it
  EXPECT_EQ(std::tuple(c.UnknownDayGT, c.DayLimit[2]), std::tuple(3100.0, 0.0));
  editor.SetUnknownNoReading(0.5);
  editor.SetUnknownRS232NoError(-2);
  EXPECT_EQ(std::tuple(c.UnknownNoReading, c.UnknownRS232NoError), std::tuple(1.0, 1.0));
  EXPECT_TRUE(n.st.host.messages.empty());
}

TEST_F(ConfigEditing, CheckBoxesAndAlarmEntriesFollowTheirRules) {
  const UnsafeBlock& wind = n.nm.display.UnsafeBlocks[static_cast<std::size_t>(Family::Wind)];
  editor.SetCheck(Family::Wind, 1, 1);  // the middle class ticks the worst
  EXPECT_EQ(c.CheckWind, (std::array<std::int32_t, 3>{0, 1, 1}));
  EXPECT_EQ(wind.CheckBackColor,
            (std::array<Colour, 3>{colours::SystemButtonFace, colours::Red, colours::Red}));
  editor.SetCheck(Family::Wind, 2, 0);
  EXPECT_EQ(c.CheckWind[2], 1);
  editor.SetCheck(Family::Wind, 1, 0);
  editor.SetCheck(Family::Wind, 2, 0);
  EXPECT_EQ(c.CheckWind, (std::array<std::int32_t, 3>{0, 0, 0}));

  editor.SetAlarmState(Family::Wind, 2, 1);  // no sound: cannot be armed
  EXPECT_EQ(c.AlarmWind[2].Value, 0);
  editor.SetAlarmSound(Family::Wind, 2, "/sounds/gale.wav|repeat");
  editor.SetAlarmState(Family::Wind, 2, 1);
  EXPECT_EQ(std::tuple(c.AlarmWind[2].Value, wind.AlarmIconOn[2]), std::tuple(1, true));
  editor.SetAlarmSound(Family::Wind, 2, "");
  EXPECT_EQ(std::tuple(c.AlarmWind[2].Value, wind.AlarmIconOn[2]), std::tuple(0, false));

  AlarmStart(n.nm, "/sounds/link.wav");
  n.s.AlarmHeld = true;
  n.s.ActiveAlarmCode = "R2";
  editor.SetSuspendSoundAlarm(1);  // silences even the held link alarm
  EXPECT_FALSE(n.sound.playing || n.s.AlarmHeld || n.st.time.IsArmed(TimerId::AlarmAjo));
  EXPECT_TRUE(n.s.ActiveAlarmCode.empty());
}

}  // namespace
}  // namespace nbx
