#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/config.h"
#include "core/site_state.h"

namespace nbx {

// The four values that split a band graph's vertical scale: the far end of
// the first band and the three class thresholds.
struct BandLimits {
  double Far = 0;
  double L0 = 0;
  double L1 = 0;
  double L2 = 0;
};

// The first row of the threshold table: 15 degrees below CloudLimit(0), or
// 27 in Fahrenheit, so that a clear sky has room above its threshold.
double FarLimitCloud(const Config& config);
// The threshold table of the six band graphs.
BandLimits BandLimitsFor(const Config& config, GraphKind kind);
// The three class swatches whose colours and words make the bands.
const std::array<Swatch, 3>& BandSwatches(const Config& config, GraphKind kind);
// The picture's Tag: "Cloud", "Rain", "Wind", "Day", "Temp", "Humidity", "Pressure".
const char* GraphTag(GraphKind kind);

// Cloud and wind rise into their worse classes (Far < L0 < L1 < L2); the
// other four fall into them (Far > L0 > L1 > L2).
bool RisesIntoWorseClass(GraphKind kind);
// The swatch whose colour fills band row i (0 at the top). Humidity and
// pressure stand upside down, with their highest class at the top.
int BandAtRow(GraphKind kind, int row);

// Where a value lies on a band graph: `band` 0..2 is the band row it falls in,
// -1 beyond Far (drawn at top + 1), 3 beyond L2 (drawn at bottom - 1).
struct BandPosition {
  int band = 0;
  double y = 0;
};
// The piecewise linear scale between the thresholds. A value only reaches a
// band whose two ends differ, so equal or crossed limits never divide by zero.
BandPosition MapBandValue(bool risesIntoWorse, const BandLimits& limits, double value, double top,
                          double bottom);
// The temperature graph's linear scale, held between top and bottom.
double MapTemperatureValue(double value, double min, double max, double top, double bottom);

// The time range of a graph, serial dates. A graph whose points span less
// than the full span keeps the full span, so that it fills from the left.
struct TimeRange {
  double T0 = 0;
  double T1 = 0;
  // False when there is no width of time to spread points over.
  bool Usable() const;
  // The x of a time between left and right.
  double X(double time, double left, double right) const;
};
TimeRange GraphTimeRange(double firstTime, double lastTime, double spanSeconds);
// The range of a ring, from the times of its points first and last; a ring
// without points has an unusable range.
TimeRange RingTimeRange(const GraphRing& ring, int first, int last, double spanSeconds);

// One tick of the time axis, and its label if there was room for it.
struct TimeTick {
  int x = 0;
  std::string label;
  bool labelShown = false;
  int labelLeft = 0;
  int labelWidth = 0;
};
// Twelve steps across the range; "hh:mm:ss" below a ten-minute step, else
// "hh:mm". A label whose left edge would fall before the end of the last
// shown one plus 10 pixels is dropped, never moved.
std::vector<TimeTick> TimeAxis(const TimeRange& range, double left, double right,
                               const std::function<int(std::string_view)>& textWidth);

// A coordinate made a whole pixel, held to a range that any picture can take.
int ToPixel(double coordinate);

}  // namespace nbx
