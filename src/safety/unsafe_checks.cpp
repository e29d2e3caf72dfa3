#include "safety/unsafe_checks.h"

#include "core/nimbometer.h"
#include "safety/families.h"

namespace nbx {

void ApplyCheckRule(Nimbometer& nm, Family family) {
  auto& checks = ChecksOf(nm.config, family);
  if (checks[1] == 1) checks[2] = 1;
}

void SetCheckColours(Nimbometer& nm, Family family) {
  const auto& checks = ChecksOf(nm.config, family);
  auto& backColours = UnsafeBlockOf(nm.display, family).CheckBackColor;
  for (std::size_t i = 0; i < 3; ++i)
    backColours[i] = checks[i] == 1 ? colours::Red : colours::SystemButtonFace;
}

}  // namespace nbx
