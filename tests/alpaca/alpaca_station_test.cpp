// The station on the network, end to end: nbx-boxsim on a pseudo-terminal,
// the headless station as its own program, Alpaca over real HTTP and UDP.

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QJsonArray>
#include <csignal>
#include <memory>
#include <thread>

#include "alpaca_client.h"
#include "support/station_programs.h"

namespace nbx::test {
namespace {

const std::vector<std::string> FittedBox{"sky=-30",          "ambient=12",      "humidity=55",
                                         "humidityfitted=1", "pressure=1005",   "pressurefitted=1",
                                         "wind=36",          "windfitted=1",    "rain=3300"};

class AlpacaStation : public ::testing::Test {
 protected:
  void Start(const IniSections& changes = {}) {
    IniSections settings = LinkSettings(box.link, changes);
    settings["Alpaca"] = {{"Enabled", "1"},
                          {"Port", std::to_string(port)},
                          {"DiscoveryPort", std::to_string(discoveryPort)}};
    station = std::make_unique<StationProgram>(dir, settings);
    ASSERT_TRUE(station->NextCycle(line)) << ReadFile(station->errors);
  }

  HttpReply Get(const std::string& target) { return Http(port, "GET", target); }
  HttpReply Put(const std::string& target, const std::string& body) { return Http(port, "PUT", target, body); }
  double Number(const std::string& member) {
    return Get("/api/v1/observingconditions/0/" + member).json["Value"].toDouble(-999);
  }
  int ErrorOf(const std::string& device, const std::string& member) {
    return Get("/api/v1/" + device + "/0/" + member).json["ErrorNumber"].toInt(-1);
  }
  bool IsSafe() { return Get("/api/v1/safetymonitor/0/issafe").json["Value"].toBool(); }

  TempDir dir;
  BoxProgram box{dir, FittedBox};
  int port = FreePort(SOCK_STREAM);
  int discoveryPort = FreePort(SOCK_DGRAM);
  std::unique_ptr<StationProgram> station;
  std::string line;
};

double Celsius(double fahrenheit) { return (fahrenheit - 32) * 5 / 9; }

TEST_F(AlpacaStation, IsFoundByDiscoveryAndGivesTheBoxsValuesInAscomUnits) {
  ASSERT_TRUE(box.ready);
  Start({{"Window", {{"UnitsTemp0", "False"}, {"UnitsTemp", "True"}}},
         {"Limit", {{"UnitsSpeed0", "False"}, {"UnitsSpeed1", "True"}}}});
  // The wind is a running mean: wait until it has settled at 36 km/h.
  ASSERT_TRUE(station->CycleWhere([](const std::string& l) { return std::abs(test::Number(l, "wind") - 22.4) < 0.1; },
                                  12, line))
      << line;

  EXPECT_EQ(Discover(discoveryPort), port);
  EXPECT_EQ(Get("/management/apiversions").json["Value"].toArray(), QJsonArray{1});
  const QJsonArray devices = Get("/management/v1/configureddevices").json["Value"].toArray();
  ASSERT_EQ(devices.size(), 2);
  EXPECT_EQ(devices[0]["DeviceType"], "SafetyMonitor");
  EXPECT_EQ(devices[1]["DeviceType"], "ObservingConditions");
  EXPECT_NE(devices[0]["UniqueID"], devices[1]["UniqueID"]);

  for (const auto& [device, version] : {std::pair{"safetymonitor", 3}, {"observingconditions", 2}}) {
    const std::string base = std::string("/api/v1/") + device + "/0/";
    EXPECT_EQ(Get(base + "connected").json["Value"], false) << device;
    EXPECT_EQ(Get(base + "interfaceversion").json["Value"], version) << device;
    EXPECT_EQ(Get(base + "name").json["Value"], "NBX Nimbometer") << device;
    EXPECT_EQ(Get(base + "supportedactions").json["Value"], QJsonArray()) << device;
    EXPECT_EQ(Get(base + "connecting").json["Value"], false) << device;
    for (const char* text : {"description", "driverinfo", "driverversion"})
      EXPECT_FALSE(Get(base + text).json["Value"].toString().isEmpty()) << device << " " << text;
    EXPECT_EQ(Put(base + "connect", "").json["ErrorNumber"], 0) << device;
    EXPECT_EQ(Get(base + "connected").json["Value"], true) << device;
    EXPECT_EQ(Put(base + "disconnect", "").json["ErrorNumber"], 0) << device;
    EXPECT_EQ(Get(base + "connected").json["Value"], false) << device;
    EXPECT_EQ(Put(base + "connected", "Connected=True").json["ErrorNumber"], 0) << device;
    EXPECT_EQ(Get(base + "connected").json["Value"], true) << device;
  }

  // The station shows ºF and mph; Alpaca gives ºC, m/s and the box's own hPa.
  EXPECT_NEAR(Number("temperature"), 12, 0.2);
  EXPECT_NEAR(Number("temperature"), Celsius(test::Number(line, "ambient")), 0.1);
  EXPECT_NEAR(Number("skytemperature"), Celsius(test::Number(line, "sky")), 0.1);
  EXPECT_NEAR(Number("dewpoint"), Celsius(test::Number(line, "dew")), 0.1);
  EXPECT_NEAR(Number("humidity"), 55, 0.5);
  EXPECT_NEAR(Number("pressure"), 1005, 0.5);
  EXPECT_NEAR(Number("windspeed"), 10, 0.05);
  EXPECT_NEAR(Number("windgust"), test::Number(line, "gust") * 0.44704, 0.05);
  EXPECT_EQ(Number("rainrate"), 0);
  EXPECT_GE(Number("timesincelastupdate"), 0);
  for (const char* missing : {"skybrightness", "skyquality", "cloudcover", "starfwhm", "winddirection"})
    EXPECT_EQ(ErrorOf("observingconditions", missing), 0x400) << missing;

  // Another start of the same installation gives its devices the same IDs.
  station->process.Signal(SIGTERM);
  ASSERT_EQ(station->process.Wait(10s), 0);
  Start();
  EXPECT_EQ(Get("/management/v1/configureddevices").json["Value"].toArray(), devices);
}

TEST_F(AlpacaStation, AnswersEveryRequestWithItsStatusAndErrorNumber) {
  ASSERT_TRUE(box.ready);
  Start();
  ASSERT_EQ(Put("/api/v1/observingconditions/0/connected", "Connected=true").status, 200);
  ASSERT_EQ(Put("/api/v1/safetymonitor/0/connected", "Connected=true").status, 200);
  // A client that never finishes its request holds nobody up, and not for long.
  HalfRequest slow(port, "GET /api/v1/safetymonitor/0/iss");
  struct Row {
    const char* method;
    const char* target;
    const char* body;
    int status;
    int error;  // ErrorNumber of a 200
  };
  const Row rows[] = {
      {"GET", "/api/v1/safetymonitor/0/issafe?ClientID=3", "", 200, 0},
      {"GET", "/api/v1/safetymonitor/0/name?clientid=3&CLIENTTRANSACTIONID=9", "", 200, 0},
      {"GET", "/api/v1/SafetyMonitor/0/issafe", "", 400, 0},
      {"GET", "/api/v1/telescope/0/name", "", 400, 0},
      {"GET", "/api/v1/safetymonitor/1/name", "", 400, 0},
      {"GET", "/api/v1/safetymonitor/x/name", "", 400, 0},
      {"GET", "/api/v1/safetymonitor/0/skytemperature", "", 400, 0},
      {"GET", "/api/v2/safetymonitor/0/name", "", 400, 0},
      {"GET", "/management/v1/nothing", "", 400, 0},
      {"PUT", "/api/v1/safetymonitor/0/issafe", "", 400, 0},
      {"GET", "/api/v1/safetymonitor/0/connect", "", 400, 0},
      {"DELETE", "/api/v1/safetymonitor/0/connected", "", 400, 0},
      {"PUT", "/api/v1/safetymonitor/0/connected", "", 400, 0},
      {"PUT", "/api/v1/safetymonitor/0/connected", "connected=true", 400, 0},
      {"PUT", "/api/v1/safetymonitor/0/connected", "Connected=maybe", 400, 0},
      {"PUT", "/api/v1/safetymonitor/0/connected", "Connected=true&Connected=false", 400, 0},
      {"PUT", "/api/v1/safetymonitor/0/commandblind", "Command=x&Raw=false", 200, 0x400},
      {"PUT", "/api/v1/observingconditions/0/commandstring", "Command=x&Raw=true", 200, 0x400},
      {"PUT", "/api/v1/safetymonitor/0/commandbool", "Command=x", 400, 0},
      {"PUT", "/api/v1/safetymonitor/0/action", "Action=open&Parameters=", 200, 0x40C},
      {"PUT", "/api/v1/observingconditions/0/averageperiod", "AveragePeriod=0", 200, 0},
      {"PUT", "/api/v1/observingconditions/0/averageperiod", "AveragePeriod=0.5", 200, 0x401},
      {"PUT", "/api/v1/observingconditions/0/averageperiod", "AveragePeriod=-1", 200, 0x401},
      {"PUT", "/api/v1/observingconditions/0/averageperiod", "AveragePeriod=half", 400, 0},
      {"PUT", "/api/v1/observingconditions/0/refresh", "", 200, 0},
      {"GET", "/api/v1/observingconditions/0/sensordescription?SensorName=Temperature", "", 200, 0},
      {"GET", "/api/v1/observingconditions/0/sensordescription?sensorname=Moon", "", 200, 0x401},
      {"GET", "/api/v1/observingconditions/0/sensordescription?SensorName=StarFWHM", "", 200, 0x400},
      {"GET", "/api/v1/observingconditions/0/timesincelastupdate?SensorName=a&SensorName=b", "", 400, 0},
      {"GET", "/api/v1/observingconditions/0/devicestate", "", 200, 0},
      {"PUT", "/api/v1/observingconditions/0/disconnect", "", 200, 0},
      {"GET", "/api/v1/observingconditions/0/temperature", "", 200, 0x407},
      {"GET", "/api/v1/observingconditions/0/averageperiod", "", 200, 0x407},
      {"GET", "/setup", "", 200, 0},
      {"GET", "/setup/v1/observingconditions/0/setup", "", 200, 0},
  };
  double lastServerTransaction = 0;
  for (const Row& row : rows) {
    const HttpReply reply = Http(port, row.method, row.target, row.body);
    const std::string what = std::string(row.method) + " " + row.target + " " + row.body + ": " + reply.body;
    EXPECT_EQ(reply.status, row.status) << what;
    if (reply.status != 200 || row.target[1] != 'a') continue;
    EXPECT_EQ(reply.json["ErrorNumber"].toInt(-1), row.error) << what;
    EXPECT_GT(reply.json["ServerTransactionID"].toDouble(), lastServerTransaction) << what;
    lastServerTransaction = reply.json["ServerTransactionID"].toDouble();
  }

  // The client's transaction number comes back; one that is not a number is 0.
  for (const auto& [query, echoed] : {std::pair{"ClientTransactionID=42", 42}, {"clienttransactionid=7", 7},
                                      {"ClientTransactionID=-5", 0}, {"ClientTransactionID=x", 0},
                                      {"ClientTransactionID=4294967296", 0}})
    EXPECT_EQ(Get(std::string("/api/v1/safetymonitor/0/name?") + query).json["ClientTransactionID"], echoed)
        << query;
  EXPECT_EQ(Put("/api/v1/safetymonitor/0/connected", "Connected=true&ClientTransactionID=11")
                .json["ClientTransactionID"],
            11);

  // A body past the limit loses its connection; the server and the beat go on.
  EXPECT_EQ(Put("/api/v1/safetymonitor/0/connected", "Connected=true&x=" + std::string(200000, 'a')).status, 0);
  EXPECT_EQ(Http(port, "BREW", "not a request", "").status, 0);
  EXPECT_EQ(Get("/api/v1/safetymonitor/0/issafe").status, 200);
  EXPECT_TRUE(station->NextCycle(line));
  EXPECT_TRUE(slow.ClosedWithin(15000));
}

TEST_F(AlpacaStation, IsSafeFollowsTheVerdictAndFailsWhenTheBoxFallsSilent) {
  ASSERT_TRUE(box.ready);
  ASSERT_TRUE(box.Tell("skyraw=-1500"));
  Start({{"Window", {{"CloudTempFactor", "False"}, {"SafeDelayVal", "2"}, {"UnknownUnsafe", "0"}}}});
  const auto safe = [](const std::string& l) { return !IsUnsafe(l); };
  const auto unsafe = [](const std::string& l) { return IsUnsafe(l); };
  ASSERT_TRUE(station->CycleWhere(safe, 5, line)) << line;
  EXPECT_FALSE(IsSafe()) << "a client that has not connected reads unsafe";
  ASSERT_EQ(Put("/api/v1/safetymonitor/0/connect", "").status, 200);
  EXPECT_TRUE(IsSafe());

  ASSERT_TRUE(box.Tell("skyraw=500"));
  ASSERT_TRUE(station->CycleWhere(unsafe, 5, line)) << line;
  EXPECT_FALSE(IsSafe());
  ASSERT_TRUE(box.Tell("skyraw=-1500"));
  ASSERT_TRUE(station->CycleWhere(safe, 10, line)) << line;
  EXPECT_TRUE(IsSafe());

  // Silent: within a few missed periods the verdict is no longer vouched for.
  ASSERT_TRUE(box.Tell("silent=1"));
  bool turnedUnsafe = false;
  for (int i = 0; i < 60 && !turnedUnsafe; ++i) {
    turnedUnsafe = !IsSafe();
    if (!turnedUnsafe) std::this_thread::sleep_for(500ms);
  }
  EXPECT_TRUE(turnedUnsafe);
  ASSERT_EQ(Put("/api/v1/observingconditions/0/connect", "").status, 200);
  EXPECT_EQ(ErrorOf("observingconditions", "temperature"), 0x40B);
}

}  // namespace
}  // namespace nbx::test
