#include "boxsim/frames.h"

#include <cmath>
#include <cstdio>

namespace nbx::boxsim {

std::string Frame(char type, std::string_view data, char subType) {
  std::string frame;
  frame.reserve(FrameLength);
  frame += '!';
  frame += type;
  frame += subType;
  frame += data.substr(0, DataLength);
  frame.resize(FrameLength, ' ');
  return frame;
}

std::string EndOfReplyFrame() { return Frame(EndOfReplyType, ""); }

std::string SerialFrame(std::string_view serial) {
  std::string frame = "!K";
  frame += serial.substr(0, 4);
  frame.resize(FrameLength, ' ');
  return frame;
}

std::string NumberText(double value) {
  if (!std::isfinite(value)) return "0";
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.4f", value);
  std::string text = buffer;
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  if (text == "-0") text = "0";
  return text;
}

std::string DamagedNumberText(std::string_view text) {
  std::string damaged(text);
  if (damaged.size() < 2) return "x";
  damaged[damaged.size() - 2] = 'x';
  return damaged;
}

}  // namespace nbx::boxsim
