#include "core/site_state.h"

namespace nbx {

void SiteState::SizeSampleArrays() {
  for (SampleArray* a : {&SamplesSkyIR, &SamplesSkySensor, &SamplesAmbient, &SamplesLDR,
                         &SamplesRainTemp, &SamplesZener, &SamplesSQM, &SamplesRainFreq})
    a->Resize(Stats_Universe);
}

void SiteState::ClearSampleCounters() {
  for (SampleArray* a : {&SamplesSkyIR, &SamplesSkySensor, &SamplesAmbient, &SamplesLDR,
                         &SamplesRainTemp, &SamplesZener, &SamplesSQM, &SamplesRainFreq})
    a->count = 0;
}

}  // namespace nbx
