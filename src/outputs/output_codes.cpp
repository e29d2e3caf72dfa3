#include "outputs/output_codes.h"

#include "core/nimbometer.h"
#include "core/status.h"

namespace nbx {

const std::vector<OutputCode>& OutputCodeLegend() {
  static const std::vector<OutputCode> legend = {
      {"c51", "c51 - CCDAutopilot Data File - open/write error"},
      {"d11", "d11 - USER Data File Path does not exist"},
      {"d12", "d12 - USER Data File Path could not be created"},
      {"d13", "d13 - USER Data cannot be written to data file"},
      {"f51", "f51 - UNSAFE script file does not exist"},
      {"f52", "f52 - SAFE script file does not exist"},
      {"i21", "i21 - Image File Path does not exist"},
      {"i22", "i22 - Image File Path could not be created"},
      {"i23", "i23 - Image Files cannot be created"},
      {"i24", "i24 - Image Files FreeImage problem"},
      {"r31", "r31 - COMM Data File - open/read error"},
      {"w41", "w41 - COMM Data File - open/write error"},
      {"w42", "w42 - COMM Data too old"},
  };
  return legend;
}

std::string OutputCodeText(std::string_view code) {
  for (const OutputCode& entry : OutputCodeLegend())
    if (code == entry.code) return entry.text;
  return {};
}

void ShowOutputCode(Nimbometer& nm, std::string_view code) {
  SetStatusCode(nm.display, code, colours::Red);
}

}  // namespace nbx
