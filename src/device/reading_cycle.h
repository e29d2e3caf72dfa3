#pragma once

namespace nbx {
struct Nimbometer;

// The beat: the period timer's tick only arms the one-shot TimerGraph, whose
// tick does the work, so that work never stacks up.
void TimerCommOnTick(Nimbometer& nm);
void TimerGraphTick(Nimbometer& nm);

// Loads the command queue of one reading cycle. Called only by the tick.
void StartReadingCycle(Nimbometer& nm);
// Turns the cycle's samples into values and lets safety, the heater, the
// graphs and the files run, in their order.
void ProcessFinishedCycle(Nimbometer& nm);

// Graph thinning: GraphDue is true on the first of every GraphFreq cycles.
void AdvanceGraphCount(Nimbometer& nm);

// Dispatches a timer's tick to its routine.
enum class TimerId;
void OnTimer(Nimbometer& nm, TimerId id);

}  // namespace nbx
