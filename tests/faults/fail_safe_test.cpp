// No SAFE and no good data without a whole reading: the real program on
// ports that never open and on a box that answers only in part, seen
// through its summary lines, its single-line file and its object on the bus.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSerialPort>
#include <filesystem>
#include <functional>
#include <memory>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

namespace fs = std::filesystem;

// A property of the running station's object, as gdbus prints it: "(<true>,)".
std::string BusProperty(const std::string& property) {
  const std::string name = "NBX_Nimbometer.Nimbometer";
  // Its complaint while the name is not on the bus yet is of no interest.
  ChildProcess gdbus("/bin/sh", {"-c", "exec gdbus \"$@\" 2>/dev/null", "gdbus", "call", "--session", "--dest",
                                 name, "--object-path", "/Nimbometer", "--method",
                                 "org.freedesktop.DBus.Properties.Get", name, property});
  std::string line, out;
  while (gdbus.ReadLine(line, 10s)) out += line;
  gdbus.Wait(5s);
  return out;
}

// The first answer of the object, once the station has put it on the bus.
std::string FirstBusAnswer(const std::string& property) {
  std::string answer;
  for (int i = 0; i < 100 && answer.empty(); ++i) answer = BusProperty(property);
  return answer;
}

bool IsSafe(const std::string& summary) { return summary.find("  SAFE") != std::string::npos; }

// Every channel says UNSAFE and no good data: the line, the bus, the single-line file.
void ExpectGivenUpEverywhere(const std::string& line, const std::string& singleLineFile) {
  EXPECT_TRUE(IsUnsafe(line)) << line;
  EXPECT_EQ(BusProperty("Safe"), "(<false>,)");
  EXPECT_EQ(BusProperty("SecondsSinceGoodData"), "(<1000>,)");
  const std::string record = ReadFile(singleLineFile);
  ASSERT_EQ(record.size(), 104u) << record;
  EXPECT_EQ(record.substr(74, 5), "01000") << record;
  EXPECT_EQ(record.substr(101, 3), "1 1") << record;
}

void ExpectBackSafe(StationProgram& station) {
  std::string line;
  EXPECT_TRUE(station.CycleWhere([](const std::string& l) { return IsSafe(l) && !LinkDown(l); }, 8, line))
      << line;
  EXPECT_EQ(BusProperty("Safe"), "(<true>,)");
  EXPECT_EQ(BusProperty("SecondsSinceGoodData"), "(<3>,)");
}

// A port fault: what the station is given as its port, set up before it
// starts, and what makes the box answer there afterwards.
struct PortFault {
  const char* name;
  std::function<std::string(const TempDir&, BoxProgram&)> arrange;
  std::function<void(const std::string& port, BoxProgram&)> cure;
};

void LinkTo(const std::string& port, const BoxProgram& box) {
  fs::remove(port);
  fs::create_symlink(box.port, port);
}

TEST(FailSafe, APortThatDoesNotOpenIsGivenUpAndComesBackWhenTheBoxAnswers) {
  int argc = 1;
  char program[] = "faults_tests";
  char* argv[] = {program, nullptr};
  QCoreApplication app(argc, argv);
  std::unique_ptr<QSerialPort> holder;

  const PortFault faults[] = {
      {"no such path", [](const TempDir& dir, BoxProgram&) { return dir.File("ttyMistyped"); }, LinkTo},
      {"a plain file",
       [](const TempDir& dir, BoxProgram&) {
         WriteFile(dir.File("notaport"), "plain text\n");
         return dir.File("notaport");
       },
       LinkTo},
      {"busy, held by another program",
       [&](const TempDir&, BoxProgram& box) {
         holder = std::make_unique<QSerialPort>(QString::fromStdString(box.link));
         EXPECT_TRUE(holder->open(QIODevice::ReadWrite)) << holder->errorString().toStdString();
         return box.link;
       },
       [&](const std::string&, BoxProgram&) { holder.reset(); }},
      {"unplugged before Start",
       [](const TempDir&, BoxProgram& box) {
         EXPECT_TRUE(box.Tell("vanish"));
         return box.link;
       },
       [](const std::string&, BoxProgram& box) { EXPECT_TRUE(box.Tell("return")); }},
  };
  for (const PortFault& fault : faults) {
    SCOPED_TRACE(fault.name);
    TempDir dir;
    BoxProgram box(dir, {"sky=-25"});
    ASSERT_TRUE(box.ready);
    const std::string port = fault.arrange(dir, box);
    StationProgram station(dir, MasterSettings(port, dir.File("out")));
    EXPECT_EQ(FirstBusAnswer("Safe"), "(<false>,)");

    // Nothing can be read: no line ever says SAFE, and within the limit of
    // failed cycles (3) and one more the readings are given up.
    std::string line;
    bool givenUp = false;
    for (int cycle = 0; cycle < 4 && !givenUp && station.NextCycle(line); ++cycle) {
      EXPECT_FALSE(IsSafe(line)) << line;
      EXPECT_TRUE(LinkDown(line)) << line;
      EXPECT_EQ(BusProperty("Safe"), "(<false>,)");
      givenUp = IsUnsafe(line);
    }
    ASSERT_TRUE(givenUp) << line;
    ExpectGivenUpEverywhere(line, dir.File("out/NBX_SLD.dat"));
    EXPECT_NE(ReadFile(station.errors).find("Serial port " + port + " error: "), std::string::npos);

    fault.cure(port, box);
    ExpectBackSafe(station);
  }
}

// A link that half works just as the sky clouds over: a cable that loses
// every other reply, or a box that garbles a number in each sample frame.
// Each cycle is partly answered and none is whole, and the failures add up
// across the cycles until the station gives the readings up.
TEST(FailSafe, AHalfWorkingLinkUnderASkyCloudingOverIsGivenUp) {
  struct Row {
    const char* fault;
    const char* cure;
    bool linkDown;  // replies are missing, not only unreadable
  } rows[] = {{"everyother=1 sky=10", "everyother=0 sky=-25", true},
              {"damaged=1 sky=10", "damaged=0 sky=-25", false}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.fault);
    TempDir dir;
    BoxProgram box(dir, {"sky=-25"});
    ASSERT_TRUE(box.ready);
    // A period of 2 s leaves time to ask before the first cycle has ended.
    StationProgram station(
        dir, MasterSettings(box.link, dir.File("out"), {{"Communication", {{"RefreshPeriod", "2"}}}}));

    // Before the first decision of the run the station is not SAFE.
    EXPECT_EQ(FirstBusAnswer("Safe"), "(<false>,)");
    std::string line;
    ASSERT_TRUE(station.CycleWhere([](const std::string& l) { return IsSafe(l) && !LinkDown(l); }, 4, line))
        << line;
    EXPECT_EQ(BusProperty("SecondsSinceGoodData"), "(<3>,)");

    ASSERT_TRUE(box.Tell(row.fault));
    bool givenUp = false;
    for (int cycle = 0; cycle < 5 && !givenUp && station.NextCycle(line); ++cycle) givenUp = IsUnsafe(line);
    ASSERT_TRUE(givenUp) << line;
    EXPECT_EQ(LinkDown(line), row.linkDown) << line;
    ExpectGivenUpEverywhere(line, dir.File("out/NBX_SLD.dat"));
    // It stays so while the link half works.
    for (int cycle = 0; cycle < 4; ++cycle) {
      ASSERT_TRUE(station.NextCycle(line));
      EXPECT_TRUE(IsUnsafe(line)) << line;
    }

    ASSERT_TRUE(box.Tell(row.cure));
    ExpectBackSafe(station);
  }
}

}  // namespace
}  // namespace nbx::test
