#include "automation/dbus/bus_object.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include "automation/dbus/bus_values.h"
#include "automation/introspection.h"

namespace nbx {
namespace {

const QString PropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString IntrospectableInterface = QStringLiteral("org.freedesktop.DBus.Introspectable");

QString ErrorName(Failure failure, bool property) {
  switch (failure) {
    case Failure::UnknownInterface:
      return QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface");
    case Failure::UnknownMember:
      return property ? QStringLiteral("org.freedesktop.DBus.Error.UnknownProperty")
                      : QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
    case Failure::ReadOnly:
      return QStringLiteral("org.freedesktop.DBus.Error.PropertyReadOnly");
    case Failure::NotAttached:
      return QStringLiteral("NBX_Nimbometer.Error.NotAttached");
    case Failure::NoInterface:
      return QStringLiteral("NBX_Nimbometer.Error.NoInterface");
    case Failure::InvalidArgs:
    case Failure::None:
      break;
  }
  return QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
}

QDBusMessage Refusal(const QDBusMessage& message, Failure failure, const std::string& text, bool property) {
  QString reason = QString::fromStdString(text);
  if (failure == Failure::NoInterface) reason = QStringLiteral("E_NOINTERFACE (0x80004002): ") + reason;
  return message.createErrorReply(ErrorName(failure, property), reason);
}

QDBusMessage Refusal(const QDBusMessage& message, const Outcome& outcome, bool property) {
  return Refusal(message, outcome.failure, outcome.message, property);
}

QDBusMessage WrongArguments(const QDBusMessage& message) {
  return Refusal(
      message, Failure::InvalidArgs,
      "Wrong arguments (" + message.signature().toStdString() + ") for " + message.member().toStdString(),
      false);
}

}  // namespace

BusObject::BusObject(Automation& automation, const Interface& face, std::function<void()> afterCall)
    : automation_(automation), face_(face), afterCall_(std::move(afterCall)) {}

QString BusObject::introspect(const QString&) const { return QString::fromStdString(InterfaceXml(face_, 2)); }

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.type() != QDBusMessage::MethodCallMessage) return false;
  const QString interface = message.interface();
  // The bus answers introspection itself, from introspect().
  if (interface == IntrospectableInterface) return false;
  QDBusMessage reply;
  if (interface == PropertiesInterface)
    reply = PropertyCall(message);
  else if (IsOurs(interface))
    reply = MethodCall(message);
  else
    reply = Refusal(message, Failure::UnknownInterface, "No interface " + interface.toStdString(), false);
  QDBusConnection(connection).send(reply);
  if (afterCall_) afterCall_();
  return true;
}

bool BusObject::IsOurs(const QString& interface) const {
  return interface.isEmpty() || interface.toStdString() == face_.name;
}

QDBusMessage BusObject::PropertyCall(const QDBusMessage& message) {
  const QString member = message.member();
  if (member == QLatin1String("Get")) return Get(message);
  if (member == QLatin1String("Set")) return Set(message);
  if (member == QLatin1String("GetAll")) return GetAll(message);
  return Refusal(message, Failure::UnknownMember, "No method " + member.toStdString(), false);
}

QDBusMessage BusObject::Get(const QDBusMessage& message) {
  if (message.signature() != QLatin1String("ss")) return WrongArguments(message);
  const QVariantList args = message.arguments();
  if (!IsOurs(args[0].toString()))
    return Refusal(message, Failure::UnknownInterface, "No interface " + args[0].toString().toStdString(),
                   true);
  const Outcome outcome = automation_.Get(face_, args[1].toString().toStdString());
  if (!outcome.Ok()) return Refusal(message, outcome, true);
  return message.createReply(QVariant::fromValue(QDBusVariant(ToBus(outcome.results.front()))));
}

QDBusMessage BusObject::Set(const QDBusMessage& message) {
  if (message.signature() != QLatin1String("ssv")) return WrongArguments(message);
  const QVariantList args = message.arguments();
  if (!IsOurs(args[0].toString()))
    return Refusal(message, Failure::UnknownInterface, "No interface " + args[0].toString().toStdString(),
                   true);
  const std::string name = args[1].toString().toStdString();
  const Property* property = face_.FindProperty(name);
  if (!property)
    return Refusal(message, Failure::UnknownMember, "No property " + name + " in " + face_.name, true);
  const QVariant given = qvariant_cast<QDBusVariant>(args[2]).variant();
  const std::optional<MemberValue> value = FromBus(given, property->type);
  // A read-only property says so whatever it was given.
  if (!value && property->Writable())
    return Refusal(message, Failure::InvalidArgs,
                   "Property " + name + " wants type " + std::string(Signature(property->type)), true);
  const Outcome outcome = automation_.Set(face_, name, value.value_or(MemberValue{}));
  if (!outcome.Ok()) return Refusal(message, outcome, true);
  return message.createReply();
}

QDBusMessage BusObject::GetAll(const QDBusMessage& message) {
  if (message.signature() != QLatin1String("s")) return WrongArguments(message);
  const QString interface = message.arguments()[0].toString();
  if (!IsOurs(interface))
    return Refusal(message, Failure::UnknownInterface, "No interface " + interface.toStdString(), true);
  const std::vector<MemberValue> values = automation_.ReadAll(face_);
  QVariantMap all;
  for (std::size_t i = 0; i < values.size(); ++i)
    all.insert(QString::fromStdString(face_.properties[i].name), ToBus(values[i]));
  return message.createReply(QVariant(all));
}

QDBusMessage BusObject::MethodCall(const QDBusMessage& message) {
  const std::string name = message.member().toStdString();
  const Method* method = face_.FindMethod(name);
  if (!method) {
    // A property called as a method is still no method.
    return Refusal(message, Failure::UnknownMember, "No method " + name + " in " + face_.name, false);
  }
  const QVariantList given = message.arguments();
  if (static_cast<std::size_t>(given.size()) != method->in.size()) return WrongArguments(message);
  std::vector<MemberValue> args;
  for (std::size_t i = 0; i < method->in.size(); ++i) {
    std::optional<MemberValue> arg = FromBus(given[static_cast<qsizetype>(i)], method->in[i].type);
    if (!arg) return WrongArguments(message);
    args.push_back(std::move(*arg));
  }
  const Outcome outcome = automation_.Invoke(face_, name, args, message.service().toStdString());
  if (!outcome.Ok()) return Refusal(message, outcome, false);
  QVariantList results;
  for (const MemberValue& value : outcome.results) results.append(ToBus(value));
  return message.createReply(results);
}

}  // namespace nbx
