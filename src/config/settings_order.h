#pragma once

#include <string>

namespace nbx {
class Settings;
struct Nimbometer;

// What the load needs of the machine it runs on.
struct LoadContext {
  std::string documentsFolder;  // the default of every folder key
  char decimalSeparator = '.';  // the locale's, for numbers and their defaults
  bool runEntryPresent = false; // the program starts with the user's session
};

// The load of the window: reads every key of the store in its fixed order into
// Config, SiteState and the Display, and sizes the sample and wind buffers.
// A missing key gives its default, a text that is no value of the key's type
// gives its default too, and nothing stops the load. The initial timer is
// the caller's to arm.
void LoadSettings(Settings& store, Nimbometer& nm, const LoadContext& context);

struct UnloadContext {
  char decimalSeparator = '.';
  // Only a window in its normal state writes its position; a minimised,
  // maximised or absent window leaves the stored one.
  bool windowIsNormal = false;
};

// The unload of the window: writes every key in its fixed order. While an
// automation client is attached nothing is written and the answer is false.
bool UnloadSettings(Settings& store, const Nimbometer& nm, const UnloadContext& context);

}  // namespace nbx
