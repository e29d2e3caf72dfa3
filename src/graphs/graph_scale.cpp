#include "graphs/graph_scale.h"

#include <algorithm>
#include <cmath>

#include "core/number_format.h"
#include "core/serial_date.h"

namespace nbx {
namespace {

constexpr double kSecondsPerDay = 86400;
// Serial dates near today carry about a microsecond of noise; a step or a
// tick that misses its mark by less than a millisecond is on it.
constexpr double kTimeNoiseSeconds = 1e-3;

}  // namespace

double FarLimitCloud(const Config& c) {
  return c.CloudLimit[0] - (c.UnitTempStr == "F" ? 27 : 15);
}

BandLimits BandLimitsFor(const Config& c, GraphKind kind) {
  switch (kind) {
    case GraphKind::Cloud:
      return {FarLimitCloud(c), c.CloudLimit[0], c.CloudLimit[1], c.CloudLimit[2]};
    case GraphKind::Rain:
      return {c.RainLimit[0] * 1.1, c.RainLimit[0], c.RainLimit[1], c.RainLimit[2]};
    case GraphKind::Day:
      return {c.DayLimit[0] * 3, c.DayLimit[0], c.DayLimit[1], c.DayLimit[2]};
    case GraphKind::Wind:
      return {0, c.WindLimit[0], c.WindLimit[1], c.WindLimit[1] * 4};
    case GraphKind::Humidity:
      return {c.HumidityLimit[2], c.HumidityLimit[1], c.HumidityLimit[0], 0};
    case GraphKind::Pressure:
      return {c.PressureLimit[2], c.PressureLimit[1], c.PressureLimit[0], c.PressureLimit[0] / 2};
    case GraphKind::Temp:
      break;
  }
  return {};
}

const std::array<Swatch, 3>& BandSwatches(const Config& c, GraphKind kind) {
  switch (kind) {
    case GraphKind::Rain:
      return c.ColorRain;
    case GraphKind::Wind:
      return c.ColorWind;
    case GraphKind::Day:
      return c.ColorDay;
    case GraphKind::Humidity:
      return c.ColorHumidity;
    case GraphKind::Pressure:
      return c.ColorPressure;
    case GraphKind::Cloud:
    case GraphKind::Temp:
      break;
  }
  return c.ColorCloud;
}

const char* GraphTag(GraphKind kind) {
  static const char* const kTags[] = {"Cloud", "Rain", "Wind", "Day", "Temp", "Humidity", "Pressure"};
  return kTags[static_cast<int>(kind)];
}

bool RisesIntoWorseClass(GraphKind kind) { return kind == GraphKind::Cloud || kind == GraphKind::Wind; }

int BandAtRow(GraphKind kind, int row) {
  return kind == GraphKind::Humidity || kind == GraphKind::Pressure ? 2 - row : row;
}

BandPosition MapBandValue(bool risesIntoWorse, const BandLimits& l, double value, double top,
                          double bottom) {
  const double third = (bottom - top) / 3;
  // Within band b between the limits `from` (its upper edge) and `to` (its lower edge).
  auto inBand = [&](int b, double from, double to) {
    return BandPosition{b, top + third * (b + 1) - third * std::abs((value - to) / (to - from))};
  };
  if (risesIntoWorse) {
    if (value < l.Far) return {-1, top + 1};
    if (value < l.L0) return inBand(0, l.Far, l.L0);
    if (value < l.L1) return inBand(1, l.L0, l.L1);
    if (value < l.L2) return inBand(2, l.L1, l.L2);
  } else {
    if (value >= l.Far) return {-1, top + 1};
    if (value >= l.L0) return inBand(0, l.Far, l.L0);
    if (value >= l.L1) return inBand(1, l.L0, l.L1);
    if (value >= l.L2) return inBand(2, l.L1, l.L2);
  }
  return {3, bottom - 1};
}

double MapTemperatureValue(double value, double min, double max, double top, double bottom) {
  // Tested in this order, every value of a scale whose ends are equal or
  // crossed lands on one of the two edges.
  if (value >= max) return top;
  if (value <= min) return bottom;
  if (!std::isfinite(value)) return bottom;
  return bottom - (value - min) / (max - min) * (bottom - top);
}

bool TimeRange::Usable() const {
  // Beyond some ten thousand years from the epoch a number is no date.
  constexpr double kFarthestDate = 1e7;
  return std::abs(T0) < kFarthestDate && std::abs(T1) < kFarthestDate &&
         (T1 - T0) * kSecondsPerDay > kTimeNoiseSeconds;
}

double TimeRange::X(double time, double left, double right) const {
  return left + (right - left) / (T1 - T0) * (time - T0);
}

TimeRange GraphTimeRange(double firstTime, double lastTime, double spanSeconds) {
  TimeRange range{firstTime, lastTime};
  const double spanDays = spanSeconds / 3600 / 24;
  if (spanDays >= range.T1 - range.T0) range.T1 = range.T0 + spanDays;
  return range;
}

TimeRange RingTimeRange(const GraphRing& ring, int first, int last, double spanSeconds) {
  const int upper = static_cast<int>(ring.size()) - 1;
  if (first < 1 || first > upper || last < 1 || last > upper) return {0, 0};
  return GraphTimeRange(ring[static_cast<std::size_t>(first)].Time,
                        ring[static_cast<std::size_t>(last)].Time, spanSeconds);
}

std::vector<TimeTick> TimeAxis(const TimeRange& range, double left, double right,
                               const std::function<int(std::string_view)>& textWidth) {
  std::vector<TimeTick> ticks;
  if (!range.Usable()) return ticks;
  const double width = range.T1 - range.T0;
  const double step = width / 12;
  const bool withSeconds = step * kSecondsPerDay < 600 - kTimeNoiseSeconds;
  const double end = width - kTimeNoiseSeconds / kSecondsPerDay;
  int nextLabelX = 0;
  for (int k = 1; k * step < end; ++k) {
    TimeTick tick;
    tick.x = ToPixel(left + (right - left) / width * (k * step));
    tick.label = FormatDate(FromSerialDate(range.T0 + k * step), withSeconds ? "hh:mm:ss" : "hh:mm");
    tick.labelWidth = textWidth(tick.label);
    tick.labelLeft = tick.x - tick.labelWidth / 2;
    if (tick.labelLeft >= nextLabelX) {
      tick.labelShown = true;
      nextLabelX = tick.labelLeft + tick.labelWidth + 10;
    }
    ticks.push_back(std::move(tick));
  }
  return ticks;
}

int ToPixel(double coordinate) {
  if (std::isnan(coordinate)) return 0;
  return static_cast<int>(RoundHalfEven(std::clamp(coordinate, -1e6, 1e6)));
}

}  // namespace nbx
