#include <gtest/gtest.h>

#include "core/number_format.h"
#include "core/sample_array.h"
#include "core/serial_date.h"
#include "core/status.h"
#include "core/text.h"
#include "core/units.h"
#include "support/virtual_time.h"

namespace nbx {
namespace {

TEST(FormatNumber, PatternsOfTheLabelsAndFilesInEitherLocale) {
  const struct {
    double value;
    const char* pattern;
    const char* expected;
  } cases[] = {
      {2.5, "0", "3"},              {-2.5, "0", "-3"},         {0.04, "0.0", "0.0"},
      {12.25, "0.0", "12.3"},       {1.005, "0.00", "1.01"},   {2.1, "0.000", "2.100"},
      {-123.45, "#0.0", "-123.5"},  {7, "00", "07"},           {102.3, "0000", "0102"},
      {0.5, "0%", "50%"},           {0.955, "0%", "96%"},      {0, "#", ""},
      {15, "#", "15"},              {1008.44, "000.0", "1008.4"}, {0.8125, "0.000 s", "0.813 s"},
      {9.99999, "0.00", "10.00"},   {-0.04, "0.0", "-0.0"},    {1e7, "0", "10000000"},
      {0.0 / 0.0, "0.0", ""},       {1.0 / 0.0, "0", ""},
      {-1.5e308, "0%", ""},  // finite, but not as a percentage
  };
  for (const auto& c : cases)
    EXPECT_EQ(FormatNumber(c.value, c.pattern), c.expected) << c.value << " " << c.pattern;
  EXPECT_EQ(FormatNumber(12.25, "0.00", ','), "12,25");
  EXPECT_EQ(FormatNumber(12, "0", ','), "12");
}

TEST(FormatField, RightAlignedInWidthLessOneWithAPointWhateverTheLocale) {
  EXPECT_EQ(FormatField(-123.4, "#0.0", 7), "-123.4");
  EXPECT_EQ(FormatField(5.25, "#0.0", 7, ','), "   5.3");
  EXPECT_EQ(FormatField(-12345.6, "#0.0", 7), "2345.6");  // too long: the leading characters go
  EXPECT_EQ(FormatField(19.558, "#0.00", 0, ','), "19.56");
}

TEST(TextHelpers, PathsWidthsAndBoxNumbers) {
  EXPECT_EQ(JoinPath("", "a.dat"), "a.dat");
  EXPECT_EQ(JoinPath("/data", "a.dat"), "/data/a.dat");
  EXPECT_EQ(JoinPath("/data/", "a.dat"), "/data/a.dat");
  EXPECT_EQ(FixedWidth("Overcast", 5), "Overc");
  EXPECT_EQ(FixedWidth("Dry", 5), "Dry  ");
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(ToCommaDecimal("12.5 3.25"), "12,5 3,25");
  EXPECT_EQ(ParseNumber("  -1520      "), -1520);
  EXPECT_EQ(ParseNumber("+7"), 7);
  for (const char* damaged : {"", "   ", "12x4", "1.2.3", "-", ".", "1e5", "0x10"})
    EXPECT_FALSE(ParseNumber(damaged).has_value()) << damaged;
}

TEST(SerialDates, DaysSince1899WithTheTimeAsFraction) {
  EXPECT_EQ(ToSerialDate({1899, 12, 30, 0, 0, 0, 0}), 0.0);
  EXPECT_EQ(ToSerialDate({1900, 1, 1, 0, 0, 0, 0}), 2.0);
  EXPECT_DOUBLE_EQ(ToSerialDate({2026, 1, 31, 18, 0, 0, 0}), 46053.75);
  const LocalDateTime t{2026, 11, 21, 23, 59, 58, 0};
  EXPECT_EQ(FromSerialDate(AddSeconds(ToSerialDate(t), 3)), (LocalDateTime{2026, 11, 22, 0, 0, 1, 0}));
  EXPECT_EQ(FormatDate(t, "hh:mm:ss.ss"), "23:59:58.58");
  EXPECT_EQ(FormatDate(t, "dd/mmm/yy"), "21/Nov/26");
  EXPECT_EQ(FormatDate(t, "yyyy/mm/dd hh:mm:ss"), "2026/11/21 23:59:58");
}

TEST(MillisNow, CountsOnOverMidnightAndFollowsTheClockBack) {
  test::VirtualTime clock({2026, 11, 21, 23, 59, 59, 250});
  const std::int64_t first = MillisNow(clock);
  clock.RunFor(750);
  EXPECT_EQ(MillisNow(clock) - first, 750);
  clock.JumpClock(-7200000);  // the clock set back: the stamp goes back with it
  EXPECT_EQ(first - MillisNow(clock), 7200000 - 750);
}

TEST(SampleAverage, ClipsBeyondOneSigmaOfTheMean) {
  EXPECT_DOUBLE_EQ(SampleAverage({10, 10, 10, 10, 20}, 1), 10);
  EXPECT_DOUBLE_EQ(SampleAverage({0.1, 0.1, 0.1}, 1), 0.1);  // equal samples are all kept
  EXPECT_DOUBLE_EQ(SampleAverage({10, 20}, 1), 15);         // both on the edges, kept
  EXPECT_EQ(SampleAverage({10, 20, 30}, 0), 20);            // a zero width keeps the mean only
  EXPECT_EQ(SampleAverage({10, 30}, 0), 999999);            // none kept
}

TEST(Units, TemperatureAndSpeedConversions) {
  EXPECT_DOUBLE_EQ(ConvertTemperature("C", "F", 100), 212);
  EXPECT_DOUBLE_EQ(ConvertTemperature("F", "C", 32), 0);
  // km/h to each unit; every other pair must agree with a detour through km/h.
  // The letters are case-sensitive: "k" is knots.
  EXPECT_DOUBLE_EQ(ConvertSpeed("K", "m", 36), 10);
  EXPECT_NEAR(ConvertSpeed("K", "M", 1.609344), 1, 1e-12);
  EXPECT_NEAR(ConvertSpeed("K", "k", 1.852), 1, 1e-12);
  for (const char* from : {"K", "M", "m", "k"})
    for (const char* to : {"K", "M", "m", "k"}) {
      EXPECT_NEAR(ConvertSpeed(from, to, 13), ConvertSpeed("K", to, ConvertSpeed(from, "K", 13)), 1e-9)
          << from << " to " << to;
      EXPECT_NEAR(ConvertSpeed(to, from, ConvertSpeed(from, to, 13)), 13, 1e-9) << from << " to " << to;
    }
  EXPECT_DOUBLE_EQ(ConvertSpeed("K", "X", 12), 12);  // an unknown letter changes nothing
}

TEST(StatusLines, MainLineCutAt60AndTheCycleLampFlips) {
  Display d;
  SetStatusMain(d, std::string(70, 'x'), 255);
  EXPECT_EQ(d.StatusBar.Caption.size(), 60u);
  SetStatusCode(d, "f52 f51 " + std::string(70, 'y'), 255);
  EXPECT_EQ(d.StatusBar2.Caption.size(), 78u);
  SetCycleLED(d, colours::Blue);
  SetCycleLED(d, colours::Red);
  EXPECT_EQ(d.LEDSensor[0].FillColor, colours::LampGrey);
  EXPECT_EQ(d.LEDSensor[1].FillColor, colours::Red);
}

}  // namespace
}  // namespace nbx
