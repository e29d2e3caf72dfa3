#include <gtest/gtest.h>

#include <algorithm>

#include "config/memory_settings.h"
#include "config/settings_order.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

// The station reads what it uses from the loaded configuration: the sample
// passes, the period, the units, the wind average.
TEST(LoadedStation, RunsOnTheStoredPassesPeriodUnitsAndWindAverage) {
  test::SimStation st;
  MemorySettings store;
  store.Save("Electrical", "Stats_Universe", "8");
  store.Save("Communication", "RefreshPeriod", "3");
  store.Save("Window", "UnitsTemp0", "False");
  store.Save("Window", "UnitsTemp", "True");
  store.Save("Window", "AvgWindCalc", "3");
  // The folder keys default to the documents folder: the test's own scratch folder.
  LoadSettings(store, st.nm, {st.files.path(), '.', false});

  st.StartAndRunFirstCycles();
  const std::size_t before = st.box.Commands().size();
  st.time.RunFor(3000);
  const std::vector<std::string> cycle = st.CommandsSince(before);
  EXPECT_EQ(std::count(cycle.begin(), cycle.end(), "S"), 8);
  EXPECT_EQ(std::count(cycle.begin(), cycle.end(), "E"), 8);
  EXPECT_EQ(st.nm.state.SamplesSkyIR.values.size(), 8u);
  EXPECT_NEAR(st.nm.state.Value_Temp, 12 * 9.0 / 5 + 32, 0.01);  // the box says 12 degrees C
  EXPECT_EQ(st.nm.state.WindSamples.size(), 3u);
}

}  // namespace
}  // namespace nbx
