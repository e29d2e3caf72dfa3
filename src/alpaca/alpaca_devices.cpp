#include "alpaca/alpaca_devices.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>

#include "alpaca/station_answers.h"
#include "automation/computed_members.h"
#include "core/nimbometer.h"

namespace nbx::alpaca {

const std::array<DeviceInfo, 2> Devices{{
    {DeviceType::SafetyMonitor, "safetymonitor", "SafetyMonitor", 3},
    {DeviceType::ObservingConditions, "observingconditions", "ObservingConditions", 2},
}};

namespace {

struct Context {
  Nimbometer& nm;
  bool& connected;
  const DeviceInfo& device;
  const AlpacaParameters& parameters;
};

struct Member {
  const char* name;
  bool put;
  MemberResult (*answer)(Context&);
};

MemberResult Bad(const QString& reason) { return {QJsonValue::Undefined, 0, {}, reason}; }
MemberResult Error(int number, const QString& message) { return {QJsonValue::Undefined, number, message, {}}; }
MemberResult Value(const QJsonValue& value) { return {value, 0, {}, {}}; }
MemberResult Done() { return {}; }
MemberResult FromNumber(const NumberAnswer& a) {
  if (a.errorNumber) return Error(a.errorNumber, QString::fromStdString(a.errorMessage));
  return Value(a.value);
}

// A parameter the member cannot do without: given exactly once.
bool Required(Context& c, const char* name, QString& value, MemberResult& failure) {
  switch (c.parameters.Find(QString::fromLatin1(name), value)) {
    case AlpacaParameters::Found::Once: return true;
    case AlpacaParameters::Found::Missing: failure = Bad(QStringLiteral("parameter %1 is missing").arg(name)); break;
    case AlpacaParameters::Found::Repeated:
      failure = Bad(QStringLiteral("parameter %1 is given more than once").arg(name));
      break;
  }
  return false;
}

// The optional SensorName: absent is the same as empty.
bool SensorName(Context& c, QString& value, MemberResult& failure) {
  if (c.parameters.Find(QStringLiteral("SensorName"), value) != AlpacaParameters::Found::Repeated) return true;
  failure = Bad(QStringLiteral("parameter SensorName is given more than once"));
  return false;
}

MemberResult NotConnectedError() { return Error(AscomError::NotConnected, QStringLiteral("the device is not connected")); }

MemberResult PutConnected(Context& c) {
  QString text;
  MemberResult failure;
  if (!Required(c, "Connected", text, failure)) return failure;
  const QString word = text.trimmed().toLower();
  if (word != u"true" && word != u"false") return Bad(QStringLiteral("Connected must be true or false"));
  c.connected = word == u"true";
  return Done();
}

MemberResult NotImplementedCommand(Context& c) {
  QString text;
  MemberResult failure;
  if (!Required(c, "Command", text, failure) || !Required(c, "Raw", text, failure)) return failure;
  return Error(NotImplemented, QStringLiteral("this station takes no raw commands"));
}

MemberResult Action(Context& c) {
  QString action, parameters;
  MemberResult failure;
  if (!Required(c, "Action", action, failure) || !Required(c, "Parameters", parameters, failure)) return failure;
  return Error(ActionNotImplemented, QStringLiteral("no action is called \"%1\"").arg(action));
}

QString DriverInfo(const DeviceInfo& d) {
  return d.type == DeviceType::SafetyMonitor
             ? QStringLiteral("NBX Nimbometer: the station's SAFE/UNSAFE verdict")
             : QStringLiteral("NBX Nimbometer: the sensor box's readings in ASCOM units");
}

const Member CommonMembers[] = {
    {"connected", false, [](Context& c) { return Value(c.connected); }},
    {"connected", true, PutConnected},
    // Connecting ends at once: the station runs on its own beat.
    {"connecting", false, [](Context&) { return Value(false); }},
    {"connect", true, [](Context& c) { c.connected = true; return Done(); }},
    {"disconnect", true, [](Context& c) { c.connected = false; return Done(); }},
    {"description", false, [](Context& c) { return Value(QStringLiteral("NBX Nimbometer %1").arg(c.device.typeName)); }},
    {"driverinfo", false, [](Context& c) { return Value(DriverInfo(c.device)); }},
    {"driverversion", false, [](Context&) { return Value(QString::fromStdString(VersionNumber())); }},
    {"interfaceversion", false, [](Context& c) { return Value(c.device.interfaceVersion); }},
    {"name", false, [](Context&) { return Value(QStringLiteral("NBX Nimbometer")); }},
    {"supportedactions", false, [](Context&) { return Value(QJsonArray()); }},
    {"action", true, Action},
    {"commandblind", true, NotImplementedCommand},
    {"commandbool", true, NotImplementedCommand},
    {"commandstring", true, NotImplementedCommand},
};

// A client that has not connected reads the verdict as unsafe, not as an error.
const Member SafetyMonitorMembers[] = {
    {"issafe", false, [](Context& c) { return Value(c.connected && IsSafe(c.nm)); }},
};

MemberResult PutAveragePeriod(Context& c) {
  QString text;
  MemberResult failure;
  if (!Required(c, "AveragePeriod", text, failure)) return failure;
  bool ok = false;
  const double hours = text.trimmed().toDouble(&ok);
  if (!ok) return Bad(QStringLiteral("AveragePeriod must be a number"));
  if (!c.connected) return NotConnectedError();
  // The station gives each cycle's own values; it keeps no averages.
  if (hours != 0) return Error(InvalidValue, QStringLiteral("only an average period of 0 is offered"));
  return Done();
}

MemberResult TimeSince(Context& c) {
  QString sensor;
  MemberResult failure;
  if (!SensorName(c, sensor, failure)) return failure;
  if (!c.connected) return NotConnectedError();
  return FromNumber(TimeSinceLastUpdate(c.nm, sensor.toStdString()));
}

MemberResult Describe(Context& c) {
  QString sensor;
  MemberResult failure;
  if (!SensorName(c, sensor, failure)) return failure;
  if (!c.connected) return NotConnectedError();
  std::string text;
  const NumberAnswer a = SensorDescription(c.nm, sensor.toStdString(), text);
  return a.errorNumber ? FromNumber(a) : Value(QString::fromStdString(text));
}

const Member ObservingConditionsMembers[] = {
    {"averageperiod", false, [](Context& c) { return c.connected ? Value(0.0) : NotConnectedError(); }},
    {"averageperiod", true, PutAveragePeriod},
    // Each cycle refreshes the values; a client's refresh must not disturb the beat.
    {"refresh", true, [](Context& c) { return c.connected ? Done() : NotConnectedError(); }},
    {"timesincelastupdate", false, TimeSince},
    {"sensordescription", false, Describe},
};

// The members' names as ASCOM spells them, for the device state.
QString AscomName(std::string_view member) {
  static const std::pair<std::string_view, const char*> names[] = {
      {"cloudcover", "CloudCover"},     {"dewpoint", "DewPoint"},           {"humidity", "Humidity"},
      {"pressure", "Pressure"},         {"rainrate", "RainRate"},           {"skybrightness", "SkyBrightness"},
      {"skyquality", "SkyQuality"},     {"skytemperature", "SkyTemperature"}, {"starfwhm", "StarFWHM"},
      {"temperature", "Temperature"},   {"winddirection", "WindDirection"}, {"windgust", "WindGust"},
      {"windspeed", "WindSpeed"}};
  for (const auto& [url, ascom] : names)
    if (url == member) return QString::fromLatin1(ascom);
  return QString::fromUtf8(member.data(), static_cast<qsizetype>(member.size()));
}

QJsonObject StateItem(const QString& name, const QJsonValue& value) {
  return QJsonObject{{QStringLiteral("Name"), name}, {QStringLiteral("Value"), value}};
}

template <std::size_t N>
const Member* FindIn(const Member (&table)[N], const QString& name, bool isPut, bool& otherVerb) {
  for (const Member& m : table) {
    if (name != QLatin1String(m.name)) continue;
    if (m.put == isPut) return &m;
    otherVerb = true;
  }
  return nullptr;
}

}  // namespace

QJsonArray AlpacaDevices::DeviceState(const DeviceInfo& device) const {
  QJsonArray items;
  if (device.type == DeviceType::SafetyMonitor) {
    items.append(StateItem(QStringLiteral("IsSafe"), IsSafe(nm_)));
  } else {
    for (std::string_view member : ConditionMembers()) {
      const std::optional<NumberAnswer> a = ConditionValue(nm_, member);
      if (a && a->errorNumber == NoError) items.append(StateItem(AscomName(member), a->value));
    }
  }
  items.append(StateItem(QStringLiteral("TimeStamp"),
                         QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)));
  return items;
}

MemberResult AlpacaDevices::Answer(const DeviceInfo& device, const QString& member, bool isPut,
                                   const AlpacaParameters& parameters) {
  bool& connected = connected_[static_cast<std::size_t>(device.type)];
  Context context{nm_, connected, device, parameters};
  bool otherVerb = false;
  const Member* found = FindIn(CommonMembers, member, isPut, otherVerb);
  if (!found && device.type == DeviceType::SafetyMonitor)
    found = FindIn(SafetyMonitorMembers, member, isPut, otherVerb);
  if (!found && device.type == DeviceType::ObservingConditions)
    found = FindIn(ObservingConditionsMembers, member, isPut, otherVerb);
  if (found) return found->answer(context);

  const std::string name = member.toStdString();
  if (member == u"devicestate" || (device.type == DeviceType::ObservingConditions && ConditionValue(nm_, name))) {
    if (isPut) return Bad(QStringLiteral("%1 is read with GET").arg(member));
    if (!connected) return NotConnectedError();
    if (member == u"devicestate") return Value(DeviceState(device));
    return FromNumber(*ConditionValue(nm_, name));
  }
  if (otherVerb) return Bad(QStringLiteral("%1 is not used with %2").arg(member, isPut ? "PUT" : "GET"));
  return Bad(QStringLiteral("%1 has no member %2").arg(device.typeName, member));
}

}  // namespace nbx::alpaca
