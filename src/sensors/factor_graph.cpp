#include "sensors/factor_graph.h"

#include <algorithm>
#include <cmath>

namespace nbx {
namespace {

constexpr int LowestAmbient = -25;
constexpr int HighestAmbient = 40;

}  // namespace

SkyCoefficients ClampFactorDialog(SkyCoefficients k) {
  k.K4 = std::min(k.K4, 100.0);
  k.K5 = std::min(k.K5, 150.0);
  return k;
}

FactorGraph ComputeFactorGraph(const SkyCoefficients& edited, const SkyCoefficients& reference) {
  FactorGraph g;
  g.tempMin = LowestAmbient;
  g.tempMax = HighestAmbient;
  for (int t = LowestAmbient; t <= HighestAmbient; ++t) {
    const double a = SkyModelCelsius(edited, t);
    const double b = SkyModelCelsius(reference, t);
    if (!std::isfinite(a) || !std::isfinite(b)) return FactorGraph{true, {}, {}, {}, g.tempMin, g.tempMax, 0, 0};
    g.ambient.push_back(t);
    g.edited.push_back(a);
    g.reference.push_back(b);
  }
  const auto [lowA, highA] = std::minmax_element(g.edited.begin(), g.edited.end());
  const auto [lowB, highB] = std::minmax_element(g.reference.begin(), g.reference.end());
  g.yMin = std::floor(std::min(*lowA, *lowB) / 5) * 5;
  g.yMax = std::ceil(std::max(*highA, *highB) / 5) * 5;
  return g;
}

}  // namespace nbx
