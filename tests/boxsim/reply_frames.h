#pragma once

#include <string>
#include <string_view>
#include <vector>

// A reply cut into its 15-byte frames; a ragged tail is kept as the last piece
// so that a test sees it.
inline std::vector<std::string> FramesOf(std::string_view reply) {
  std::vector<std::string> frames;
  for (std::size_t at = 0; at < reply.size(); at += 15) frames.emplace_back(reply.substr(at, 15));
  return frames;
}

// The data field of a frame, blanks trimmed.
inline std::string DataOf(std::string_view frame) {
  std::string data(frame.substr(3));
  while (!data.empty() && data.back() == ' ') data.pop_back();
  return data;
}
