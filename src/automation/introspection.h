#pragma once

#include <string>
#include <string_view>

#include "automation/members.h"

namespace nbx {

// The bus signature of a member type: b, n, i, d, s, aad, o.
std::string_view Signature(ValueType type);

// One interface as the bus describes it, each line indented by `indent`
// spaces: its annotations, properties, then methods, in table order.
std::string InterfaceXml(const Interface& face, int indent);

// The description of /Nimbometer and its child Form, as the bus gives it
// without the standard interfaces.
std::string IntrospectionDocument();

}  // namespace nbx
