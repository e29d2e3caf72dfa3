// Writes the seed corpus of every fuzz target: real sessions with the
// simulated box, records and stores as the program writes them, and a few
// texts and numbers of the kinds the program meets.
//
//   nbx_fuzz_seeds <corpus folder>     one folder per target inside it
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "boxsim/replies.h"
#include "config/settings_order.h"
#include "device/link_life.h"
#include "fuzz_station.h"
#include "line_script.h"
#include "outputs/transfer_file.h"
#include "outputs/transfer_layout.h"
#include "settings_text.h"

namespace {

using namespace nbx;
using namespace nbx::fuzz;
namespace fs = std::filesystem;

fs::path corpus;

void Seed(const char* target, const std::string& name, const std::string& bytes) {
  const fs::path folder = corpus / target;
  fs::create_directories(folder);
  WriteFileBytes((folder / name).string(), bytes);
}

// A session of the receive-buffer fuzzer, written as the harness will replay
// it: the box answers every command the station writes, and the time of a
// period passes whenever the line is quiet.
struct SessionOptions {
  LineEvent delivery = LineEvent::Bytes;
  int cycles = 3;
  int stopAfterCycle = 0;  // 0: no Stop and Start in the middle
  std::function<void(boxsim::Box&)> setUp;
};

std::string RecordSession(const SessionOptions& options) {
  FuzzStation st;
  if (options.setUp) options.setUp(st.box);
  StartAction(st.nm);
  st.time.RunFor(10);
  std::string script;
  std::size_t answered = 0;
  bool stopped = false;
  for (int quiet = 0; quiet < 20 && st.host.cyclesProcessed < options.cycles;) {
    if (answered < st.link.written.size()) {
      const std::string reply = st.box.Receive(st.link.written[answered++]);
      script += BytesEvent(reply, options.delivery);
      if (options.delivery == LineEvent::OneByOne) {
        for (char byte : reply) st.Receive(std::string_view(&byte, 1));
      } else {
        st.Receive(reply);
      }
      continue;
    }
    if (!stopped && options.stopAfterCycle > 0 && st.host.cyclesProcessed >= options.stopAfterCycle) {
      stopped = true;
      script += static_cast<char>(LineEvent::StopAndStart);
      StopAction(st.nm);
      st.time.RunFor(20);
      StartAction(st.nm);
      continue;
    }
    ++quiet;
    script += TimeEvent(100);
    st.time.RunFor(10'000);
  }
  return script;
}

void ReceiveBufferSeeds() {
  Seed("receive_buffer", "session", RecordSession({}));
  Seed("receive_buffer", "byte-by-byte", RecordSession({LineEvent::OneByOne, 2, 0, nullptr}));
  Seed("receive_buffer", "stop-in-between", RecordSession({LineEvent::Bytes, 3, 1, nullptr}));
  Seed("receive_buffer", "old-firmware", RecordSession({LineEvent::Bytes, 2, 0, [](boxsim::Box& b) {
         b.readings.firmware = "5.60";
         b.readings.windFitted = false;
         b.readings.pressureFitted = false;
       }}));
  Seed("receive_buffer", "garbage-and-sentinels",
       RecordSession({LineEvent::Bytes, 2, 0, [](boxsim::Box& b) {
         b.faults.garbageBefore = "\x13\xff#";
         b.faults.skySentinel = true;
         b.faults.damagedNumbers = true;
       }}));
  Seed("receive_buffer", "silent-box",
       RecordSession({LineEvent::Bytes, 2, 0, [](boxsim::Box& b) { b.faults.silentFromCommand = 5; }}));
}

// The frames of a whole reading cycle, end-of-reply frames included.
std::string CycleFrames(boxsim::Readings readings, const boxsim::Faults& faults = {}) {
  std::string frames;
  for (const char* command : {"B", "K", "v", "h", "t", "p"}) frames += ReplyTo(command, readings, faults);
  for (int pass = 0; pass < 5; ++pass)
    for (const char* command : {"S", "T", "C", "E"}) frames += ReplyTo(command, readings, faults);
  for (const char* command : {"V", "Q", "D", "F"}) frames += ReplyTo(command, readings, faults);
  return frames;
}

void FrameDispatchSeeds() {
  const char running5 = 0x01 | (4 << 4);
  boxsim::Readings readings;
  Seed("frame_dispatch", "cycle", running5 + CycleFrames(readings));
  Seed("frame_dispatch", "stopped", std::string(1, 0x00) + CycleFrames(readings));
  // Fahrenheit and miles an hour, an older box with a brightness meter.
  readings.firmware = "5.80";
  readings.sqmFitted = true;
  readings.relay = 2;
  Seed("frame_dispatch", "units-and-sqm", static_cast<char>(running5 | 0x02 | 0x08) + CycleFrames(readings));
  boxsim::Faults faults;
  faults.skySentinel = true;
  faults.damagedNumbers = true;
  readings.humidityFitted = readings.pressureFitted = false;
  Seed("frame_dispatch", "sentinels", running5 + CycleFrames(readings, faults));
}

// The transfer record of a master that has run two cycles against the box.
std::string MasterRecord(const std::function<void(FuzzStation&)>& setUp = nullptr) {
  FuzzStation st;
  st.UseSimulatedBox();
  if (setUp) setUp(st);
  StartAction(st.nm);
  st.time.RunUntil([&] { return st.host.cyclesProcessed >= 2; }, 60'000);
  return EncodeTransferRecord(BuildTransferRecord(st.nm));
}

void TransferSeeds() {
  const std::string record = MasterRecord();
  const std::string wet = MasterRecord([](FuzzStation& st) {
    st.box.readings.rainFrequency = 2000;
    st.box.readings.windFitted = false;
    st.nm.config.UnitTempStr = "F";
    st.nm.config.ColorCloud[0].Caption = "Dégagé";
  });
  Seed("transfer_record", "master", record);
  Seed("transfer_record", "wet-fahrenheit", wet);
  Seed("transfer_file", "one-read", '\x00' + record);
  Seed("transfer_file", "three-reads-and-reload", '\x06' + wet);
  Seed("transfer_file", "short", '\x01' + record.substr(0, 300));
  Seed("transfer_file", "longer", '\x00' + record + record);
}

void SettingConversionSeeds() {
  const std::vector<std::pair<char, std::string>> texts{
      {0, "12.5"},  {1, "-3,25"},  {0, "True"},       {0, "Falsch"}, {0, " 0 "},
      {0, "1e5"},   {0, "12a"},    {0, ""},           {0, "   "},    {1, "0,000000000000001"},
      {0, "99999999999"}, {1, "12,5"}, {0, "-2147483648"}, {0, "16777215"}, {0, "2.5"}};
  int n = 0;
  for (const auto& [flags, text] : texts) {
    const std::string colour = n % 2 ? std::string("\xc0\xff\xc0\x00", 4) : std::string("\xff\xff\xff\xff", 4);
    Seed("setting_conversions", "text-" + std::to_string(n++), flags + colour + text);
  }
}

void SettingsLoadSeeds() {
  // A fresh installation, whose folders are the user's documents folder.
  Nimbometer fresh;
  Config& c = fresh.config;
  c.LblPathName = c.LblPathNameCCDAP4 = c.NetPathMaster = c.NetPathRemote = c.GraphImagePath =
      "/home/observer/Documents";
  MemorySettings store;
  UnloadSettings(store, fresh, {'.', false});
  Seed("settings_load", "fresh", WriteStoreText(store, '.'));
  MemorySettings comma;
  UnloadSettings(comma, fresh, {',', false});
  Seed("settings_load", "fresh-comma", WriteStoreText(comma, ','));
  // A remote, and values that are no values.
  store.values[{"COMMFile", "NMRole0"}] = "False";
  store.values[{"COMMFile", "NMRole1"}] = "True";
  Seed("settings_load", "remote", WriteStoreText(store, '.'));
  MemorySettings odd = store;
  odd.values[{"COMMFile", "NMRole1"}] = "Faux";
  odd.values[{"Communication", "RefreshPeriod"}] = "0";
  odd.values[{"Window", "GraphNoPoint"}] = "-5";
  odd.values[{"Window", "AvgWindCalc"}] = "abc";
  odd.values[{"Electrical", "Stats_Universe"}] = "1e9";
  odd.values[{"SQM", "SQMGain"}] = "2,,5";
  odd.values[{"Limit", "UnitsSpeed2"}] = "-1";
  Seed("settings_load", "odd-values", WriteStoreText(odd, '.'));
}

std::string NumberInput(double value, bool comma, int width, const std::string& pattern) {
  std::string out(8, '\0');
  const auto bits = std::bit_cast<std::uint64_t>(value);
  std::memcpy(out.data(), &bits, 8);
  out += static_cast<char>(comma ? 1 : 0);
  out += static_cast<char>(static_cast<std::int8_t>(width));
  return out + pattern;
}

void NumberFormatSeeds() {
  struct Case {
    double value;
    bool comma;
    int width;
    const char* pattern;
  };
  const Case cases[] = {{1.005, false, 0, "0.00"},     {-0.04, false, 0, "0.0"},
                        {7, false, 6, "000"},          {0.5, false, 0, "0%"},
                        {123.456, true, 12, "#0.00"},  {12.3, false, 0, "0.000 s"},
                        {0, false, 0, "#"},            {1e20, false, 0, "0"},
                        {5e-324, false, 9, "0.0000"},  {-2.5, false, 0, "0"},
                        {-17.25, true, 8, "000000.00000"}, {99.96, false, 5, "#0.0"}};
  int n = 0;
  for (const Case& c : cases)
    Seed("number_format", "value-" + std::to_string(n++), NumberInput(c.value, c.comma, c.width, c.pattern));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
    return 2;
  }
  corpus = argv[1];
  ReceiveBufferSeeds();
  FrameDispatchSeeds();
  TransferSeeds();
  SettingConversionSeeds();
  SettingsLoadSeeds();
  NumberFormatSeeds();
  return 0;
}
