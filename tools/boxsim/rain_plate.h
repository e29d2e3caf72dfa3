#pragma once

namespace nbx::boxsim {

// The rain sensor's plate as its heater and the weather warm and cool it: the
// temperature approaches a steady value, which is the air temperature plus a
// rise in proportion to the heater duty, less what the water on a wet plate
// takes away. A first-order lag with one time constant.
struct RainPlate {
  bool modelled = false;      // off: the plate's counts hold still
  double celsius = 10;        // the plate now
  double airCelsius = 10;     // the air around it
  double fullRise = 20;       // degrees above the air at full duty, once settled
  double timeConstant = 60;   // seconds to cover 63 % of the way to the steady value
  bool wet = false;
  double wetDrop = 3;         // degrees a wet plate stays below a dry one

  // The temperature the plate settles at with the heater at `duty` (0..1023).
  double SteadyCelsius(int duty) const;
  // `seconds` later, with the heater at `duty` all the while.
  void Advance(double seconds, int duty);
};

}  // namespace nbx::boxsim
