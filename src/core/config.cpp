#include "core/config.h"

namespace nbx {

std::array<FileColumn, FileColumnCount> Config::DefaultFileColumns() {
  static const char* const kHeaders[FileColumnCount] = {
      "Date", "Time", "Cloud Condition", "Rain Condition", "Brightness Condition", "Cloud Value",
      "Cloud Sensor Temperature", "Rain Value", "Brightness Value", "Ambient Temperature",
      "Rain Heating Percentage", "Rain Sensor Temperature", "Heating Status", "Switch Status",
      "Read Cycle", "Timeout Errors", "Safe Status", "Wind Condition", "Wind Value",
      "Relative Humidity", "Dew Point", "Raw IR Temperature", "Absolute Pressure",
      "Relative Pressure"};
  std::array<FileColumn, FileColumnCount> columns;
  for (int i = 0; i < FileColumnCount; ++i) columns[static_cast<std::size_t>(i)] = {kHeaders[i], i + 1, true};
  return columns;
}

std::span<Colour> GraphColours(Config& config, GraphKind kind) {
  switch (kind) {
    case GraphKind::Cloud: return config.GraphColorCloud;
    case GraphKind::Rain: return config.GraphColorRain;
    case GraphKind::Wind: return config.GraphColorWind;
    case GraphKind::Day: return config.GraphColorDay;
    case GraphKind::Temp: return config.GraphColorTemp;
    case GraphKind::Humidity: return config.GraphColorHumidity;
    case GraphKind::Pressure: return config.GraphColorPressure;
  }
  return {};
}

std::span<const Colour> GraphColours(const Config& config, GraphKind kind) {
  return GraphColours(const_cast<Config&>(config), kind);
}

}  // namespace nbx
