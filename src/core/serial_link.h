#pragma once

#include <string>
#include <string_view>

namespace nbx {

// The serial line to the box. The owner of the link calls OnComm (wire
// protocol) whenever bytes have arrived; they wait in the link until ReadAll.
class SerialLink {
 public:
  virtual ~SerialLink() = default;
  // Opens `device` with line settings such as "9600,n,8,1" and no flow
  // control. On failure fills `errorText` with the platform's reason.
  virtual bool Open(const std::string& device, const std::string& lineSettings,
                    std::string& errorText) = 0;
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  // Writes without waiting; false when the port cannot take the bytes (it
  // has vanished, or was never open).
  virtual bool Write(std::string_view bytes) = 0;
  // All the bytes received and not yet read.
  virtual std::string ReadAll() = 0;
};

}  // namespace nbx
