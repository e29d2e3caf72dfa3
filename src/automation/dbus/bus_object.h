#pragma once

#include <QDBusVirtualObject>
#include <functional>

#include "automation/automation.h"

namespace nbx {

// One object of the bus: the members of one interface, served by the
// automation object. Properties come through the standard properties
// interface, members with arguments and Subs as methods; every wrong call
// gets an error reply, and each call runs to its end before the next event.
class BusObject : public QDBusVirtualObject {
 public:
  // `afterCall` runs after each call that reached a member.
  BusObject(Automation& automation, const Interface& face, std::function<void()> afterCall);

  QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QDBusMessage PropertyCall(const QDBusMessage& message);
  QDBusMessage Get(const QDBusMessage& message);
  QDBusMessage Set(const QDBusMessage& message);
  QDBusMessage GetAll(const QDBusMessage& message);
  QDBusMessage MethodCall(const QDBusMessage& message);
  bool IsOurs(const QString& interface) const;

  Automation& automation_;
  const Interface& face_;
  std::function<void()> afterCall_;
};

}  // namespace nbx
