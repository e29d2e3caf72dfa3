#pragma once

#include <functional>
#include <string>

#include "boxsim/box.h"
#include "core/serial_link.h"
#include "support/virtual_time.h"

namespace nbx::test {

// A serial line to the simulated box inside the test process, on virtual
// time: what the program writes reaches the box, and the box's reply arrives
// later as events, paced as the box's delivery settings say.
class InProcessLink : public SerialLink {
 public:
  InProcessLink(VirtualTime& time, boxsim::Box& box) : time_(time), box_(box) {}

  bool Open(const std::string& device, const std::string& lineSettings,
            std::string& errorText) override;
  void Close() override;
  bool IsOpen() const override { return open_; }
  bool Write(std::string_view bytes) override;
  std::string ReadAll() override;

  // Called when bytes have arrived (the program's receive handler).
  std::function<void()> onReceive;
  // The adapter is unplugged: the port closes and cannot be opened.
  void Unplug();
  void PlugIn() { present_ = true; }

 private:
  void Deliver(std::string bytes, std::uint64_t session);

  VirtualTime& time_;
  boxsim::Box& box_;
  bool open_ = false;
  bool present_ = true;
  std::uint64_t session_ = 0;
  std::int64_t lineFreeAtMs_ = 0;
  std::string input_;
};

}  // namespace nbx::test
