#pragma once

#include <optional>
#include <string>

#include "boxsim/box.h"
#include "boxsim/reply_pacer.h"

namespace nbx::boxsim {

// A box on a pseudo-terminal: the host opens SlavePath() as its serial port.
// Nothing here blocks, so one thread can serve the box beside other work: poll
// MasterFd() for input while WantsInput(), call Service() when it is readable
// or NextWakeSeconds() has come.
class BoxPort {
 public:
  explicit BoxPort(Box& box) : box_(box) {}
  ~BoxPort() { Close(); }
  BoxPort(const BoxPort&) = delete;
  BoxPort& operator=(const BoxPort&) = delete;

  // A new pseudo-terminal with its slave set to raw mode once; the slave is
  // closed again, so that the host is its only reader.
  bool Open(std::string& why);
  // The port is gone: the host's open slave sees a hang-up.
  void Close();
  bool IsOpen() const { return master_ >= 0; }
  int MasterFd() const { return master_; }
  const std::string& SlavePath() const { return slavePath_; }

  // False while resting after finding no host on the other side.
  bool WantsInput(double nowSeconds) const { return IsOpen() && nowSeconds >= restUntil_; }
  // Reads and answers what the host wrote, then writes what is due.
  void Service(double nowSeconds);
  std::optional<double> NextWakeSeconds(double nowSeconds) const;

 private:
  void ReadAndAnswer(double nowSeconds);
  void WriteDue(double nowSeconds);

  Box& box_;
  ReplyPacer pacer_;
  int master_ = -1;
  std::string slavePath_;
  double restUntil_ = 0;
};

}  // namespace nbx::boxsim
