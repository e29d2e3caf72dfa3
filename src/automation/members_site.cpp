// The members that read the site and drive the station: readings,
// conditions, the device, the verdict, the window, the units and the clients.

#include "automation/client_panel.h"
#include "automation/computed_members.h"
#include "automation/data_displayed.h"
#include "automation/member_builders.h"
#include "automation/window_state.h"
#include "device/link_life.h"
#include "outputs/user_data_file.h"
#include "safety/alarms.h"
#include "safety/conditions.h"
#include "safety/relay.h"
#include "safety/safety_decision.h"

namespace nbx::members {
namespace {

using VT = ValueType;
using Args = std::vector<MemberValue>;

void AddReadings(Interface& face) {
  auto& p = face.properties;
  const auto value = [&p](const char* name, double SiteState::*field, Blink blink = Blink::Plain) {
    p.push_back(Reading(
        name, VT::Double, [field](const Nimbometer& nm) { return nm.state.*field; }, blink));
  };
  value("AmbientTemperature", &SiteState::Value_Temp);
  value("SkyTemperature", &SiteState::Value_Cloud);
  value("SkySensorTemperature", &SiteState::Value_CloudTemp);
  value("RainValue", &SiteState::Value_Rain);
  value("RainHeaterPercent", &SiteState::Value_RainHeat);
  value("RainHeaterTemperature", &SiteState::Value_RainTemp);
  p.push_back(Reading("RainHeaterStatus", VT::Text,
                      [](const Nimbometer& nm) { return nm.display.LblHeating.Caption; }));
  value("BrightnessValue", &SiteState::Value_Day);
  value("WindValue", &SiteState::Value_Wind);
  value("WindDir", &SiteState::Value_WindDir);
  value("DewPointTemp", &SiteState::Value_DewPointT, Blink::Silent);
  value("HumidityRelative", &SiteState::Value_HumidityRel, Blink::Silent);
  value("AbsolutePressure", &SiteState::Value_AbsPressure);
  value("RelativePressure", &SiteState::Value_RelPressure);
  p.push_back(Reading("SwitchStatus", VT::Long, [](const Nimbometer& nm) { return nm.state.Value_Switch; }));
  // A date for clients: before the first reading the zero date, as an empty
  // date has always read.
  p.push_back(Reading(
      "LastReading", VT::Double, [](const Nimbometer& nm) { return nm.state.LastReading.value_or(0.0); },
      Blink::Silent));
  p.push_back(Reading("DataReady", VT::Boolean, [](const Nimbometer& nm) { return nm.state.NBX_DataReady; }));
  p.push_back(Reading("Safe", VT::Boolean, [](const Nimbometer& nm) { return ReportsSafe(nm); }));
  p.push_back(Reading(
      "SecondsSinceGoodData", VT::Long,
      [](const Nimbometer& nm) { return static_cast<std::int32_t>(SecondsSinceGoodData(nm)); },
      Blink::Timed));
}

// Cloud, pressure and the sky are the polls by which the panel measures a
// client's period.
void AddConditions(Interface& face) {
  auto& p = face.properties;
  const auto condition = [&p](const char* name, Condition SiteState::*field, Blink blink = Blink::Plain) {
    p.push_back(Reading(
        name, VT::Long, [field](const Nimbometer& nm) { return nm.state.*field; }, blink));
  };
  condition("Condition_Cloud", &SiteState::NBX_CloudCondition, Blink::Timed);
  condition("Condition_Rain", &SiteState::NBX_RainCondition);
  condition("Condition_Wind", &SiteState::NBX_WindCondition);
  condition("Condition_Brightness", &SiteState::NBX_DayCondition);
  condition("Condition_Pressure", &SiteState::NBX_PressureCondition, Blink::Timed);
  p.push_back(Reading(
      "Condition_Sky", VT::Long, [](const Nimbometer& nm) { return Condition_Sky(nm.state); }, Blink::Timed));
  p.push_back(
      Reading("Condition_WetF", VT::Boolean, [](const Nimbometer& nm) { return Condition_WetF(nm.state); }));
}

void AddDevice(Interface& face) {
  auto& p = face.properties;
  auto& m = face.methods;
  m.push_back(Sub(
      "Device_Start", {}, [](Automation& a, const Args&) { Start_Device(a.nm); }, Blink::Silent));
  m.push_back(Sub(
      "Device_Stop", {}, [](Automation& a, const Args&) { Stop_Device(a.nm); }, Blink::Silent));
  // The last client alone stops the box; the others would stop it under
  // the feet of the rest.
  m.push_back(Sub(
      "NBX_DeviceStop", {},
      [](Automation& a, const Args&) {
        if (a.nm.state.COMNoUsers == 1) Stop_Device(a.nm);
      },
      Blink::Silent));
  p.push_back(
      Reading("DeviceIsRunning", VT::Boolean, [](const Nimbometer& nm) { return nm.state.IsRunning; }));
  p.push_back(Reading("NBX_DeviceRole", VT::Text,
                      [](const Nimbometer& nm) { return std::string(nm.IsMaster() ? "MASTER" : "REMOTE"); }));
  // Get reads the first option and Let true selects the second: clients are
  // written against this pair as it has always been.
  p.push_back(Property{"NBX_DeviceSwitchCtrl", VT::Boolean, Blink::Plain,
                       [](Automation& a) -> MemberValue { return a.nm.config.SWRole[0]; },
                       [](Automation& a, const MemberValue& v) {
                         if (!a.nm.IsMaster()) return;
                         ConfigEditor(a.nm).SetSWRole(std::get<bool>(v) ? 1 : 0);
                       }});
  m.push_back(
      Sub("NBX_LocalControl", {{"flg", VT::Boolean}, {"sLabel", VT::Text}},
          [](Automation& a, const Args& args) { HasControl(a.nm, BoolArg(args, 0), TextArg(args, 1)); }));
  p.push_back(Reading(
      "NBX_TotalNoUsers", VT::Long, [](const Nimbometer& nm) { return nm.state.COMNoUsers; }, Blink::Silent));
  p.push_back(Property{"NBX_UseMeteodesk",
                       VT::Text,
                       Blink::Silent,
                       [](Automation& a) -> MemberValue { return a.UseMeteodesk(); },
                       {}});
  p.push_back(Reading(
      "MForm", VT::Object, [](const Nimbometer&) { return ObjectPath{FormObjectPath}; }, Blink::Silent));
  p.push_back(Reading(
      "Name", VT::Text, [](const Nimbometer&) { return std::string("NBX_Nimbometer"); }, Blink::Silent));
  p.push_back(Reading(
      "Version", VT::Text, [](const Nimbometer&) { return VersionNumber(); }, Blink::Silent));
}

void AddRecordingAndVerdict(Interface& face) {
  auto& p = face.properties;
  auto& m = face.methods;
  m.push_back(Sub("RecordStart", {{"flgAppendToFile", VT::Boolean}},
                  [](Automation& a, const Args& args) { Record_Start(a.nm, BoolArg(args, 0)); }));
  m.push_back(Sub(
      "RecordSetMode", {{"flgLastReadingOnly", VT::Boolean}},
      [](Automation& a, const Args& args) { ConfigEditor(a.nm).SetLastReadOnly(BoolArg(args, 0) ? 1 : 0); }));
  m.push_back(Sub("RecordStop", {}, [](Automation& a, const Args&) { Record_Stop(a.nm); }));
  m.push_back(Sub("SetUnSafe", {{"flg", VT::Boolean}}, [](Automation& a, const Args& args) {
    a.nm.state.Value_Unsafe = BoolArg(args, 0);
    DispUnsafeStat(a.nm);
  }));
  m.push_back(Sub("NBX_SetSwitch", {{"iPar", VT::Long}},
                  [](Automation& a, const Args& args) { SetSwitch(a.nm, LongArg(args, 0)); }));
  m.push_back(Sub("NBX_AlarmStart", {{"sound", VT::Text}},
                  [](Automation& a, const Args& args) { AlarmStart(a.nm, TextArg(args, 0)); }));
  m.push_back(Sub("NBX_AlarmStop", {}, [](Automation& a, const Args&) { AlarmStop(a.nm); }));
  p.push_back(Property{"NBX_CloudAlarmDelay", VT::Long, Blink::Silent,
                       [](Automation& a) -> MemberValue { return NBX_CloudAlarmDelay(a.nm); },
                       [](Automation& a, const MemberValue& v) {
                         ConfigEditor(a.nm).SetCloudAlarmDelay(std::get<std::int32_t>(v));
                       }});
  p.push_back(Property{
      "NBX_SafeDelayValue", VT::Double, Blink::Silent,
      [](Automation& a) -> MemberValue { return a.nm.config.SafeDelayVal; },
      [](Automation& a, const MemberValue& v) { ConfigEditor(a.nm).SetSafeDelayVal(std::get<double>(v)); }});
  p.push_back(Reading(
      "NBX_SafeDelayWait", VT::Long, [](const Nimbometer& nm) { return nm.state.SafeDelayWait; },
      Blink::Silent));
  p.push_back(Reading(
      "NBX_SafeDelayMsg", VT::Text, [](const Nimbometer& nm) { return NBX_SafeDelayMsg(nm.display); },
      Blink::Silent));
  p.push_back(Reading(
      "NBX_IsWindPresent", VT::Boolean, [](const Nimbometer& nm) { return nm.state.IsWindPresent; },
      Blink::Silent));
  p.push_back(
      Reading("NBX_XFERFileErr", VT::Boolean, [](const Nimbometer& nm) { return nm.state.XFERFileErr; }));
}

// Without a window there is nothing to move or raise: the position reads
// as it was stored and a new one is only kept.
void AddWindow(Interface& face) {
  auto& p = face.properties;
  auto& m = face.methods;
  m.push_back(Sub("BlinkLEDCOM", {}, [](Automation&, const Args&) {}));
  m.push_back(Sub("WindowNormal", {}, [](Automation& a, const Args&) { WindowNormal(a.nm); }));
  m.push_back(Sub("WindowMinimize", {}, [](Automation& a, const Args&) { WindowMinimize(a.nm); }));
  const auto position = [&p](const char* name, std::optional<std::int32_t> Config::*field) {
    p.push_back(Property{
        name, VT::Long, Blink::Silent,
        [field](Automation& a) -> MemberValue { return (a.nm.config.*field).value_or(0); },
        [field](Automation& a, const MemberValue& v) { a.nm.config.*field = std::get<std::int32_t>(v); }});
  };
  position("WindowLeft", &Config::Left);
  position("WindowTop", &Config::Top);
}

void AddUnits(Interface& face) {
  auto& p = face.properties;
  const auto speed = [&p](const char* name) {
    p.push_back(Property{
        name, VT::Text, Blink::Plain, [](Automation& a) -> MemberValue { return UnitSpeed(a.nm.config); },
        [](Automation& a, const MemberValue& v) { LetUnitSpeed(a.nm, std::get<std::string>(v)); }});
  };
  speed("UnitSpeed");
  // Silent itself, it blinks through UnitSpeed, which it is.
  speed("NBX_SpeedUnits");
  p.push_back(Property{
      "NBX_TemperatureUnits", VT::Text, Blink::Plain,
      [](Automation& a) -> MemberValue { return NBX_TemperatureUnits(a.nm.config); },
      [](Automation& a, const MemberValue& v) { LetTemperatureUnits(a.nm, std::get<std::string>(v)); }});
}

// The window's words and colours for a foreign display.
void AddDataDisplay(Interface& face) {
  face.methods.push_back(Function(
      "NBX_DataDisplayed", {{"item", VT::Text}, {"kind", VT::Text}}, {"text", VT::Text},
      [](Automation& a, const Args& args) -> MemberValue {
        return NBX_DataDisplayed(a.nm, TextArg(args, 0), TextArg(args, 1));
      },
      Blink::Silent));
}

// Creating and releasing an object, and the safety options of scripting
// hosts, with the interfaces as GUID texts.
void AddClients(Interface& face) {
  auto& m = face.methods;
  m.push_back(Method{"Attach", {}, {}, Blink::Silent, [](Automation& a, const MethodCall& call) {
                       a.Attach(call.caller);
                       return Outcome{};
                     }});
  m.push_back(Method{"Detach", {}, {}, Blink::Silent, [](Automation& a, const MethodCall& call) {
                       if (a.Detach(call.caller)) return Outcome{};
                       return Outcome::Refused(Failure::NotAttached,
                                               "This client holds no object to release");
                     }});
  m.push_back(Method{"GetInterfaceSafetyOptions",
                     {{"riid", VT::Text}},
                     {{"pdwSupportedOptions", VT::Long}, {"pdwEnabledOptions", VT::Long}},
                     Blink::Silent,
                     [](Automation& a, const MethodCall& call) {
                       std::int32_t supported = 0, enabled = 0;
                       if (!a.safety.GetInterfaceSafetyOptions(TextArg(call.args, 0), supported, enabled))
                         return Outcome::Refused(Failure::NoInterface, "Interface not supported");
                       return Outcome{{supported, enabled}, Failure::None, {}};
                     }});
  m.push_back(Method{"SetInterfaceSafetyOptions",
                     {{"riid", VT::Text}, {"dwOptionsSetMask", VT::Long}, {"dwEnabledOptions", VT::Long}},
                     {},
                     Blink::Silent,
                     [](Automation& a, const MethodCall& call) {
                       if (!a.safety.SetInterfaceSafetyOptions(TextArg(call.args, 0), LongArg(call.args, 1),
                                                               LongArg(call.args, 2)))
                         return Outcome::Refused(Failure::NoInterface, "Interface not supported");
                       return Outcome{};
                     }});
}

}  // namespace

void AddSiteMembers(Interface& face) {
  AddReadings(face);
  AddConditions(face);
  AddDevice(face);
  AddRecordingAndVerdict(face);
  AddWindow(face);
  AddUnits(face);
  AddDataDisplay(face);
  AddClients(face);
}

}  // namespace nbx::members
