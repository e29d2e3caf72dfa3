#include <gtest/gtest.h>

#include "core/number_format.h"

namespace nbx {
namespace {

TEST(FormatNumber, PatternsOfTheLabelsAndFiles) {
  struct Case {
    double value;
    const char* pattern;
    const char* expected;
  };
  const Case cases[] = {
      {2.5, "0", "3"},            {-2.5, "0", "-3"},         {0.04, "0.0", "0.0"},
      {12.25, "0.0", "12.3"},     {1.005, "0.00", "1.01"},   {2.1, "0.000", "2.100"},
      {-123.45, "#0.0", "-123.5"}, {0.456, "#0.00", "0.46"}, {7, "00", "07"},
      {102.3, "0000", "0102"},    {1023, "0000", "1023"},    {0.5, "0%", "50%"},
      {0.955, "0%", "96%"},       {0, "#", ""},              {15, "#", "15"},
      {1008.44, "000.0", "1008.4"}, {8.4, "000.0", "008.4"}, {0.8125, "0.000 s", "0.813 s"},
      {9.99999, "0.00", "10.00"}, {-0.04, "0.0", "-0.0"},    {1e7, "0", "10000000"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(FormatNumber(c.value, c.pattern), c.expected) << c.value << " " << c.pattern;
}

TEST(FormatNumber, DecimalSeparatorOfTheLocaleAndNonFiniteValues) {
  EXPECT_EQ(FormatNumber(12.25, "0.00", ','), "12,25");
  EXPECT_EQ(FormatNumber(12, "0", ','), "12");
  EXPECT_EQ(FormatNumber(0.0 / 0.0, "0.0"), "");
  EXPECT_EQ(FormatNumber(1.0 / 0.0, "0"), "");
  EXPECT_EQ(FormatNumber(-1.5e308, "0%"), "");  // finite, but not as a percentage
}

TEST(RoundHalfEven, TiesGoToTheEvenNeighbour) {
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(3.5), 4);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
}

}  // namespace
}  // namespace nbx
