#include "soak_weather.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace nbx::test {

std::uint64_t Seeded::Next() {
  // splitmix64: small, and the same sequence on every standard library.
  std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

double Seeded::Uniform(double low, double high) {
  return low + (high - low) * static_cast<double>(Next() >> 11) * 0x1.0p-53;
}

int Seeded::Between(int low, int high) {
  return low + static_cast<int>(Next() % static_cast<std::uint64_t>(high - low + 1));
}

namespace {

// With the ambient between 6 and 14 degrees, the correction takes 2.0 to 4.8
// degrees off the sky: these raw bands land inside Clear (<= -5), Cloudy
// (-5 .. 0) and Overcast (> 0) with room to spare.
double RawSkyCelsius(Sky sky, Seeded& random) {
  switch (sky) {
    case Sky::Clear:
      return random.Uniform(-25, -10);
    case Sky::Cloudy:
      return random.Uniform(0.3, 1.7);
    case Sky::Overcast:
      break;
  }
  return random.Uniform(6, 15);
}

// Dry from 3200 up, Wet from 2800, Rain below.
double RainFrequency(Wetness rain, Seeded& random) {
  switch (rain) {
    case Wetness::Dry:
      return random.Uniform(3300, 3700);
    case Wetness::Wet:
      return random.Uniform(2900, 3100);
    case Wetness::Raining:
      break;
  }
  return random.Uniform(1000, 2600);
}

}  // namespace

std::string Weather::Describe() const {
  static const char* const skies[] = {"clear", "cloudy", "overcast"};
  static const char* const rains[] = {"dry", "wet", "raining"};
  return std::string(skies[static_cast<int>(sky)]) + ", " + rains[static_cast<int>(rain)];
}

Weather PickWeather(Seeded& random, const Weather& before) {
  Weather w = before;
  w.sky = static_cast<Sky>(random.Between(0, 2));
  // Rain comes with a covered sky.
  w.rain = w.sky == Sky::Clear ? Wetness::Dry : static_cast<Wetness>(random.Between(0, 2));
  return w;
}

void ApplyWeather(Weather& w, double hourOfDay, Seeded& random, boxsim::Box& box) {
  const double ambient =
      10 + 3 * std::sin((hourOfDay - 9) / 24 * 2 * std::numbers::pi) + random.Uniform(-0.5, 0.5);
  // Every source of the ambient agrees, so the one the program picks does not matter.
  box.SetAmbientCelsius(ambient);
  box.SetSkySensorCelsius(ambient);
  box.SetRainPlateCelsius(ambient + 2);
  box.readings.humidityTemp = ambient;
  box.SetSkyCelsius(RawSkyCelsius(w.sky, random));
  box.readings.rainFrequency = std::round(RainFrequency(w.rain, random));

  const bool daylight = hourOfDay > 7.5 && hourOfDay < 16.5;
  box.readings.ldrCounts = daylight ? random.Uniform(48000, 49990) : random.Uniform(30000, 45000);
  w.windKmh = std::clamp(w.windKmh + random.Uniform(-3, 3), 0.0, 40.0);
  w.humidity = std::clamp(w.humidity + random.Uniform(-4, 4), 20.0, 98.0);
  w.pressureHpa = std::clamp(w.pressureHpa + random.Uniform(-1, 1), 960.0, 1050.0);
  box.readings.windKmh = std::round(w.windKmh * 10) / 10;
  box.readings.humidity = w.humidity;
  box.readings.pressureHpa = w.pressureHpa;
}

bool ExpectUnsafe(const Weather& w) { return w.sky != Sky::Clear || w.rain == Wetness::Raining; }

}  // namespace nbx::test
