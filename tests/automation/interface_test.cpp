// The object as the bus shows it: every member of the description in the
// source tree, read with its type, and error replies for wrong calls.

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QXmlStreamReader>
#include <limits>
#include <map>

#include "bus_fixture.h"

namespace nbx {
namespace {

const QString Nimbometer = QStringLiteral("NBX_Nimbometer.Nimbometer");
const QString Form = QStringLiteral("NBX_Nimbometer.NBXNimbometerForm");

// What a description says of one interface: a line per member ("property
// Safe b read", "method NBX_LocalControl in b flg, in s sLabel,") and the
// property types by name.
struct Shape {
  std::vector<std::string> members;
  std::map<std::string, std::string> types;
};

Shape ReadShape(const QString& xml, const QString& interface) {
  Shape shape;
  bool inside = false;
  QXmlStreamReader reader(xml);
  while (!reader.atEnd()) {
    reader.readNext();
    const auto tag = reader.name();
    const auto attr = [&](const char* name) {
      return reader.attributes().value(QLatin1String(name)).toString().toStdString();
    };
    if (tag == u"interface") inside = reader.isStartElement() && attr("name") == interface.toStdString();
    if (!inside || !reader.isStartElement()) continue;
    if (tag == u"property") {
      shape.members.push_back("property " + attr("name") + " " + attr("type") + " " + attr("access"));
      shape.types[attr("name")] = attr("type");
    } else if (tag == u"method") {
      shape.members.push_back("method " + attr("name"));
    } else if (tag == u"arg") {
      shape.members.back() += " " + attr("direction") + " " + attr("type") + " " + attr("name") + ",";
    }
  }
  return shape;
}

std::string SignatureOf(const QVariant& value) {
  if (value.canConvert<QDBusArgument>())
    return qvariant_cast<QDBusArgument>(value).currentSignature().toStdString();
  const char* signature = QDBusMetaType::typeToSignature(value.metaType());
  return signature ? signature : "?";
}

// The bus's own errors by their last word, ours by their whole name.
QString ErrorOf(const QDBusMessage& reply) {
  return reply.type() == QDBusMessage::ErrorMessage ? reply.errorName().remove("org.freedesktop.DBus.Error.")
                                                    : QStringLiteral("no error");
}

using AutomationInterface = test::OnTheBusRunning;

// The description in the source tree is the list clients are written
// against: a member missing from the object, or of another type or access,
// fails here.
TEST_F(AutomationInterface, TheBusDescribesAndReadsExactlyTheDescriptionInTheSourceTree) {
  const QString xml = QString::fromStdString(test::ReadFile(NBX_AUTOMATION_XML));
  const auto introspect = [&](const QString& path) {
    return client.CallOn(path, "org.freedesktop.DBus.Introspectable", "Introspect").arguments().value(0).toString();
  };
  for (const auto& [path, face] : {std::pair{QStringLiteral("/Nimbometer"), Nimbometer},
                                   std::pair{QStringLiteral("/Nimbometer/Form"), Form}}) {
    const Shape expected = ReadShape(xml, face);
    EXPECT_EQ(ReadShape(introspect(path), face).members, expected.members);
    for (const auto& [name, type] : expected.types) {
      const QVariant value = client.Get(QString::fromStdString(name), path, face);
      ASSERT_TRUE(value.isValid()) << name;
      EXPECT_EQ(SignatureOf(value), type) << name;
    }
  }
  EXPECT_GT(ReadShape(xml, Nimbometer).types.size(), 120u);
  EXPECT_TRUE(introspect("/Nimbometer").contains(QStringLiteral("<node name=\"Form\"/>")));
  // Reads through the window object reach what the class does not offer.
  EXPECT_EQ(client.Get("NBX_HumidityCondition", "/Nimbometer/Form", Form).toInt(), s.NBX_HumidityCondition);
  EXPECT_EQ(client.Get("MForm").value<QDBusObjectPath>().path(), QStringLiteral("/Nimbometer/Form"));
}

// The safety options take the interfaces as GUID texts; another interface,
// or an option outside the interface's, is not supported.
TEST_F(AutomationInterface, WrongCallsGetErrorRepliesAndTheCyclesGoOn) {
  const double dry = c.RainLimit[0];
  const QString dispatch = QStringLiteral("{00020400-0000-0000-C000-000000000046}");
  const std::pair<QDBusMessage, const char*> rows[] = {
      {client.Call("GetInterfaceSafetyOptions", {QStringLiteral("{00000000-0000-0000-C000-000000000046}")}),
       "NBX_Nimbometer.Error.NoInterface"},
      {client.Call("SetInterfaceSafetyOptions", {dispatch, 2, 2}), "NBX_Nimbometer.Error.NoInterface"},
      {client.Call("NoSuchMember"), "UnknownMethod"},
      {client.Call("NBX_GraphArrayFirstElem", {QStringLiteral("one")}), "InvalidArgs"},
      {client.Call("NBX_GraphArrayFirstElem"), "InvalidArgs"},
      {client.Call("NBX_SetSwitch", {QVariant::fromValue<qlonglong>(1LL << 40)}), "InvalidArgs"},
      {client.Call("Detach"), "NBX_Nimbometer.Error.NotAttached"},
      {client.CallOn("/Nimbometer", "NBX_Nimbometer.Other", "Safe"), "UnknownInterface"},
      {client.Set("ThreshRainDry", QStringLiteral("3000")), "InvalidArgs"},
      {client.Set("ThreshRainDry", std::numeric_limits<double>::quiet_NaN()), "InvalidArgs"},
      {client.Set("Safe", true), "PropertyReadOnly"},
      {client.Set("NoSuchProperty", 1), "UnknownProperty"},
      // A number is taken where a number is wanted, whatever its width.
      {client.Set("AlarmSuspendSound", QVariant::fromValue<uchar>(1)), "no error"},
  };
  for (const auto& [reply, error] : rows) EXPECT_EQ(ErrorOf(reply), error) << reply.errorMessage().toStdString();
  EXPECT_TRUE(rows[0].first.errorMessage().contains(QStringLiteral("0x80004002")));
  EXPECT_EQ(c.RainLimit[0], dry);
  EXPECT_EQ(c.SuspendSoundAlarm, 1);
  EXPECT_EQ(ErrorOf(client.Set("ThreshRainDry", 3300)), "no error");
  EXPECT_EQ(c.RainLimit[0], 3300);

  const auto options = [&](const QString& riid) {
    return client.Call("GetInterfaceSafetyOptions", {riid}).arguments();
  };
  EXPECT_EQ(options(dispatch), (QVariantList{3, 0}));
  EXPECT_EQ(ErrorOf(client.Call("SetInterfaceSafetyOptions", {dispatch, 1, 1})), "no error");
  client.Call("SetInterfaceSafetyOptions", {QStringLiteral("37d84f60-42cb-11ce-8135-00aa004bb851"), 2, 2});
  EXPECT_EQ(options(dispatch), (QVariantList{3, 1}));
  EXPECT_EQ(options(QStringLiteral("{00000109-0000-0000-C000-000000000046}")), (QVariantList{3, 2}));

  s.NBX_DataReady = false;
  station.st.RunPeriods(1);
  EXPECT_TRUE(client.Get("DataReady").toBool());
}

}  // namespace
}  // namespace nbx
