// The object as the bus shows it: every member of the description in the
// source tree, read with its type, and error replies for wrong calls.

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <limits>

#include "bus_fixture.h"
#include "interface_shape.h"
#include "support/child_process.h"

namespace nbx {
namespace {

using test::BusClient;

const QString Nimbometer = QStringLiteral("NBX_Nimbometer.Nimbometer");
const QString Form = QStringLiteral("NBX_Nimbometer.NBXNimbometerForm");

QString Introspect(BusClient& client, const QString& path) {
  const QDBusMessage reply = client.CallOn(path, QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                           QStringLiteral("Introspect"));
  return reply.arguments().value(0).toString();
}

std::string SignatureOf(const QVariant& value) {
  if (value.canConvert<QDBusArgument>())
    return qvariant_cast<QDBusArgument>(value).currentSignature().toStdString();
  const char* signature = QDBusMetaType::typeToSignature(value.metaType());
  return signature ? signature : "?";
}

QString ErrorOf(const QDBusMessage& reply) {
  return reply.type() == QDBusMessage::ErrorMessage ? reply.errorName() : QStringLiteral("no error");
}

using AutomationInterface = test::OnTheBusRunning;

// The description in the source tree is the list clients are written
// against: a member missing from the object, or of another type or access,
// fails here.
TEST_F(AutomationInterface, TheBusDescribesAndReadsExactlyTheDescriptionInTheSourceTree) {
  const auto expected = test::ReadShapes(QString::fromStdString(test::ReadFile(NBX_AUTOMATION_XML)), "/");
  for (const auto& [path, face] : {std::pair{QStringLiteral("/Nimbometer"), Nimbometer},
                                   std::pair{QStringLiteral("/Nimbometer/Form"), Form}}) {
    const std::string key = path.toStdString() + "|" + face.toStdString();
    const auto& shape = expected.at(key);
    EXPECT_EQ(test::ReadShapes(Introspect(client, path), path.toStdString()).at(key).members, shape.members);
    for (const auto& [name, type] : shape.propertyTypes) {
      const QVariant value = client.Get(QString::fromStdString(name), path, face);
      ASSERT_TRUE(value.isValid()) << name;
      EXPECT_EQ(SignatureOf(value), type) << name;
    }
  }
  EXPECT_GT(expected.at("/Nimbometer|NBX_Nimbometer.Nimbometer").propertyTypes.size(), 120u);
  EXPECT_TRUE(Introspect(client, "/Nimbometer").contains(QStringLiteral("<node name=\"Form\"/>")));
  // Reads through the window object reach what the class does not offer.
  EXPECT_EQ(client.Get("NBX_HumidityCondition", "/Nimbometer/Form", Form).toInt(), s.NBX_HumidityCondition);
  EXPECT_EQ(client.Get("MForm").value<QDBusObjectPath>().path(), QStringLiteral("/Nimbometer/Form"));
}

TEST_F(AutomationInterface, WrongCallsGetErrorRepliesAndTheCyclesGoOn) {
  // The bus's own errors by their last word, ours by their whole name.
  const auto error = [](const QDBusMessage& reply) {
    return ErrorOf(reply).remove(QStringLiteral("org.freedesktop.DBus.Error."));
  };
  EXPECT_EQ(error(client.Call("NoSuchMember")), "UnknownMethod");
  EXPECT_EQ(error(client.Call("Safe")), "UnknownMethod");
  EXPECT_EQ(error(client.Call("NBX_GraphArrayFirstElem", {QStringLiteral("one")})), "InvalidArgs");
  EXPECT_EQ(error(client.Call("NBX_GraphArrayFirstElem")), "InvalidArgs");
  EXPECT_EQ(error(client.Call("SetUnSafe", {true, true})), "InvalidArgs");
  EXPECT_EQ(error(client.Call("NBX_SetSwitch", {QVariant::fromValue<qlonglong>(1LL << 40)})), "InvalidArgs");
  EXPECT_EQ(error(client.Call("Detach")), "NBX_Nimbometer.Error.NotAttached");
  EXPECT_EQ(error(client.CallOn("/Nimbometer", "NBX_Nimbometer.Other", "Safe")), "UnknownInterface");

  const double before = c.RainLimit[0];
  EXPECT_EQ(error(client.Set("ThreshRainDry", QStringLiteral("3000"))), "InvalidArgs");
  EXPECT_EQ(error(client.Set("ThreshRainDry", std::numeric_limits<double>::quiet_NaN())), "InvalidArgs");
  EXPECT_EQ(error(client.Set("FileName", 5)), "InvalidArgs");
  EXPECT_EQ(error(client.Set("Safe", true)), "PropertyReadOnly");
  EXPECT_EQ(error(client.Set("NoSuchProperty", 1)), "UnknownProperty");
  EXPECT_FALSE(client.Get("NoSuchProperty").isValid());
  EXPECT_EQ(c.RainLimit[0], before);
  // A number is taken where a number is wanted, whatever its width.
  EXPECT_EQ(ErrorOf(client.Set("ThreshRainDry", 3300)), "no error");
  EXPECT_EQ(c.RainLimit[0], 3300);
  EXPECT_EQ(ErrorOf(client.Set("AlarmSuspendSound", QVariant::fromValue<uchar>(1))), "no error");
  EXPECT_EQ(c.SuspendSoundAlarm, 1);

  s.NBX_DataReady = false;
  station.st.RunPeriods(1);
  EXPECT_TRUE(client.Get("DataReady").toBool());
}

TEST_F(AutomationInterface, SafetyOptionsTakeTheInterfacesAsGuidTexts) {
  const QString dispatch = QStringLiteral("{00020400-0000-0000-C000-000000000046}");
  const QString stream = QStringLiteral("{00000109-0000-0000-C000-000000000046}");
  const auto options = [&](const QString& riid) {
    return client.Call("GetInterfaceSafetyOptions", {riid}).arguments();
  };
  EXPECT_EQ(options(dispatch), (QVariantList{3, 0}));
  ASSERT_EQ(ErrorOf(client.Call("SetInterfaceSafetyOptions", {dispatch, 1, 1})), "no error");
  EXPECT_EQ(options(dispatch), (QVariantList{3, 1}));
  EXPECT_EQ(options(stream), (QVariantList{3, 0}));
  client.Call("SetInterfaceSafetyOptions", {QStringLiteral("37d84f60-42cb-11ce-8135-00aa004bb851"), 2, 2});
  EXPECT_EQ(options(stream), (QVariantList{3, 2}));
  // Another interface, or an option outside the interface's, is not supported.
  const QDBusMessage unknown =
      client.Call("GetInterfaceSafetyOptions", {QStringLiteral("{00000000-0000-0000-C000-000000000046}")});
  EXPECT_EQ(ErrorOf(unknown), "NBX_Nimbometer.Error.NoInterface");
  EXPECT_TRUE(unknown.errorMessage().contains(QStringLiteral("0x80004002")));
  EXPECT_EQ(ErrorOf(client.Call("SetInterfaceSafetyOptions", {dispatch, 2, 2})),
            "NBX_Nimbometer.Error.NoInterface");
  EXPECT_EQ(options(dispatch), (QVariantList{3, 1}));
}

}  // namespace
}  // namespace nbx
