#include "ui/widgets/number_entry.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QSignalSpy>
#include <QTest>

namespace nbx {
namespace {

// The default locale for the scope: German (decimal comma) or American.
struct LocaleScope {
  explicit LocaleScope(char separator) {
    QLocale::setDefault(separator == ',' ? QLocale(QLocale::German, QLocale::Germany)
                                         : QLocale(QLocale::English, QLocale::UnitedStates));
  }
  ~LocaleScope() { QLocale::setDefault(QLocale::c()); }
};

TEST(NumberEntry, KeyFilterKeepsTheNumberInShape) {
  struct Case {
    char separator;
    int decimals;
    bool negative;
    const char* before;
    int selectFrom, selectLength;  // selectLength 0: caret at selectFrom
    const char* typed;
    const char* after;
  } cases[] = {
      {',', 2, false, "12", 2, 0, ".", "12"},  // the point of the other locale
      {',', 2, false, "12", 2, 0, ",", "12,"},
      {'.', 2, false, "12", 2, 0, ",", "12"},
      {'.', 2, false, "12.5", 4, 0, ".", "12.5"},  // a second separator
      {'.', 2, false, "12.5", 1, 3, ".", "1."},    // ... over a selection covering the first
      {'.', 0, false, "12", 2, 0, ".", "12"},      // no decimals allowed
      {'.', 2, false, "12", 0, 0, "-", "12"},      // no negative allowed
      {'.', 2, true, "12", 0, 0, "-", "-12"},
      {'.', 2, true, "12", 1, 0, "-", "12"},       // "-" in the middle
      {'.', 2, true, "-12", 0, 0, "-", "-12"},     // a second "-"
      {'.', 2, false, "123", 3, 0, "4", "123"},    // typed, then cut to three digits
      {'.', 2, false, "123", 0, 3, "4", "4"},      // over a selection
      {'.', 2, false, "1.25", 4, 0, "7", "1.25"},  // decimals full
      {'.', 2, false, "1.2", 3, 0, "7", "1.27"},
      {'.', 2, false, "123.5", 0, 0, "9", "912.5"},  // integer digits cut back to three
      {'.', 2, false, "12", 2, 0, "a", "12"},
  };
  for (const Case& c : cases) {
    LocaleScope locale(c.separator);
    NumberEntry entry;
    entry.setDigitsMostSignificant(3);
    entry.setDigitsDecimal(c.decimals);
    entry.setAllowNegative(c.negative);
    entry.setText(c.before);
    if (c.selectLength > 0)
      entry.setSelection(c.selectFrom, c.selectLength);
    else
      entry.setCursorPosition(c.selectFrom);
    QTest::keyClicks(&entry, c.typed);
    EXPECT_EQ(entry.text(), QString(c.after)) << c.before << " + " << c.typed << " with '" << c.separator << "'";
  }
}

TEST(NumberEntry, NumberFromTextReadsTheLocalesSeparators) {
  struct Case {
    char separator;
    const char* text;
    double value;
  } cases[] = {
      {',', "1.234,5", 1234.5}, {'.', "1,234.5", 1234.5}, {'.', "-3.25", -3.25}, {'.', "7 km/h", 7},
      {'.', "", 0},             {'.', "-", 0},            {'.', "abc", 0},
      {',', "12.5", 125},  // the point is a group separator there
  };
  for (const Case& c : cases) {
    LocaleScope locale(c.separator);
    EXPECT_DOUBLE_EQ(NumberEntry::NumberFromText(c.text), c.value) << c.text << " with '" << c.separator << "'";
  }
}

TEST(NumberEntry, LeavingFormatsAndReportsOnlyEdits) {
  LocaleScope locale(',');
  QWidget window;
  auto* entry = new NumberEntry(&window);
  auto* other = new QLineEdit(&window);
  entry->setDisplayFormat("0.00");
  entry->setAllowNegative(true);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QSignalSpy edited(entry, &NumberEntry::valueEdited);

  entry->setValue(-3.5);
  EXPECT_EQ(entry->text(), "-3,50");
  entry->setFocus();
  other->setFocus();
  EXPECT_EQ(edited.count(), 0) << "an entry left untouched reports nothing";

  entry->setFocus();
  entry->selectAll();
  QTest::keyClicks(entry, "7,");
  other->setFocus();
  EXPECT_EQ(entry->text(), "7,00");
  ASSERT_EQ(edited.count(), 1);
  EXPECT_DOUBLE_EQ(edited.at(0).at(0).toDouble(), 7.0);

  entry->setFocus();
  entry->clear();
  entry->setModified(true);
  other->setFocus();
  EXPECT_EQ(entry->text(), "") << "an emptied entry stays empty";
}

}  // namespace
}  // namespace nbx
