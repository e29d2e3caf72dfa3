#pragma once

#include <vector>

#include "sensors/sky_correction.h"

namespace nbx {

// The arithmetic behind the sky-factor dialog, without the drawing.

// The dialog's own limits on what may be typed: K4 at most 100, K5 at most
// 150. The main window's fields (and the automation object) are not clamped.
SkyCoefficients ClampFactorDialog(SkyCoefficients k);

// The two curves of the dialog's graph: the model with the edited
// coefficients and with the ones the dialog was opened with, at whole degrees
// Celsius from -25 upward.
struct FactorGraph {
  bool formulaError = false;  // the arithmetic failed: no curves, only the message
  std::vector<double> ambient;
  std::vector<double> edited;
  std::vector<double> reference;
  double tempMin = 0, tempMax = 0;  // ends of the ambient axis
  double yMin = 0, yMax = 0;        // vertical scale: the extremes rounded outward to multiples of 5
};

inline constexpr const char* FormulaErrorText = "Formula Error with these coefficients";

FactorGraph ComputeFactorGraph(const SkyCoefficients& edited, const SkyCoefficients& reference);

}  // namespace nbx
