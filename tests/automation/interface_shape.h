#pragma once

#include <QString>
#include <map>
#include <string>
#include <vector>

namespace nbx::test {

// What an introspection text says of one interface: a line per member
// ("property Safe b read", "method NBX_LocalControl in b flg, in s sLabel")
// and the property types by name.
struct InterfaceShape {
  std::vector<std::string> members;
  std::map<std::string, std::string> propertyTypes;
};

// The interfaces of a description, by "node path|interface name"; nested
// nodes are named from the root node's own name (a description from the bus
// has none: `root` is its path).
std::map<std::string, InterfaceShape> ReadShapes(const QString& xml, const std::string& root);

}  // namespace nbx::test
