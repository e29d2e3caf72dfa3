#pragma once

#include <optional>
#include <vector>

namespace nbx {

// One of the box's sample arrays: elements 1..N, filled by frames in the order
// they come, with a fill counter that the cycle start sets to 0. The elements
// themselves are not cleared: a slot that no frame refills keeps the value of
// an earlier cycle, and counts in the mean like any other.
struct SampleArray {
  std::vector<double> values;  // element i of the box's numbering is values[i - 1]
  int count = 0;

  void Resize(int n) { values.assign(static_cast<std::size_t>(n > 0 ? n : 0), 0.0); count = 0; }
  // Stores the value at the next index; past the upper bound it is dropped.
  // A damaged number still takes its index; the slot keeps its old value.
  void Add(std::optional<double> value) {
    ++count;
    if (value && count <= static_cast<int>(values.size())) values[static_cast<std::size_t>(count - 1)] = *value;
  }
  void Fill(double value) { values.assign(values.size(), value); }
};

// The clipped mean of all elements: the mean of those within sigma x `sigmaWidth`
// of the mean (both ends included), or 999999 when none is left.
double SampleAverage(const std::vector<double>& samples, double sigmaWidth);

}  // namespace nbx
