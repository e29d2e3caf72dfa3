#include "automation/dbus/bus_values.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QList>
#include <cmath>
#include <limits>

#include "core/number_format.h"

namespace nbx {
namespace {

using HistoryRows = QList<QList<double>>;

// The value of an integer of any width from the bus, or none for another type.
std::optional<long double> IntegerOf(const QVariant& v) {
  switch (v.metaType().id()) {
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
      return static_cast<long double>(v.toLongLong());
    case QMetaType::ULongLong:
      return static_cast<long double>(v.toULongLong());
    default:
      return std::nullopt;
  }
}

// A number from the bus: an integer, or a finite floating-point value.
std::optional<long double> NumberOf(const QVariant& v) {
  if (v.metaType().id() == QMetaType::Double) {
    const double d = v.toDouble();
    if (!std::isfinite(d)) return std::nullopt;
    return static_cast<long double>(d);
  }
  return IntegerOf(v);
}

template <typename T>
std::optional<MemberValue> WholeOf(const QVariant& v) {
  const std::optional<long double> n = NumberOf(v);
  if (!n) return std::nullopt;
  const long double whole =
      v.metaType().id() == QMetaType::Double ? RoundHalfEven(static_cast<double>(*n)) : *n;
  if (whole < std::numeric_limits<T>::min() || whole > std::numeric_limits<T>::max()) return std::nullopt;
  return MemberValue(static_cast<T>(whole));
}

}  // namespace

void RegisterBusTypes() { qDBusRegisterMetaType<HistoryRows>(); }

QVariant ToBus(const MemberValue& value) {
  switch (static_cast<ValueType>(value.index())) {
    case ValueType::Boolean:
      return QVariant(std::get<bool>(value));
    case ValueType::Integer:
      return QVariant::fromValue<short>(std::get<std::int16_t>(value));
    case ValueType::Long:
      return QVariant(static_cast<int>(std::get<std::int32_t>(value)));
    case ValueType::Double:
      return QVariant(std::get<double>(value));
    case ValueType::Text:
      return QVariant(QString::fromStdString(std::get<std::string>(value)));
    case ValueType::HistoryArray: {
      HistoryRows rows;
      for (const std::vector<double>& row : std::get<HistoryArray>(value))
        rows.append(QList<double>(row.begin(), row.end()));
      return QVariant::fromValue(rows);
    }
    case ValueType::Object:
      break;
  }
  return QVariant::fromValue(QDBusObjectPath(QString::fromStdString(std::get<ObjectPath>(value).path)));
}

std::optional<MemberValue> FromBus(const QVariant& value, ValueType type) {
  switch (type) {
    case ValueType::Boolean: {
      if (value.metaType().id() == QMetaType::Bool) return MemberValue(value.toBool());
      const std::optional<long double> n = IntegerOf(value);
      if (!n) return std::nullopt;
      return MemberValue(*n != 0);
    }
    case ValueType::Integer:
      return WholeOf<std::int16_t>(value);
    case ValueType::Long:
      return WholeOf<std::int32_t>(value);
    case ValueType::Double: {
      const std::optional<long double> n = NumberOf(value);
      if (!n) return std::nullopt;
      return MemberValue(static_cast<double>(*n));
    }
    case ValueType::Text:
      if (value.metaType().id() != QMetaType::QString) return std::nullopt;
      return MemberValue(value.toString().toStdString());
    case ValueType::HistoryArray:
    case ValueType::Object:
      break;
  }
  return std::nullopt;
}

}  // namespace nbx
