// The members of the graphs: thinning, points, the temperature scale, the
// history buffers, and the switches and colours of four of the seven graphs.

#include "automation/computed_members.h"
#include "automation/member_builders.h"
#include "core/number_format.h"
#include "graphs/graph_ring.h"

namespace nbx::members {
namespace {

using VT = ValueType;
using Args = std::vector<MemberValue>;

std::int32_t Whole(double value) { return static_cast<std::int32_t>(RoundHalfEven(value)); }

std::size_t Index(GraphKind kind) { return static_cast<std::size_t>(kind); }

void AddThinningAndScale(Interface& face) {
  auto& p = face.properties;
  auto& m = face.methods;
  p.push_back(DoubleControl(
      "GraphFrequency", [](const Config& c) { return c.GraphFreq; },
      [](ConfigEditor& e, double v) { e.SetGraphFreq(v); }));
  p.push_back(TextControl(
      "GraphImagePath", [](const Config& c) { return c.GraphImagePath; },
      [](ConfigEditor& e, const std::string& v) { e.SetGraphImagePath(v); }));
  for (const char* name : {"GraphNoOfPoints", "GraphPoints"})
    p.push_back(DoubleControl(
        name, [](const Config& c) { return c.GraphNoPoints; },
        [](ConfigEditor& e, double v) { e.SetGraphNoPoints(v); }));
  // The graphs share one cycle and one thinning: the number is not looked at.
  const Argument graphNo{"GraphNo", VT::Long};
  m.push_back(Function(
      "GetGraphCycle", {graphNo}, {"cycle", VT::Long},
      [](Automation& a, const Args&) -> MemberValue { return a.nm.config.RefreshPeriod; }, Blink::Silent));
  m.push_back(Function(
      "GetGraphFreq", {graphNo}, {"frequency", VT::Long},
      [](Automation& a, const Args&) -> MemberValue { return Whole(a.nm.config.GraphFreq); }, Blink::Silent));
  p.push_back(DoubleControl(
      "GraphMaxTempTemp", [](const Config& c) { return c.GraphTempMax; },
      [](ConfigEditor& e, double v) { e.SetGraphTempMax(v); }));
  p.push_back(DoubleControl(
      "GraphMinTempTemp", [](const Config& c) { return c.GraphTempMin; },
      [](ConfigEditor& e, double v) { e.SetGraphTempMin(v); }));
  m.push_back(Function("GraphTemperatureMax", {graphNo}, {"temperature", VT::Double},
                       [](Automation& a, const Args&) -> MemberValue { return a.nm.config.GraphTempMax; }));
  m.push_back(Function("GraphTemperatureMin", {graphNo}, {"temperature", VT::Double},
                       [](Automation& a, const Args&) -> MemberValue { return a.nm.config.GraphTempMin; }));
}

void AddHistories(Interface& face) {
  const Argument graphNo{"GraphNo", VT::Long};
  face.methods.push_back(Function(
      "NBX_GraphArrayFirstElem", {graphNo}, {"element", VT::Long},
      [](Automation& a, const Args& args) -> MemberValue {
        return NBX_GraphArrayFirstElem(a.nm.state, LongArg(args, 0));
      },
      Blink::Silent));
  face.methods.push_back(Function(
      "NBX_GraphArrayLastElem", {graphNo}, {"element", VT::Long},
      [](Automation& a, const Args& args) -> MemberValue {
        return NBX_GraphArrayLastElem(a.nm.state, LongArg(args, 0));
      },
      Blink::Silent));
  const auto history = [&face](const char* name, GraphRing SiteState::*ring) {
    face.properties.push_back(Reading(name, VT::HistoryArray,
                                      [ring](const Nimbometer& nm) { return HistoryCopy(nm.state.*ring); }));
  };
  history("NBX_GraphArrayCloud", &SiteState::NBX_GraphArrayCloud);
  history("NBX_GraphArrayRain", &SiteState::NBX_GraphArrayRain);
  history("NBX_GraphArrayDay", &SiteState::NBX_GraphArrayDay);
  history("NBX_GraphArrayTemp", &SiteState::NBX_GraphArrayTemp);
}

void AddGraphColour(Interface& face, const std::string& name, GraphKind kind, int index) {
  face.properties.push_back(LongControl(
      name,
      [kind, index](const Config& c) {
        return static_cast<std::int32_t>(GraphColours(c, kind)[static_cast<std::size_t>(index)]);
      },
      [kind, index](ConfigEditor& e, std::int32_t v) {
        e.SetGraphColour(kind, index, static_cast<Colour>(v));
      }));
}

// Draw, label colour, graph colour, create image.
void AddGraphSwitches(Interface& face, const std::string& suffix, GraphKind kind) {
  auto& p = face.properties;
  p.push_back(IntegerControl(
      "GraphGenerate" + suffix, [kind](const Config& c) { return CheckValue(c.GraphGenerate[Index(kind)]); },
      [kind](ConfigEditor& e, std::int16_t v) { e.SetGraphGenerate(kind, v); }));
  AddGraphColour(face, "GraphLabelColor" + suffix, kind, 0);
  AddGraphColour(face, "GraphGraphColor" + suffix, kind, 1);
  p.push_back(IntegerControl(
      "GraphCreateImage" + suffix, [kind](const Config& c) { return CheckValue(c.GraphImage[Index(kind)]); },
      [kind](ConfigEditor& e, std::int16_t v) { e.SetGraphImage(kind, v); }));
}

}  // namespace

void AddGraphMembers(Interface& face) {
  AddThinningAndScale(face);
  AddHistories(face);
  AddGraphSwitches(face, "Cloud", GraphKind::Cloud);
  AddGraphSwitches(face, "Rain", GraphKind::Rain);
  AddGraphSwitches(face, "Brightness", GraphKind::Day);
  AddGraphSwitches(face, "Temp", GraphKind::Temp);
  AddGraphColour(face, "GraphBackColorTemp", GraphKind::Temp, 2);
}

}  // namespace nbx::members
