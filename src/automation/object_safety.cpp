#include "automation/object_safety.h"

#include <string>

namespace nbx {
namespace {

enum class Group { None, Dispatch, Persist };

// The GUID text without its braces, in upper case, so that "{00020400-...}"
// and "00020400-..." in any case name the same interface.
std::string Canonical(std::string_view riid) {
  if (riid.size() >= 2 && riid.front() == '{' && riid.back() == '}') riid = riid.substr(1, riid.size() - 2);
  std::string text(riid);
  for (char& c : text)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return text;
}

Group GroupOf(std::string_view riid) {
  const std::string id = Canonical(riid);
  if (id == "00020400-0000-0000-C000-000000000046") return Group::Dispatch;  // IDispatch
  if (id == "0000010A-0000-0000-C000-000000000046" ||                        // IPersistStorage
      id == "00000109-0000-0000-C000-000000000046" ||                        // IPersistStream
      id == "37D84F60-42CB-11CE-8135-00AA004BB851")                          // IPersistPropertyBag
    return Group::Persist;
  return Group::None;
}

}  // namespace

bool ObjectSafety::GetInterfaceSafetyOptions(std::string_view riid, std::int32_t& supported,
                                             std::int32_t& enabled) const {
  supported = Supported;
  switch (GroupOf(riid)) {
    case Group::Dispatch:
      enabled = safeForScripting_ ? SafeForScripting : 0;
      return true;
    case Group::Persist:
      enabled = safeForData_ ? SafeForData : 0;
      return true;
    case Group::None:
      break;
  }
  return false;
}

bool ObjectSafety::SetInterfaceSafetyOptions(std::string_view riid, std::int32_t optionsSetMask,
                                             std::int32_t enabledOptions) {
  const Group group = GroupOf(riid);
  if (group == Group::None) return false;
  const std::int32_t option = group == Group::Dispatch ? SafeForScripting : SafeForData;
  if ((optionsSetMask & ~option) != 0) return false;
  if ((optionsSetMask & option) == 0) return true;
  bool& mode = group == Group::Dispatch ? safeForScripting_ : safeForData_;
  mode = (enabledOptions & option) != 0;
  return true;
}

}  // namespace nbx
