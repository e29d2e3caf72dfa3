#pragma once

#include <cstdint>
#include <string>

#include "boxsim/box.h"

namespace nbx::test {

// Random numbers from a seed, the same on every machine: the soak's weather
// and faults come again exactly with the same seed.
class Seeded {
 public:
  explicit Seeded(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next();
  double Uniform(double low, double high);
  int Between(int low, int high);  // both ends included
  bool Chance(double probability) { return Uniform(0, 1) < probability; }

 private:
  std::uint64_t state_;
};

enum class Sky { Clear, Cloudy, Overcast };
enum class Wetness { Dry, Wet, Raining };

// The sky and the rain plate of a stretch of the night, and the slow things
// that drift under them. Values keep well inside their class, whatever the
// ambient correction does within the soak's range of temperatures.
struct Weather {
  Sky sky = Sky::Clear;
  Wetness rain = Wetness::Dry;
  double windKmh = 4;
  double humidity = 60;
  double pressureHpa = 1010;

  std::string Describe() const;
};

Weather PickWeather(Seeded& random, const Weather& before);

// Moves the box to this weather at `hourOfDay` (the sun sets the light, the
// day warms the air), with the small wobble of real readings; the classes do
// not change.
void ApplyWeather(Weather& weather, double hourOfDay, Seeded& random, boxsim::Box& box);

// The verdict this weather must give once it has lasted: the soak counts
// Cloudy and Overcast and Rain as unsafe.
bool ExpectUnsafe(const Weather& weather);

}  // namespace nbx::test
