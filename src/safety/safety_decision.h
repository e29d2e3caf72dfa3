#pragma once

#include <cstdint>
#include <string>

#include "core/site_state.h"

namespace nbx {
struct Nimbometer;

// Turns the conditions into the verdict Value_Unsafe, with its delays, logs
// every change, and acts on it: relay, sound, script. Runs once per
// evaluated cycle; while a client holds control it only shows the verdict.
void EvaluateSafety(Nimbometer& nm);
// What pressing Start resets of the verdict's state: the next verdict is a
// first one, and a Cloudy sky counts at once.
void ResetSafetyAtStart(Nimbometer& nm);

// The cloud test of class `cls` with the cloud alarm delay. Only the call
// whose class is the condition has an effect; on the way up from Clear to
// Cloudy it is false until the delay has passed.
bool CloudClassConfirmed(Nimbometer& nm, Condition condition, Condition cls);
// CloudAlarmDelay as whole seconds.
std::int32_t NBX_CloudAlarmDelay(const Nimbometer& nm);

// Shows the verdict on the status label and indicator while running.
void DispUnsafeStat(Nimbometer& nm);
// A client takes (true) or gives back (false) the verdict; `text` goes to
// the label that says who holds it.
void HasControl(Nimbometer& nm, bool flag, const std::string& text);

// A verdict of this run exists: the station has decided since Start, or a
// client holds the verdict. Before that, and while stopped, it is not SAFE.
bool VerdictGiven(const Nimbometer& nm);
// The SAFE/UNSAFE indicator goes back to grey: a stopped station shows no verdict.
void ClearVerdictShown(Nimbometer& nm);
// What clients are told as `Safe`: a verdict of this run, and that verdict
// SAFE. A stopped monitor, or one that has not decided yet, is not safe.
bool ReportsSafe(const Nimbometer& nm);

}  // namespace nbx
