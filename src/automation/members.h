#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/member_value.h"

namespace nbx {
class Automation;

// What a member does with the client lamp before it runs: blinks it, blinks
// it and measures the client's polling period, or leaves it alone.
enum class Blink { Plain, Timed, Silent };

// Why a call was refused; the bus turns each into an error reply.
enum class Failure {
  None,
  UnknownInterface,
  UnknownMember,
  ReadOnly,
  InvalidArgs,
  NotAttached,
  NoInterface,  // the interface-not-supported failure of the safety options
};

// What a member gives back: its results, or the failure and its text.
struct Outcome {
  std::vector<MemberValue> results;
  Failure failure = Failure::None;
  std::string message;

  static Outcome Value(MemberValue value) { return {{std::move(value)}, Failure::None, {}}; }
  static Outcome Refused(Failure failure, std::string message) { return {{}, failure, std::move(message)}; }
  bool Ok() const { return failure == Failure::None; }
};

// A Get or Get/Let member.
struct Property {
  std::string name;
  ValueType type;
  Blink blink;
  std::function<MemberValue(Automation&)> get;
  std::function<void(Automation&, const MemberValue&)> let;  // empty: read only

  bool Writable() const { return static_cast<bool>(let); }
};

struct Argument {
  std::string name;
  ValueType type;
};

// A call of a method: its arguments, already of the declared types, and the
// bus name of the client that made it.
struct MethodCall {
  const std::vector<MemberValue>& args;
  const std::string& caller;
};

// A Sub, or a member that takes arguments.
struct Method {
  std::string name;
  std::vector<Argument> in;
  std::vector<Argument> out;
  Blink blink;
  std::function<Outcome(Automation&, const MethodCall&)> call;
};

struct Annotation {
  std::string name;
  std::string value;
};

// The members of one interface, in the order clients see them.
struct Interface {
  std::string name;
  std::vector<Property> properties;
  std::vector<Method> methods;
  std::vector<Annotation> annotations;

  const Property* FindProperty(std::string_view member) const;
  const Method* FindMethod(std::string_view member) const;
};

inline constexpr const char* NimbometerInterfaceName = "NBX_Nimbometer.Nimbometer";
inline constexpr const char* FormInterfaceName = "NBX_Nimbometer.NBXNimbometerForm";
inline constexpr const char* NimbometerObjectPath = "/Nimbometer";
inline constexpr const char* FormObjectPath = "/Nimbometer/Form";

// The public class Nimbometer: every member with its exact name.
const Interface& NimbometerInterface();
// The main window's public variables, read only: the record of the site.
const Interface& FormInterface();

}  // namespace nbx
