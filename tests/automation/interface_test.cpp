// The object as the bus shows it: every member of the description in the
// source tree, read with its type, and error replies for wrong calls.

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <cmath>
#include <limits>

#include "bus_fixture.h"
#include "interface_shape.h"
#include "support/child_process.h"

namespace nbx {
namespace {

using test::BusClient;
using test::ServedStation;

const QString Nimbometer = QStringLiteral("NBX_Nimbometer.Nimbometer");
const QString Form = QStringLiteral("NBX_Nimbometer.NBXNimbometerForm");

std::map<std::string, test::InterfaceShape> SourceTreeShapes() {
  return test::ReadShapes(QString::fromStdString(test::ReadFile(NBX_AUTOMATION_XML)), "/");
}

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

class AutomationInterface : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(station.registered) << station.registerError.toStdString();
    ASSERT_TRUE(client.Connected()) << "no session bus: run inside dbus-run-session";
    station.st.StartAndRunFirstCycles();
  }
  ServedStation station;
  BusClient client;
};

// The description in the source tree is the list clients are written
// against: a name missing from the object, or of another type, fails here.
TEST_F(AutomationInterface, EveryPropertyOfTheDescriptionReadsOnceWithItsType) {
  const auto shapes = SourceTreeShapes();
  const auto& object = shapes.at("/Nimbometer|NBX_Nimbometer.Nimbometer");
  const auto& form = shapes.at("/Nimbometer/Form|NBX_Nimbometer.NBXNimbometerForm");
  ASSERT_GT(object.propertyTypes.size(), 120u);
  for (const auto& [path, face, properties] :
       {std::tuple{QStringLiteral("/Nimbometer"), Nimbometer, &object.propertyTypes},
        std::tuple{QStringLiteral("/Nimbometer/Form"), Form, &form.propertyTypes}}) {
    for (const auto& [name, type] : *properties) {
      const QVariant value = client.Get(QString::fromStdString(name), path, face);
      ASSERT_TRUE(value.isValid()) << name;
      EXPECT_EQ(SignatureOf(value), type) << name;
    }
  }
  // Reads through the window object reach what the class does not offer.
  EXPECT_EQ(client.Get("NBX_HumidityCondition", "/Nimbometer/Form", Form).toInt(),
            station.nm.state.NBX_HumidityCondition);
  EXPECT_EQ(client.Get("MForm").value<QDBusObjectPath>().path(), QStringLiteral("/Nimbometer/Form"));
}

TEST_F(AutomationInterface, TheBusDescribesExactlyTheDescriptionInTheSourceTree) {
  const auto expected = SourceTreeShapes();
  const auto object = test::ReadShapes(Introspect(client, "/Nimbometer"), "/Nimbometer");
  const auto form = test::ReadShapes(Introspect(client, "/Nimbometer/Form"), "/Nimbometer/Form");
  EXPECT_EQ(object.at("/Nimbometer|NBX_Nimbometer.Nimbometer").members,
            expected.at("/Nimbometer|NBX_Nimbometer.Nimbometer").members);
  EXPECT_EQ(form.at("/Nimbometer/Form|NBX_Nimbometer.NBXNimbometerForm").members,
            expected.at("/Nimbometer/Form|NBX_Nimbometer.NBXNimbometerForm").members);
  EXPECT_TRUE(Introspect(client, "/Nimbometer").contains(QStringLiteral("<node name=\"Form\"/>")));
}

TEST_F(AutomationInterface, WrongCallsGetErrorRepliesAndTheCyclesGoOn) {
  const auto error = [&](const QString& member, const QVariantList& args) {
    return ErrorOf(client.Call(member, args));
  };
  EXPECT_EQ(error("NoSuchMember", {}), "org.freedesktop.DBus.Error.UnknownMethod");
  EXPECT_EQ(error("Safe", {}), "org.freedesktop.DBus.Error.UnknownMethod");
  EXPECT_EQ(error("NBX_GraphArrayFirstElem", {QStringLiteral("one")}),
            "org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(error("NBX_GraphArrayFirstElem", {}), "org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(error("SetUnSafe", {true, true}), "org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(error("NBX_SetSwitch", {QVariant::fromValue<qlonglong>(1LL << 40)}),
            "org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(error("Detach", {}), "NBX_Nimbometer.Error.NotAttached");
  EXPECT_EQ(ErrorOf(client.CallOn("/Nimbometer", "NBX_Nimbometer.Other", "Safe")),
            "org.freedesktop.DBus.Error.UnknownInterface");

  const double before = station.nm.config.RainLimit[0];
  EXPECT_EQ(ErrorOf(client.Set("ThreshRainDry", QStringLiteral("3000"))),
            "org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(ErrorOf(client.Set("ThreshRainDry", std::numeric_limits<double>::quiet_NaN())),
            "org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(ErrorOf(client.Set("FileName", 5)), "org.freedesktop.DBus.Error.InvalidArgs");
  EXPECT_EQ(ErrorOf(client.Set("Safe", true)), "org.freedesktop.DBus.Error.PropertyReadOnly");
  EXPECT_EQ(ErrorOf(client.Set("NoSuchProperty", 1)), "org.freedesktop.DBus.Error.UnknownProperty");
  EXPECT_FALSE(client.Get("NoSuchProperty").isValid());
  EXPECT_EQ(station.nm.config.RainLimit[0], before);
  // A number is taken where a number is wanted, whatever its width.
  EXPECT_EQ(ErrorOf(client.Set("ThreshRainDry", 3300)), "no error");
  EXPECT_EQ(station.nm.config.RainLimit[0], 3300);
  EXPECT_EQ(ErrorOf(client.Set("AlarmSuspendSound", QVariant::fromValue<uchar>(1))), "no error");
  EXPECT_EQ(station.nm.config.SuspendSoundAlarm, 1);

  station.nm.state.NBX_DataReady = false;
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
