#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/sample_array.h"
#include "core/transfer_record.h"

namespace nbx {

// Conditions: 0 is Unknown on purpose, 1..3 the family's classes in the order of
// its table ("Clear", "Cloudy", "Overcast" ...).
using Condition = std::int32_t;
// Safe flags: 0 Unknown, 1 Safe, 2 Unsafe.
using SafeFlag = std::int32_t;

// A point of a history graph: the cycle's LastReading (serial date) and the
// value, in the display unit of the moment it was taken.
struct GraphPoint {
  double Time = 0;
  double Value = 0;
};
// A history ring: elements 1 to the upper bound (size - 1) hold the points,
// element 0 is not used. One element only is an empty ring.
using GraphRing = std::vector<GraphPoint>;

inline constexpr int CommandQueueSize = 100;

// The one record of the current state of the site. Names are those that other
// programs reach through the automation object and the files; keep them.
struct SiteState {
  // --- Values of a reading (temperatures in the chosen unit, wind in the chosen unit)
  double Value_Cloud = 0;          // sky temperature after the ambient correction
  double Value_CloudRaw = 0;       // sky temperature as measured, less IRTempOffset; >= 900 no reading
  double Value_CloudTemp = 0;      // infrared sensor's own temperature
  double Value_Cycle = 0;          // seconds of the last cycle (MASTER)
  double Value_Day = 0;            // brightness, in the sensor's unit
  double Value_DewPointT = 0;
  double Value_DewPointDelta = 0;
  double Value_HumidityRel = 50;   // percent; 50 when no sensor answers
  // The last humidity frame's value before the correction for the sensor's
  // own temperature: the correction always starts from it, never from
  // Value_HumidityRel, so that recomputing does not compound it.
  double HumidityRelFrame = 50;
  double Value_HumSensTemp = 20;   // humidity sensor temperature, degrees Celsius
  double Value_Rain = 0;           // rain sensor frequency, mean of the cycle
  double Value_RainHeat = 0;       // heater duty, fraction 0..1
  double Value_RainTemp = 0;
  std::int32_t Value_Switch = 0;   // relay: 0 unknown, 1 opened, 2 closed
  double Value_Temp = 20;          // ambient temperature; 20 when no source is usable
  bool Value_Unsafe = false;       // the safety verdict
  double Value_Wind = 0;
  double Value_WindDir = 0;
  double Value_Gust = 0;
  double Value_AbsPressure = 1000; // hectopascals; 1000 when no sensor answers
  double Value_RelPressure = 1000;
  double Value_PresSensTemp = 0;
  double Value_Altitude = 0;
  double ReferenceVoltage = 5;     // volts; 5 when there is no zener reading

  // --- Flags and counters of the cycle
  bool IsRunning = false;
  // From the Start action to the Stop action: cycles are wanted, whether or
  // not the port has opened yet. A port that never opens still runs cycles
  // (failed ones), so that the station gives up its readings as for a silent box.
  bool Started = false;
  // A cycle has been read whole since Start. Until then nothing the station
  // holds is a reading of this run, and the health signal says so.
  bool GoodCycleSinceStart = false;
  std::int32_t DeviceInitialized = 0;  // 0 not set up, 1 "K" seen, 2 set up this run, 3 asked again
  std::string DeviceMode = "MASTER";
  bool LocalControl = false;           // an automation client holds the verdict
  bool NBX_DataReady = false;
  std::optional<double> LastReading;   // serial date of the last good cycle's start; empty before
  bool CycleBusy = false;
  bool CycleLoaded = false;
  double CycleStartTick = 0;
  bool CommFailed = false;
  bool SentinelsActive = false;
  bool DamagedNumberInCycle = false;  // a sample of this cycle's replies could not be read
  std::int32_t ConsecutiveCommErrors = 0;  // failed cycles since the last one read whole
  std::int32_t RefreshMillis = 10000;
  std::int32_t GraphEvery = 6;
  std::int32_t GraphCycleCount = 0;
  bool GraphDue = false;
  std::int32_t Stats_Universe = 5;
  double Stats_Sigma = 1;

  // --- Receive state of the wire protocol
  std::string RxBuffer;
  std::array<std::string, CommandQueueSize + 1> CommandQueue;  // entries 1..100
  std::int32_t QueueSent = 0;
  std::int32_t QueueFirst = 0;
  std::int32_t QueueCount = 0;
  std::int32_t FirmwareMajor = 0;
  std::int32_t FirmwareMinor = 0;
  std::int32_t FirmwarePatch = 0;
  bool IsWindPresent = false;
  std::int16_t HumidityPresent = -1;  // -1 assumed, 1 good frames seen, 0 given up
  std::int16_t PressurePresent = -1;
  bool SQMPresent = false;
  bool OptionalReplySeen = false;
  std::int16_t RHErrors = 0;
  std::int16_t AtmErrors = 0;
  std::string SerialNo = "    ";

  SampleArray SamplesSkyIR;      // "1": hundredths of a degree Celsius
  SampleArray SamplesSkySensor;  // "2": hundredths of a degree Celsius
  SampleArray SamplesAmbient;    // "3": 0..1023 counts
  SampleArray SamplesLDR;        // "4": counts
  SampleArray SamplesRainTemp;   // "5": 0..1023 counts
  SampleArray SamplesZener;      // "6": 0..1023 counts
  SampleArray SamplesSQM;        // "8": frequency
  SampleArray SamplesRainFreq;   // "R": frequency
  std::vector<double> WindSamples;  // running mean of the wind, CalcWindAvg elements

  // --- Electrical constants of the box (kilo-ohms, volts)
  double ZenerVoltage = 3;
  double LDRMaxResistance = 2000;
  double LDRPullupResistance = 56;
  double RainBeta = 3450;
  double RainResAt25 = 1;
  double RainPullUpResistance = 1;
  double AmbBeta = 3811;
  double AmbResAt25 = 10;
  double AmbPullUpResistance = 9.9;

  // --- Validity of derived temperatures
  bool IRTempValid = false;      // Value_CloudTemp computed in this run; never cleared
  bool RHTempValid = false;      // set and cleared by "t" frames
  bool AmbientTempValid = false; // Value_Temp came from a live source
  bool DewPointValid = false;

  // --- Rain heater
  std::int32_t HeatImpulseState = 1;  // 1 normal, 2 warming up, 3 holding
  std::int32_t HeatImpulseCondition = 0;
  double HeatCycleStart = 0;
  double HeatHoldStart = 0;
  double HeatLastStep = 0;
  double HeatLastTemp = 0;
  bool HeatStarted = false;

  // --- Conditions and safe flags
  Condition NBX_CloudCondition = 0;
  SafeFlag NBX_CloudSafe = 0;
  Condition NBX_RainCondition = 0;
  SafeFlag NBX_RainSafe = 0;
  Condition NBX_WindCondition = 0;
  SafeFlag NBX_WindSafe = 0;
  Condition NBX_DayCondition = 0;
  SafeFlag NBX_DaySafe = 0;
  Condition NBX_HumidityCondition = 0;
  SafeFlag NBX_HumiditySafe = 0;
  Condition NBX_PressureCondition = 0;
  SafeFlag NBX_PressureSafe = 0;
  std::int32_t CloudUnknownCount = 0;
  std::int32_t RainUnknownCount = 0;
  std::int32_t DayUnknownCount = 0;
  std::int32_t WindUnknownCount = 0;

  // --- Safety decision
  std::int32_t SafeDelayWait = 0;
  std::int32_t SafetyTrend = 0;        // 0 none yet, 1 unsafe, 2 safe
  double SafetyChangeTime = 0;         // serial date
  std::int32_t LastCloudCondition = 2;
  double CloudChangeTime = 0;          // serial date; 0 is the zero date
  bool SafetyChanged = false;
  std::optional<double> LastUnsafe;    // serial date of the last unsafe verdict

  // --- Alarms
  std::string ActiveAlarmCode;
  std::string PendingAlarmCode;
  std::string PendingAlarmFile;
  bool AlarmHeld = false;
  bool AlarmWindowON = false;

  // --- User data file
  bool RecordingActive = false;
  std::int32_t RecordCycleCount = 0;
  bool RecordOptionBusy = false;

  // --- Mirror of a MASTER (REMOTE)
  std::int16_t SameReadingCount = 0;
  bool XFERFileErr = false;
  bool RemoteCommAlarmOn = false;
  // The master's last record as read, bands, heater values and factors with
  // it; the remote's own settings take them only by ReloadMasterConstants.
  TransferRecord TransferCopy;

  // --- History rings of the seven graphs, with the indices of their oldest
  // (Fst) and newest (Lst) points
  GraphRing NBX_GraphArrayCloud = GraphRing(1);
  GraphRing NBX_GraphArrayRain = GraphRing(1);
  GraphRing NBX_GraphArrayWind = GraphRing(1);
  GraphRing NBX_GraphArrayDay = GraphRing(1);
  GraphRing NBX_GraphArrayTemp = GraphRing(1);
  GraphRing NBX_GraphArrayHumidity = GraphRing(1);
  GraphRing NBX_GraphArrayPressure = GraphRing(1);
  std::int32_t CloudArrayFst = 0, CloudArrayLst = 0;
  std::int32_t RainArrayFst = 0, RainArrayLst = 0;
  std::int32_t WindArrayFst = 0, WindArrayLst = 0;
  std::int32_t DayArrayFst = 0, DayArrayLst = 0;
  std::int32_t TempArrayFst = 0, TempArrayLst = 0;
  std::int32_t HumidityArrayFst = 0, HumidityArrayLst = 0;
  std::int32_t PressureArrayFst = 0, PressureArrayLst = 0;

  // --- Automation clients
  std::int32_t COMNoUsers = 0;
  std::int32_t ClientCallCount = 0;
  double ClientPollTime = 0;
  std::int32_t NBXMsgReply = 0;
  std::int32_t NBXUpdate = 0;

  // Sizes the eight sample arrays to Stats_Universe elements.
  void SizeSampleArrays();
  // Sets the eight fill counters to 0.
  void ClearSampleCounters();
  // Cycles are wanted: the link is up, or Start was pressed and the port is still being tried.
  bool CyclesWanted() const { return IsRunning || Started; }
};

}  // namespace nbx
