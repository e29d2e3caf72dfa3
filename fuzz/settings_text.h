#pragma once

#include <string>
#include <string_view>

#include "config/memory_settings.h"

namespace nbx::fuzz {

// The input of the settings-load fuzzer: a store as lines of
// "Section/Key=text". A first line of a lone "," makes the comma the
// machine's decimal separator. Lines without "/" or "=" are skipped; the
// text runs to the end of the line and may hold any byte.
struct StoreText {
  MemorySettings store;
  char decimalSeparator = '.';
};

inline StoreText ReadStoreText(std::string_view input) {
  StoreText out;
  bool first = true;
  while (!input.empty()) {
    const std::size_t end = input.find('\n');
    const std::string_view line = input.substr(0, end);
    input = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
    if (first && line == ",") out.decimalSeparator = ',';
    first = false;
    const std::size_t slash = line.find('/');
    const std::size_t equals = line.find('=');
    if (slash == std::string_view::npos || equals == std::string_view::npos || equals < slash)
      continue;
    out.store.values[{std::string(line.substr(0, slash)),
                      std::string(line.substr(slash + 1, equals - slash - 1))}] =
        std::string(line.substr(equals + 1));
  }
  return out;
}

}  // namespace nbx::fuzz
