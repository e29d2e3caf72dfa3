#include "safety/limit_order.h"

#include <array>

#include "core/config.h"
#include "core/number_format.h"
#include "core/text.h"
#include "safety/families.h"

namespace nbx {
namespace {

constexpr const char* GreaterOrEqual = " value CANNOT be greater or equal than ";
constexpr const char* SmallerOrEqual = " value CANNOT be smaller or equal than ";
constexpr const char* Smaller = " value CANNOT be smaller than ";
constexpr const char* Greater = " value CANNOT be greater than ";

// One row of the order: editing `edited` breaks it when limit `low` <= limit
// `high`; the message names class `first`, the phrase and class `second`.
struct OrderRule {
  Family family;
  int edited;
  int low, high;
  int first;
  const char* phrase;
  int second;
};

constexpr std::array<OrderRule, 16> Rules{{
    {Family::Cloud, 0, 1, 0, 0, GreaterOrEqual, 1},
    {Family::Cloud, 1, 1, 0, 1, Smaller, 0},
    {Family::Day, 0, 0, 1, 0, SmallerOrEqual, 1},
    {Family::Day, 0, 0, 2, 0, SmallerOrEqual, 2},
    {Family::Day, 1, 0, 1, 0, GreaterOrEqual, 1},
    {Family::Day, 1, 1, 2, 1, SmallerOrEqual, 2},
    {Family::Rain, 0, 0, 1, 0, SmallerOrEqual, 1},
    {Family::Rain, 0, 0, 2, 0, SmallerOrEqual, 2},
    {Family::Rain, 1, 0, 1, 0, GreaterOrEqual, 1},
    {Family::Rain, 1, 1, 2, 1, SmallerOrEqual, 2},
    {Family::Wind, 0, 1, 0, 0, GreaterOrEqual, 1},
    {Family::Wind, 0, 2, 0, 0, GreaterOrEqual, 2},
    {Family::Wind, 1, 1, 0, 1, Smaller, 0},
    {Family::Wind, 1, 2, 1, 1, Greater, 2},
    {Family::Wind, 2, 2, 0, 2, Smaller, 0},
    {Family::Wind, 2, 2, 1, 2, Smaller, 1},
}};

// A number as the window writes it into a text: no needless decimals.
std::string PlainNumber(double value, char decimalSeparator) {
  return FormatNumber(value, "0.##############", decimalSeparator);
}

}  // namespace

std::string LimitOrderBreach(const Config& config, Family family, int index, double value,
                             char decimalSeparator) {
  if (index < 0 || index > 2) return {};
  std::array<double, 3> limits = LimitsOf(config, family);
  limits[Slot(index)] = value;
  const std::array<Swatch, 3>& swatches = SwatchesOf(config, family);
  auto caption = [&](int i) { return ToUpperAscii(swatches[Slot(i)].Caption); };

  // The brightest reading that still has a class must stay below the Unknown one.
  if (family == Family::Day && index == 0 && config.UnknownDayGT <= limits[0])
    return caption(0) + GreaterOrEqual + "'Unknown Condition' value (ie. " +
           PlainNumber(config.UnknownDayGT, decimalSeparator) + ")";
  for (const OrderRule& rule : Rules) {
    if (rule.family != family || rule.edited != index) continue;
    if (limits[Slot(rule.low)] <= limits[Slot(rule.high)])
      return caption(rule.first) + rule.phrase + caption(rule.second) + " value";
  }
  return {};
}

}  // namespace nbx
