#include <gtest/gtest.h>

#include "core/config_editor.h"
#include "safety/alarms.h"
#include "safety/families.h"
#include "support/sim_station.h"
#include "fake_services.h"

namespace nbx {
namespace {

class ConfigEditing : public ::testing::Test {
 protected:
  test::SimStation st;
  Config& c = st.nm.config;
  ConfigEditor editor{st.nm};
};

TEST_F(ConfigEditing, EachBreachOfTheLimitOrderHasItsMessageAndKeepsTheLimit) {
  struct Case {
    Family family;
    int index;
    double value;
    std::function<void(Config&)> setup;  // makes the later rows of an index reachable
    const char* message;
  };
  auto none = [](Config&) {};
  const Case cases[] = {
      {Family::Cloud, 0, 0, none, "CLEAR value CANNOT be greater or equal than CLOUDY value"},
      {Family::Cloud, 1, -5, none, "CLOUDY value CANNOT be smaller than CLEAR value"},
      {Family::Day, 0, 60000, none,
       "DARK value CANNOT be greater or equal than 'Unknown Condition' value (ie. 60000)"},
      {Family::Day, 0, 6, none, "DARK value CANNOT be smaller or equal than LIGHT value"},
      {Family::Day, 0, 0, [](Config& k) { k.DayLimit[1] = -10; },
       "DARK value CANNOT be smaller or equal than VERY LIGHT value"},
      {Family::Day, 1, 2100, none, "DARK value CANNOT be greater or equal than LIGHT value"},
      {Family::Day, 1, 0, none, "LIGHT value CANNOT be smaller or equal than VERY LIGHT value"},
      {Family::Rain, 0, 2800, none, "DRY value CANNOT be smaller or equal than WET value"},
      {Family::Rain, 0, 0, [](Config& k) { k.RainLimit[1] = -10; },
       "DRY value CANNOT be smaller or equal than RAIN value"},
      {Family::Rain, 1, 3200, none, "DRY value CANNOT be greater or equal than WET value"},
      {Family::Rain, 1, 0, none, "WET value CANNOT be smaller or equal than RAIN value"},
      {Family::Wind, 0, 10, none, "CALM value CANNOT be greater or equal than WINDY value"},
      {Family::Wind, 0, 4, [](Config& k) { k.WindLimit[2] = 3; },
       "CALM value CANNOT be greater or equal than VERY WINDY value"},
      {Family::Wind, 1, 5, none, "WINDY value CANNOT be smaller than CALM value"},
      {Family::Wind, 1, 999, none, "WINDY value CANNOT be greater than VERY WINDY value"},
      {Family::Wind, 2, 5, none, "VERY WINDY value CANNOT be smaller than CALM value"},
      {Family::Wind, 2, 7, none, "VERY WINDY value CANNOT be smaller than WINDY value"},
  };
  for (const Case& k : cases) {
    c = Config{};
    k.setup(c);
    const double before = LimitsOf(c, k.family)[Slot(k.index)];
    st.host.messages.clear();
    EXPECT_FALSE(editor.SetLimit(k.family, k.index, k.value)) << k.message;
    EXPECT_EQ(st.host.messages, std::vector<std::string>{k.message});
    EXPECT_EQ(LimitsOf(c, k.family)[Slot(k.index)], before) << k.message;
  }
}

TEST_F(ConfigEditing, LimitsInOrderAreStoredSilentlyAndTheWordsAreTheUsers) {
  EXPECT_TRUE(editor.SetLimit(Family::Cloud, 0, -12.5));
  EXPECT_TRUE(editor.SetLimit(Family::Wind, 1, 20));
  EXPECT_TRUE(editor.SetLimit(Family::Day, 1, 2099));
  // Humidity and pressure have no order to keep.
  EXPECT_TRUE(editor.SetLimit(Family::Humidity, 0, 90));
  EXPECT_TRUE(st.host.messages.empty());
  EXPECT_DOUBLE_EQ(c.CloudLimit[0], -12.5);
  EXPECT_DOUBLE_EQ(c.WindLimit[1], 20);
  EXPECT_DOUBLE_EQ(c.HumidityLimit[0], 90);

  c.ColorWind[0].Caption = "Brezza";
  c.ColorWind[1].Caption = "Vento forte";
  EXPECT_FALSE(editor.SetLimit(Family::Wind, 0, 25));
  EXPECT_EQ(st.host.messages.back(), "BREZZA value CANNOT be greater or equal than VENTO FORTE value");
  c.UnknownDayGT = 2500.5;
  EXPECT_FALSE(editor.SetLimit(Family::Day, 0, 2600));
  EXPECT_EQ(st.host.messages.back(),
            "DARK value CANNOT be greater or equal than 'Unknown Condition' value (ie. 2500.5)");
}

TEST_F(ConfigEditing, UnknownThresholdsCorrectThemselvesAndCarryTheirThirdLimits) {
  editor.SetUnknowCloudGT(0);  // not above Cloudy: one degree above it
  EXPECT_DOUBLE_EQ(c.UnknowCloudGT, 1);
  EXPECT_DOUBLE_EQ(c.CloudLimit[2], 1);
  editor.SetLimit(Family::Cloud, 2, 25);  // the third limit is the same value
  EXPECT_DOUBLE_EQ(c.UnknowCloudGT, 25);
  EXPECT_DOUBLE_EQ(c.CloudLimit[2], 25);

  editor.SetUnknowRainLT(2800);  // not below Wet: one below it
  EXPECT_DOUBLE_EQ(c.UnknowRainLT, 2799);
  EXPECT_DOUBLE_EQ(c.RainLimit[2], 2799);
  EXPECT_TRUE(editor.SetLimit(Family::Rain, 2, 100));
  EXPECT_DOUBLE_EQ(c.UnknowRainLT, 100);
  EXPECT_DOUBLE_EQ(c.RainLimit[2], 100);

  editor.SetUnknownDayGT(2100);  // not above Dark: a thousand above it
  EXPECT_DOUBLE_EQ(c.UnknownDayGT, 3100);
  EXPECT_DOUBLE_EQ(c.DayLimit[2], 0);  // brightness has no linked limit
  editor.SetUnknownDayGT(2100.5);
  EXPECT_DOUBLE_EQ(c.UnknownDayGT, 2100.5);

  editor.SetUnknownNoReading(0.5);
  EXPECT_DOUBLE_EQ(c.UnknownNoReading, 1);
  editor.SetUnknownNoReading(4);
  EXPECT_DOUBLE_EQ(c.UnknownNoReading, 4);
  editor.SetUnknownRS232NoError(-2);
  EXPECT_DOUBLE_EQ(c.UnknownRS232NoError, 1);
  EXPECT_TRUE(st.host.messages.empty());
}

TEST_F(ConfigEditing, TickingTheMiddleClassTicksTheWorstAndPaintsTheBoxes) {
  const auto& colours = st.nm.display.UnsafeBlocks[static_cast<std::size_t>(Family::Wind)].CheckBackColor;
  editor.SetCheck(Family::Wind, 1, 1);
  EXPECT_EQ(c.CheckWind, (std::array<std::int32_t, 3>{0, 1, 1}));
  EXPECT_EQ(colours, (std::array<Colour, 3>{colours::SystemButtonFace, colours::Red, colours::Red}));
  editor.SetCheck(Family::Wind, 2, 0);  // the rule puts it back
  EXPECT_EQ(c.CheckWind[2], 1);
  editor.SetCheck(Family::Wind, 1, 0);
  editor.SetCheck(Family::Wind, 2, 0);  // the middle left alone
  EXPECT_EQ(c.CheckWind, (std::array<std::int32_t, 3>{0, 0, 0}));
  editor.SetCheck(Family::Wind, 0, 1);
  EXPECT_EQ(c.CheckWind, (std::array<std::int32_t, 3>{1, 0, 0}));
  EXPECT_EQ(colours, (std::array<Colour, 3>{colours::Red, colours::SystemButtonFace, colours::SystemButtonFace}));
}

TEST_F(ConfigEditing, AnAlarmNeedsASoundAndSuspendingSilencesEverything) {
  const auto& icons = st.nm.display.UnsafeBlocks[static_cast<std::size_t>(Family::Rain)].AlarmIconOn;
  editor.SetAlarmState(Family::Rain, 2, 1);
  EXPECT_EQ(c.AlarmRain[2].Value, 0);
  EXPECT_FALSE(icons[2]);
  editor.SetAlarmSound(Family::Rain, 2, "/sounds/rain.wav|repeat");
  EXPECT_TRUE(icons[2]);
  editor.SetAlarmState(Family::Rain, 2, 1);
  EXPECT_EQ(c.AlarmRain[2].Value, 1);
  editor.SetAlarmSound(Family::Rain, 2, "");
  EXPECT_EQ(c.AlarmRain[2].Value, 0);
  EXPECT_FALSE(icons[2]);

  test::FakeSoundPlayer sound;
  st.nm.io.sound = &sound;
  AlarmStart(st.nm, "/sounds/link.wav");
  st.nm.state.AlarmHeld = true;
  st.nm.state.ActiveAlarmCode = "R2";
  editor.SetSuspendSoundAlarm(1);
  EXPECT_FALSE(sound.playing);
  EXPECT_FALSE(st.nm.state.AlarmHeld);
  EXPECT_TRUE(st.nm.state.ActiveAlarmCode.empty());
  EXPECT_FALSE(st.nm.display.ButtStopAlarm.Visible);
  EXPECT_FALSE(st.time.IsArmed(TimerId::AlarmAjo));
  // Turning it off again stops nothing.
  AlarmStart(st.nm, "/sounds/link.wav");
  editor.SetSuspendSoundAlarm(0);
  EXPECT_TRUE(sound.playing);
}

}  // namespace
}  // namespace nbx
