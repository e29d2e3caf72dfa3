#pragma once

#include <string>
#include <vector>

#include "core/serial_link.h"

namespace nbx::test {

// A serial line whose received bytes the test puts there by hand, and which
// keeps what the program wrote.
class FakeLink : public SerialLink {
 public:
  bool Open(const std::string&, const std::string&, std::string& errorText) override {
    if (!openable) {
      errorText = "Permission denied";
      return false;
    }
    open = true;
    return true;
  }
  void Close() override { open = false; }
  bool IsOpen() const override { return open; }
  bool Write(std::string_view bytes) override {
    if (!open) return false;
    written.emplace_back(bytes);
    return true;
  }
  std::string ReadAll() override {
    std::string out;
    out.swap(pending);
    return out;
  }

  bool open = false;
  bool openable = true;
  std::string pending;               // bytes waiting to be read
  std::vector<std::string> written;  // each write, "!" included
};

}  // namespace nbx::test
