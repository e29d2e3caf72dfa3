#pragma once

#include <QSettings>

namespace nbx {
struct Nimbometer;

// The keys the verdict and what it sets off need: limits and Unknown rules,
// which classes count as unsafe, the relay role, delays, sound alarms and the
// SAFE/UNSAFE scripts. Values go through the change handling of their
// controls, as the window's load does. A missing or unreadable key keeps the
// default.
void LoadSafetySettings(QSettings& settings, Nimbometer& nm);

}  // namespace nbx
