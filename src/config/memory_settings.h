#pragma once

#include <map>
#include <string>
#include <utility>

#include "config/settings.h"

namespace nbx {

// A settings store held in memory: what a test or a tool fills by hand.
class MemorySettings : public Settings {
 public:
  using Address = std::pair<std::string, std::string>;  // section, key

  std::string Get(std::string_view section, std::string_view key,
                  std::string_view defaultText) override {
    const auto found = values.find(Address(section, key));
    return found == values.end() ? std::string(defaultText) : found->second;
  }
  void Save(std::string_view section, std::string_view key, std::string_view text) override {
    values[Address(section, key)] = std::string(text);
  }

  bool Has(std::string_view section, std::string_view key) const {
    return values.count(Address(section, key)) != 0;
  }

  std::map<Address, std::string> values;
};

}  // namespace nbx
