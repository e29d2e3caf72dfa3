#pragma once

#include <string>

namespace nbx::alpaca {

// The error numbers ASCOM clients know, carried in the JSON body of an
// answer whose HTTP status is 200.
enum AscomError : int {
  NoError = 0,
  NotImplemented = 0x400,
  InvalidValue = 0x401,
  NotConnected = 0x407,
  InvalidOperation = 0x40B,
  ActionNotImplemented = 0x40C,
};

// A device member's number, or the error that stands in its place.
struct NumberAnswer {
  double value = 0;
  int errorNumber = NoError;
  std::string errorMessage;
};

}  // namespace nbx::alpaca
