#pragma once

#include <QVariant>
#include <optional>

#include "automation/member_value.h"

namespace nbx {

// Registers the bus type of the history arrays (aad); once, before the
// first value is sent.
void RegisterBusTypes();

// A member's value as the bus sends it.
QVariant ToBus(const MemberValue& value);

// A value from the bus for a member of type `type`, or none when it cannot
// stand for one. Numbers are taken as a client's language would assign
// them: any integer or finite number for a Double, an integer in range or a
// whole-rounded number for Integer and Long, an integer for a Boolean
// (non-zero is true). A text is only a text.
std::optional<MemberValue> FromBus(const QVariant& value, ValueType type);

}  // namespace nbx
