#pragma once

#include <cstdint>
#include <string_view>

namespace nbx {

// The two safety options of the object for hosts that script it: the
// interface identifiers come as their GUID texts.
class ObjectSafety {
 public:
  static constexpr std::int32_t SafeForScripting = 1;  // untrusted callers
  static constexpr std::int32_t SafeForData = 2;       // untrusted data
  static constexpr std::int32_t Supported = SafeForScripting | SafeForData;

  // The enabled option for `riid`, or false when the interface is not one
  // of the object's (the interface-not-supported failure).
  bool GetInterfaceSafetyOptions(std::string_view riid, std::int32_t& supported, std::int32_t& enabled) const;
  // Records the mode of the riid's group; false for another interface or
  // for an option outside the group's.
  bool SetInterfaceSafetyOptions(std::string_view riid, std::int32_t optionsSetMask,
                                 std::int32_t enabledOptions);

 private:
  bool safeForScripting_ = false;
  bool safeForData_ = false;
};

// The interface-not-supported failure as its result code.
inline constexpr std::uint32_t E_NOINTERFACE_Code = 0x80004002u;

}  // namespace nbx
