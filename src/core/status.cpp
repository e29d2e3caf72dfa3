#include "core/status.h"

namespace nbx {

void SetStatusMain(Display& display, std::string_view text, Colour colour) {
  display.StatusBar.ForeColor = colour;
  display.StatusBar.Caption = std::string(text.substr(0, 60));
}

void SetStatusCode(Display& display, std::string_view text, Colour colour) {
  display.StatusBar2.ForeColor = colour;
  display.StatusBar2.Caption = std::string(text);
}

void SetCycleLED(Display& display, Colour colour) {
  Lamp& first = display.LEDSensor[0];
  Lamp& second = display.LEDSensor[1];
  if (first.FillColor == colours::LampGrey) {
    first.FillColor = colour;
    second.FillColor = colours::LampGrey;
  } else {
    first.FillColor = colours::LampGrey;
    second.FillColor = colour;
  }
}

}  // namespace nbx
