// The load of a settings store whose texts are anything, the unload that
// follows it, and a station that then runs on what was loaded.
//
// Input: the store as text (settings_text.h).
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/settings_order.h"
#include "device/link_life.h"
#include "fuzz_station.h"
#include "config/memory_settings.h"

namespace {

using namespace nbx;
using nbx::fuzz::Require;

// A file name of the store that would lead out of the scratch folder gives
// way to a plain one: the fuzzer writes nowhere else.
void KeepInside(std::string& name, const char* plain) {
  if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
    name = plain;
}

// The input of the settings-load fuzzer: a store as lines of
// "Section/Key=text". A first line of a lone "," makes the comma the
// machine's decimal separator. Lines without "/" or "=" are skipped; the
// text runs to the end of the line and may hold any byte.
struct StoreText {
  MemorySettings store;
  char decimalSeparator = '.';
};

StoreText ReadStoreText(std::string_view input) {
  StoreText out;
  bool first = true;
  while (!input.empty()) {
    const std::size_t end = input.find('\n');
    const std::string_view line = input.substr(0, end);
    input = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
    if (first && line == ",") out.decimalSeparator = ',';
    first = false;
    const std::size_t slash = line.find('/');
    const std::size_t equals = line.find('=');
    if (slash == std::string_view::npos || equals == std::string_view::npos || equals < slash)
      continue;
    out.store.values[{std::string(line.substr(0, slash)),
                      std::string(line.substr(slash + 1, equals - slash - 1))}] =
        std::string(line.substr(equals + 1));
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  StoreText text = ReadStoreText(std::string_view(reinterpret_cast<const char*>(data), size));
  fuzz::FuzzStation st;
  const LoadContext load{st.files.path(), text.decimalSeparator, false};
  const UnloadContext unload{text.decimalSeparator, false};
  LoadSettings(text.store, st.nm, load);
  // The store the unload leaves is one the next load reads to the same
  // settings: a second load and unload write the same texts.
  Require(UnloadSettings(text.store, st.nm, unload), "the unload writes without clients");
  {
    MemorySettings written = text.store;
    fuzz::FuzzStation again;
    LoadSettings(written, again.nm, load);
    UnloadSettings(written, again.nm, unload);
    Require(written.values == text.store.values, "a stored setting survives a load and unload");
  }

  // A station runs two cycles on the loaded settings, against the simulated box.
  st.KeepFilesInScratch();
  Config& c = st.nm.config;
  KeepInside(c.FileName, "Nimbometer");
  KeepInside(c.FileNameCCDAP4, "NBX_SLD.dat");
  KeepInside(c.NetFileName, "NBX_NMNetData.dat");
  st.nm.io.link = &st.link;  // the simulated box answers
  StartAction(st.nm);
  const std::int64_t periodMs = static_cast<std::int64_t>(c.RefreshPeriod) * 1000;
  st.time.RunUntil([&] { return st.host.cyclesProcessed >= 2; }, 3 * periodMs + 60'000);
  fuzz::CheckCycleResult(st.nm);
  StopAction(st.nm);
  st.time.RunFor(20);
  return 0;
}
