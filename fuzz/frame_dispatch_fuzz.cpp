// Frames by their type alone, straight into the dispatch, and then the
// cycle's processing of whatever samples they left.
//
// Input: one byte of set-up (bit 0 running, bits 1-2 the speed unit, bit 3
// the temperature unit, bits 4-6 the sample passes less one), then frames
// of 15 bytes; a shorter tail is dropped.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "device/reading_cycle.h"
#include "device/wire_protocol.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nbx;
  if (size < 1) return 0;
  fuzz::FuzzStation st;
  SiteState& s = st.nm.state;
  Config& c = st.nm.config;
  const std::uint8_t setUp = data[0];
  st.hand.open = true;
  s.IsRunning = (setUp & 1) != 0;
  c.UnitSpeedStr = std::string(1, "KMmk"[(setUp >> 1) & 3]);
  c.UnitTempStr = (setUp & 8) != 0 ? "F" : "C";
  s.Stats_Universe = 1 + ((setUp >> 4) & 7);
  s.SizeSampleArrays();
  s.WindSamples.assign(6, 0.0);
  s.FirmwareMajor = 6;
  s.FirmwareMinor = 1;

  const std::string_view frames(reinterpret_cast<const char*>(data) + 1, size - 1);
  bool endSeen = false;
  for (std::size_t at = 0; at + FrameLength <= frames.size(); at += FrameLength)
    DispatchFrame(st.nm, frames.substr(at, FrameLength), endSeen);
  for (const SampleArray* samples : {&s.SamplesSkyIR, &s.SamplesSkySensor, &s.SamplesAmbient,
                                     &s.SamplesLDR, &s.SamplesRainTemp, &s.SamplesZener,
                                     &s.SamplesSQM, &s.SamplesRainFreq})
    fuzz::Require(samples->values.size() == static_cast<std::size_t>(s.Stats_Universe),
                  "frames never resize a sample array");

  // The queue ran out: the cycle's stages take the samples as they are.
  s.CycleLoaded = true;
  ProcessFinishedCycle(st.nm);
  fuzz::CheckCycleResult(st.nm);
  return 0;
}
