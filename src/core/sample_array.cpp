#include "core/sample_array.h"

#include <algorithm>
#include <cmath>

namespace nbx {

double SampleAverage(const std::vector<double>& samples, double sigmaWidth) {
  const double n = static_cast<double>(samples.size());
  if (samples.empty()) return 999999.0;
  double sum = 0, sumSquares = 0;
  for (double v : samples) {
    sum += v;
    sumSquares += v * v;
  }
  double sigma = 0;
  if (samples.size() > 1) {
    const double variance = (n * sumSquares - sum * sum) / (n * (n - 1));
    // Rounding can leave a tiny negative variance for equal samples.
    sigma = variance > 0 ? std::sqrt(variance) : 0.0;
  }
  const double mean = sum / n;
  // A hair of slack so that equal samples, whose mean may come out one unit in
  // the last place away from them, are all kept.
  const double slack = 1e-12 * std::max(1.0, std::fabs(mean));
  const double high = mean + sigma * sigmaWidth + slack;
  const double low = mean - sigma * sigmaWidth - slack;
  double keptSum = 0;
  int kept = 0;
  for (double v : samples) {
    if (v >= low && v <= high) {
      keptSum += v;
      ++kept;
    }
  }
  return kept == 0 ? 999999.0 : keptSum / kept;
}

}  // namespace nbx
