#include <optional>
#include <type_traits>

#include "automation/member_builders.h"

namespace nbx {
namespace {

using VT = ValueType;

// Values are polled, never announced.
Annotation NoChangeSignals() { return {"org.freedesktop.DBus.Property.EmitsChangedSignal", "false"}; }

// The main window's public variables, each under its own name: what the
// class's members do not offer (humidity and pressure conditions among
// them) clients read here.
class FormBuilder {
 public:
  explicit FormBuilder(Interface& face) : face_(face) {}

  template <typename T>
  void Field(const char* name, T SiteState::*field) {
    face_.properties.push_back(members::Reading(
        name, TypeOf<T>(),
        [field](const Nimbometer& nm) { return static_cast<MemberValue>(nm.state.*field); }, Blink::Silent));
  }
  void Date(const char* name, std::optional<double> SiteState::*field) {
    face_.properties.push_back(members::Reading(
        name, VT::Double, [field](const Nimbometer& nm) { return (nm.state.*field).value_or(0.0); },
        Blink::Silent));
  }

 private:
  template <typename T>
  static constexpr ValueType TypeOf() {
    if constexpr (std::is_same_v<T, bool>)
      return VT::Boolean;
    else if constexpr (std::is_same_v<T, std::int16_t>)
      return VT::Integer;
    else if constexpr (std::is_same_v<T, std::int32_t>)
      return VT::Long;
    else if constexpr (std::is_same_v<T, double>)
      return VT::Double;
    else
      return VT::Text;
  }

  Interface& face_;
};

Interface MakeForm() {
  Interface face{FormInterfaceName, {}, {}, {NoChangeSignals()}};
  FormBuilder f(face);
  f.Field("Value_Cloud", &SiteState::Value_Cloud);
  f.Field("Value_CloudRaw", &SiteState::Value_CloudRaw);
  f.Field("Value_CloudTemp", &SiteState::Value_CloudTemp);
  f.Field("Value_Cycle", &SiteState::Value_Cycle);
  f.Field("Value_Day", &SiteState::Value_Day);
  f.Field("Value_DewPointT", &SiteState::Value_DewPointT);
  f.Field("Value_DewPointDelta", &SiteState::Value_DewPointDelta);
  f.Field("Value_HumidityRel", &SiteState::Value_HumidityRel);
  f.Field("Value_HumSensTemp", &SiteState::Value_HumSensTemp);
  f.Field("Value_Rain", &SiteState::Value_Rain);
  f.Field("Value_RainHeat", &SiteState::Value_RainHeat);
  f.Field("Value_RainTemp", &SiteState::Value_RainTemp);
  f.Field("Value_Switch", &SiteState::Value_Switch);
  f.Field("Value_Temp", &SiteState::Value_Temp);
  f.Field("Value_Unsafe", &SiteState::Value_Unsafe);
  f.Field("Value_Wind", &SiteState::Value_Wind);
  f.Field("Value_WindDir", &SiteState::Value_WindDir);
  f.Field("Value_Gust", &SiteState::Value_Gust);
  f.Field("Value_AbsPressure", &SiteState::Value_AbsPressure);
  f.Field("Value_RelPressure", &SiteState::Value_RelPressure);
  f.Field("Value_PresSensTemp", &SiteState::Value_PresSensTemp);
  f.Field("Value_Altitude", &SiteState::Value_Altitude);
  f.Field("ReferenceVoltage", &SiteState::ReferenceVoltage);

  f.Field("IsRunning", &SiteState::IsRunning);
  f.Field("DeviceInitialized", &SiteState::DeviceInitialized);
  f.Field("DeviceMode", &SiteState::DeviceMode);
  f.Field("LocalControl", &SiteState::LocalControl);
  f.Field("NBX_DataReady", &SiteState::NBX_DataReady);
  f.Date("LastReading", &SiteState::LastReading);
  f.Field("CommFailed", &SiteState::CommFailed);
  f.Field("SentinelsActive", &SiteState::SentinelsActive);
  f.Field("ConsecutiveCommErrors", &SiteState::ConsecutiveCommErrors);
  f.Field("RefreshMillis", &SiteState::RefreshMillis);
  f.Field("IsWindPresent", &SiteState::IsWindPresent);
  f.Field("HumidityPresent", &SiteState::HumidityPresent);
  f.Field("PressurePresent", &SiteState::PressurePresent);
  f.Field("SQMPresent", &SiteState::SQMPresent);
  f.Field("SerialNo", &SiteState::SerialNo);
  f.Field("FirmwareMajor", &SiteState::FirmwareMajor);
  f.Field("FirmwareMinor", &SiteState::FirmwareMinor);
  f.Field("FirmwarePatch", &SiteState::FirmwarePatch);

  f.Field("NBX_CloudCondition", &SiteState::NBX_CloudCondition);
  f.Field("NBX_CloudSafe", &SiteState::NBX_CloudSafe);
  f.Field("NBX_RainCondition", &SiteState::NBX_RainCondition);
  f.Field("NBX_RainSafe", &SiteState::NBX_RainSafe);
  f.Field("NBX_WindCondition", &SiteState::NBX_WindCondition);
  f.Field("NBX_WindSafe", &SiteState::NBX_WindSafe);
  f.Field("NBX_DayCondition", &SiteState::NBX_DayCondition);
  f.Field("NBX_DaySafe", &SiteState::NBX_DaySafe);
  f.Field("NBX_HumidityCondition", &SiteState::NBX_HumidityCondition);
  f.Field("NBX_HumiditySafe", &SiteState::NBX_HumiditySafe);
  f.Field("NBX_PressureCondition", &SiteState::NBX_PressureCondition);
  f.Field("NBX_PressureSafe", &SiteState::NBX_PressureSafe);
  f.Field("CloudUnknownCount", &SiteState::CloudUnknownCount);
  f.Field("RainUnknownCount", &SiteState::RainUnknownCount);
  f.Field("DayUnknownCount", &SiteState::DayUnknownCount);
  f.Field("WindUnknownCount", &SiteState::WindUnknownCount);

  f.Field("SafeDelayWait", &SiteState::SafeDelayWait);
  f.Date("LastUnsafe", &SiteState::LastUnsafe);
  f.Field("RecordingActive", &SiteState::RecordingActive);
  f.Field("SameReadingCount", &SiteState::SameReadingCount);
  f.Field("XFERFileErr", &SiteState::XFERFileErr);
  f.Field("COMNoUsers", &SiteState::COMNoUsers);
  f.Field("ClientCallCount", &SiteState::ClientCallCount);
  f.Field("ClientPollTime", &SiteState::ClientPollTime);
  return face;
}

Interface MakeNimbometer() {
  // The identities that clients of the class have always been built against.
  Interface face{
      NimbometerInterfaceName,
      {},
      {},
      {NoChangeSignals(),
       {"NBX_Nimbometer.ClassId", "{E0489B53-AAD9-4B48-A880-471DD0682749}"},
       {"NBX_Nimbometer.InterfaceId", "{E3166293-7BB3-4BE9-AF36-3468B490268B}"},
       {"NBX_Nimbometer.TypeLibrary", "{3E7B6CA1-0062-4241-9FAB-487A45ADABBC} 1.0 NBX Nimbometer"}}};
  members::AddSiteMembers(face);
  members::AddSettingMembers(face);
  members::AddGraphMembers(face);
  return face;
}

}  // namespace

const Interface& NimbometerInterface() {
  static const Interface face = MakeNimbometer();
  return face;
}

const Interface& FormInterface() {
  static const Interface face = MakeForm();
  return face;
}

}  // namespace nbx
