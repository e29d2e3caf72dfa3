#include "automation/computed_members.h"

#include <array>

#include "config/setting_keys.h"
#include "editing/config_editor.h"
#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/text.h"

namespace nbx {
namespace {

// The option of `letter` in a unit group, compared case-sensitively.
template <std::size_t N>
int OptionOfLetter(const std::array<const char*, N>& letters, std::string_view letter) {
  for (std::size_t i = 0; i < N; ++i)
    if (letter == letters[i]) return static_cast<int>(i);
  return -1;
}

template <std::size_t N>
std::string SelectedLetter(const std::array<bool, N>& options, const std::array<const char*, N>& letters) {
  for (std::size_t i = 0; i < N; ++i)
    if (options[i]) return letters[i];
  return " ";
}

struct RingEnds {
  std::int32_t first = 0;
  std::int32_t last = 0;
};

RingEnds EndsOfGraph(const SiteState& s, std::int32_t graphNo) {
  switch (graphNo) {
    case 1:
      return {s.CloudArrayFst, s.CloudArrayLst};
    case 2:
      return {s.RainArrayFst, s.RainArrayLst};
    case 3:
      return {s.DayArrayFst, s.DayArrayLst};
    case 4:
      return {s.TempArrayFst, s.TempArrayLst};
    default:
      return {};
  }
}

}  // namespace

Condition Condition_Sky(const SiteState& s) {
  if (s.NBX_RainCondition == 0 || s.NBX_CloudCondition == 0) return 0;
  if (s.NBX_RainCondition == 1) return s.NBX_CloudCondition;
  return 4;
}

bool Condition_WetF(const SiteState& s) { return s.NBX_RainCondition == 2 || s.NBX_RainCondition == 3; }

std::string NBX_SafeDelayMsg(const Display& d) {
  std::string text = Trim(d.SafeDelayMsg.Caption);
  const std::string code = Trim(d.StatusBar2.Caption);
  if (code.empty()) return text;
  return text + " / Error: " + Trim(d.StatusBar.Caption) + " (" + code + ")";
}

std::string VersionNumber() {
  return std::to_string(NBX_VERSION_MAJOR) + "." + FormatNumber(NBX_VERSION_MINOR, "00") + "." +
         FormatNumber(NBX_VERSION_PATCH, "000");
}

std::string UnitSpeed(const Config& c) { return SelectedLetter(c.UnitsSpeed, SpeedUnitLetters); }

std::string NBX_TemperatureUnits(const Config& c) {
  return SelectedLetter(c.UnitsTemp, TemperatureUnitLetters);
}

void LetUnitSpeed(Nimbometer& nm, std::string_view letter) {
  const int option = OptionOfLetter(SpeedUnitLetters, letter);
  if (option >= 0) ConfigEditor(nm).SetUnitsSpeed(option);
}

void LetTemperatureUnits(Nimbometer& nm, std::string_view letter) {
  const int option = OptionOfLetter(TemperatureUnitLetters, letter);
  if (option >= 0) ConfigEditor(nm).SetUnitsTemp(option);
}

std::int32_t NBX_GraphArrayFirstElem(const SiteState& s, std::int32_t graphNo) {
  return EndsOfGraph(s, graphNo).first;
}

std::int32_t NBX_GraphArrayLastElem(const SiteState& s, std::int32_t graphNo) {
  return EndsOfGraph(s, graphNo).last;
}

HistoryArray HistoryCopy(const GraphRing& ring) {
  HistoryArray copy(3, std::vector<double>(ring.size(), 0.0));
  for (std::size_t i = 1; i < ring.size(); ++i) {
    copy[1][i] = ring[i].Time;
    copy[2][i] = ring[i].Value;
  }
  return copy;
}

}  // namespace nbx
