#include "config/setting_conversions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nbx {
namespace {

TEST(BoolFromSetting, FalseWordsOfFiveLanguagesAndEverythingElseTrue) {
  for (const char* word : {"False", "Falso", "Falsch", "0", "Faux"})
    EXPECT_FALSE(BoolFromSetting(word, true)) << word;
  // The comparison is exact: case, blanks around and other words are true.
  for (const char* word : {"True", "false", " False", "00", "x"})
    EXPECT_TRUE(BoolFromSetting(word, false)) << word;
  // Nothing but blanks gives the key's default, not false.
  EXPECT_TRUE(BoolFromSetting("  ", true));
  EXPECT_FALSE(BoolFromSetting("", false));
}

TEST(NumberFromSetting, SameNumberUnderEveryLocaleWithoutSign) {
  // The last separator counts; one at the end divides by 1.
  const std::pair<const char*, double> read[] = {
      {"19,6", 19.6}, {" 2.5 ", 2.5}, {"1.2,3", 12.3}, {"19.", 19}, {",5", 0.5}};
  for (const auto& [text, value] : read) EXPECT_DOUBLE_EQ(DoubleFromSetting(text, 0), value) << text;
  // Blank text, a sign, a letter, an inner blank; digits beyond what a double
  // holds: the default, never an infinity or no number.
  for (const std::string& text : std::vector<std::string>{
           "", "-5", "19.6a", "1 9", "1e3", std::string(400, '7'), "1." + std::string(400, '0')})
    EXPECT_DOUBLE_EQ(DoubleFromSetting(text, 7.5), 7.5) << text;

  EXPECT_EQ(IntFromSetting(" ", 3), 3);
  EXPECT_EQ(IntFromSetting(" -7 ", 3), -7);
  EXPECT_EQ(IntFromSetting("12.5", 3), 12);  // ties go to the even number
  EXPECT_EQ(IntFromSetting("13,5", 3, ','), 14);
  EXPECT_EQ(IntFromSetting("40000", 3), 3);  // no 16-bit number
  EXPECT_EQ(IntFromSetting("4a", 3), 3);
  EXPECT_EQ(LongFromSetting("40000", 3), 40000);
  EXPECT_EQ(LongFromSetting("3000000000", 3), 3);
}

TEST(PlainConversions, LocaleNumbersAndALetterGivesTheDefault) {
  EXPECT_DOUBLE_EQ(NumberFromText("9,9", 0, ','), 9.9);
  EXPECT_DOUBLE_EQ(NumberFromText("9.9", 0, ','), 9.9);  // the point reads everywhere
  EXPECT_DOUBLE_EQ(NumberFromText(" -2.5e2 ", 0, '.'), -250);
  for (const char* text : {"12a", "1,000", "-", ".", "1e400", "0x10"})
    EXPECT_DOUBLE_EQ(NumberFromText(text, 4.25, '.'), 4.25) << text;
  EXPECT_EQ(LongFromText("2147483648", 1, '.'), 1);
  EXPECT_EQ(LongFromText("1e3", 1, '.'), 1000);
  EXPECT_EQ(IntegerFromText("-32768", 1, '.'), -32768);
  EXPECT_EQ(IntegerFromText("-32769", 1, '.'), 1);

  EXPECT_FALSE(BooleanFromText(" FALSE ", true));
  EXPECT_TRUE(BooleanFromText("-1", false));
  EXPECT_TRUE(BooleanFromText("Falsch", true));  // no word the platform knows: the default
  EXPECT_EQ(ColourFromText("-2147483633", 0), 0x8000000Fu);
  EXPECT_EQ(ColourFromText("blue", 0x404040), 0x404040u);
}

TEST(SettingTexts, NumbersInTheLocaleNotationReadBackTheSame) {
  EXPECT_EQ(NumberToText(30.0 / 10, ','), "3");
  EXPECT_EQ(NumberToText(-0.0, '.'), "0");
  EXPECT_EQ(NumberToText(1.0 / 3, '.'), "0.333333333333333");
  EXPECT_EQ(ColourToText(0x8000000F), "-2147483633");
  for (double value : {-30.0, 19.6, 1e-7, 1e20})
    for (char separator : {'.', ','})
      EXPECT_DOUBLE_EQ(NumberFromText(NumberToText(value, separator), 0, separator), value)
          << value << separator;
}

}  // namespace
}  // namespace nbx
