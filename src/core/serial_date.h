#pragma once

#include <string>

namespace nbx {

// A local date and time of day as the system clock gives it.
struct LocalDateTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;

  bool operator==(const LocalDateTime&) const = default;
};

// Serial dates: days since 1899-12-30, the time of day as the fraction. This is
// the date type that the data files and the transfer file carry. The
// milliseconds are not part of it.
double ToSerialDate(const LocalDateTime& t);
// Back to a date and time, rounded to the nearest second.
LocalDateTime FromSerialDate(double serial);

// Adds seconds to a serial date.
double AddSeconds(double serial, double seconds);

// Date and time texts of the formats the program writes:
//   "yyyy-mm-dd", "yyyy/mm/dd", "hh:mm:ss", "hh:mm", "dd/mmm/yy" (month as "Jan").
// "hh:mm:ss.ss" repeats the seconds after the point: readers of the single-line
// file are used to it.
std::string FormatDate(const LocalDateTime& t, std::string_view pattern);

}  // namespace nbx
