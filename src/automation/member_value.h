#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace nbx {

// The types of the automation members as clients know them: Boolean, Integer
// (16 bits), Long (32 bits), Double, Text, the history arrays and the window
// object. A MemberValue holds the alternative of the same position.
enum class ValueType { Boolean, Integer, Long, Double, Text, HistoryArray, Object };

// A history buffer as clients receive it: three rows of equal length; row 0
// is not used, row 1 holds the times as serial dates and row 2 the values,
// and column 0 of each row is not used either.
using HistoryArray = std::vector<std::vector<double>>;

// An object of this program that a member hands out, by its path.
struct ObjectPath {
  std::string path;
  bool operator==(const ObjectPath&) const = default;
};

using MemberValue =
    std::variant<bool, std::int16_t, std::int32_t, double, std::string, HistoryArray, ObjectPath>;

inline bool HoldsType(const MemberValue& value, ValueType type) {
  return value.index() == static_cast<std::size_t>(type);
}

}  // namespace nbx
