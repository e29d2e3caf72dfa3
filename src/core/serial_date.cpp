#include "core/serial_date.h"

#include <cmath>
#include <cstdio>

namespace nbx {
namespace {

// Days from 1970-01-01 of a civil date (proleptic Gregorian).
long long DaysFromCivil(long long y, unsigned m, unsigned d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long long>(doe) - 719468;
}

void CivilFromDays(long long z, int& y, int& m, int& d) {
  z += 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long yy = static_cast<long long>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(yy + (m <= 2));
}

const long long kEpochOffset = DaysFromCivil(1899, 12, 30);

std::string Two(int v) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%02d", v);
  return buf;
}

}  // namespace

double ToSerialDate(const LocalDateTime& t) {
  const long long days = DaysFromCivil(t.year, static_cast<unsigned>(t.month),
                                       static_cast<unsigned>(t.day)) -
                         kEpochOffset;
  const double seconds = t.hour * 3600.0 + t.minute * 60.0 + t.second;
  return static_cast<double>(days) + seconds / 86400.0;
}

LocalDateTime FromSerialDate(double serial) {
  if (!std::isfinite(serial)) return {};
  long long totalSeconds = std::llround(serial * 86400.0);
  long long days = totalSeconds / 86400;
  long long rest = totalSeconds % 86400;
  if (rest < 0) {
    rest += 86400;
    --days;
  }
  LocalDateTime t;
  CivilFromDays(days + kEpochOffset, t.year, t.month, t.day);
  t.hour = static_cast<int>(rest / 3600);
  t.minute = static_cast<int>(rest / 60 % 60);
  t.second = static_cast<int>(rest % 60);
  return t;
}

double AddSeconds(double serial, double seconds) { return serial + seconds / 86400.0; }

std::string FormatDate(const LocalDateTime& t, std::string_view pattern) {
  static const char* const kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::string year = std::to_string(t.year);
  if (pattern == "yyyy-mm-dd") return year + "-" + Two(t.month) + "-" + Two(t.day);
  if (pattern == "yyyy/mm/dd") return year + "/" + Two(t.month) + "/" + Two(t.day);
  if (pattern == "hh:mm:ss") return Two(t.hour) + ":" + Two(t.minute) + ":" + Two(t.second);
  if (pattern == "hh:mm:ss.ss")
    return Two(t.hour) + ":" + Two(t.minute) + ":" + Two(t.second) + "." + Two(t.second);
  if (pattern == "hh:mm") return Two(t.hour) + ":" + Two(t.minute);
  if (pattern == "yyyy/mm/dd hh:mm:ss")
    return FormatDate(t, "yyyy/mm/dd") + " " + FormatDate(t, "hh:mm:ss");
  if (pattern == "dd/mmm/yy") {
    const int m = t.month >= 1 && t.month <= 12 ? t.month : 1;
    return Two(t.day) + "/" + kMonths[m - 1] + "/" + Two(t.year % 100);
  }
  return {};
}

}  // namespace nbx
