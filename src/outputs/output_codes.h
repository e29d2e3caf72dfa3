#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nbx {
struct Nimbometer;

// The short codes that a failing output puts in the second status line, so
// that an unattended site never stops at a message box. The user looks them
// up in the "Warnings" window.
struct OutputCode {
  const char* code;
  const char* text;
};

// The whole legend, in the order the "Warnings" window lists it.
const std::vector<OutputCode>& OutputCodeLegend();
// The legend line of a code ("w41 - COMM Data File - open/write error"), or
// "" for a code it does not know.
std::string OutputCodeText(std::string_view code);

// Shows the code in red in the second status line, in place of what was there.
void ShowOutputCode(Nimbometer& nm, std::string_view code);

}  // namespace nbx
