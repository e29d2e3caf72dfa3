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

}  // namespace nbx
