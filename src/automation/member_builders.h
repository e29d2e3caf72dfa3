#pragma once

// The shapes that members of the tables take, so that each table line reads
// as its name, its type and the field or control it reaches.

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "automation/automation.h"
#include "automation/members.h"
#include "editing/config_editor.h"
#include "core/nimbometer.h"

namespace nbx::members {

// A read-only member over the station's records.
template <typename Read>
Property Reading(std::string name, ValueType type, Read read, Blink blink = Blink::Plain) {
  return {std::move(name),
          type,
          blink,
          [read](Automation& a) -> MemberValue { return read(static_cast<const Nimbometer&>(a.nm)); },
          {}};
}

// A read-write member over a control: read from the configuration, written
// through the control's change handling. `T` is the value's type as clients
// see it.
template <typename T, typename Read, typename Write>
Property ControlMember(std::string name, ValueType type, Read read, Write write, Blink blink = Blink::Plain) {
  return {std::move(name), type, blink,
          [read](Automation& a) -> MemberValue { return static_cast<T>(read(a.nm.config)); },
          [write](Automation& a, const MemberValue& v) {
            ConfigEditor editor(a.nm);
            write(editor, std::get<T>(v));
          }};
}

template <typename Read, typename Write>
Property DoubleControl(std::string name, Read read, Write write) {
  return ControlMember<double>(std::move(name), ValueType::Double, read, write);
}

template <typename Read, typename Write>
Property LongControl(std::string name, Read read, Write write) {
  return ControlMember<std::int32_t>(std::move(name), ValueType::Long, read, write);
}

template <typename Read, typename Write>
Property IntegerControl(std::string name, Read read, Write write) {
  return ControlMember<std::int16_t>(std::move(name), ValueType::Integer, read, write);
}

template <typename Read, typename Write>
Property TextControl(std::string name, Read read, Write write) {
  return ControlMember<std::string>(std::move(name), ValueType::Text, read, write);
}

// A Sub: runs and gives nothing back.
template <typename Run>
Method Sub(std::string name, std::vector<Argument> in, Run run, Blink blink = Blink::Plain) {
  return {std::move(name), std::move(in), {}, blink, [run](Automation& a, const MethodCall& call) {
            run(a, call.args);
            return Outcome{};
          }};
}

// A member with arguments that gives one value back.
template <typename Run>
Method Function(std::string name, std::vector<Argument> in, Argument out, Run run,
                Blink blink = Blink::Plain) {
  return {
      std::move(name), std::move(in), {std::move(out)}, blink, [run](Automation& a, const MethodCall& call) {
        return Outcome::Value(run(a, call.args));
      }};
}

inline bool BoolArg(const std::vector<MemberValue>& args, std::size_t i) { return std::get<bool>(args[i]); }
inline std::int32_t LongArg(const std::vector<MemberValue>& args, std::size_t i) {
  return std::get<std::int32_t>(args[i]);
}
inline const std::string& TextArg(const std::vector<MemberValue>& args, std::size_t i) {
  return std::get<std::string>(args[i]);
}

// Integer members hold the 0 or 1 of a check box.
inline std::int16_t CheckValue(std::int32_t value) { return static_cast<std::int16_t>(value); }

// The parts of the tables, in the order clients see them.
void AddSiteMembers(Interface& face);
void AddSettingMembers(Interface& face);
void AddGraphMembers(Interface& face);

}  // namespace nbx::members
