// A whole reading cycle over a pseudo-terminal at 9600 baud, against the time
// its bytes need on the wire (10 bits a byte): how much of a cycle is the
// program's own. The simulated box paces its replies at the baud rate, but a
// pseudo-terminal passes the program's commands at once: the last column
// weighs the cycle against the replies' bytes alone, the time this line
// really took.
//
//   wire_time [cycles]      default 8 cycles after the first full one

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <string>
#include <vector>

#include "station/simulated_box.h"
#include "station/station.h"

int main(int argc, char* argv[]) {
  QCoreApplication app(argc, argv);
  const int wanted = argc > 1 ? std::atoi(argv[1]) : 8;

  nbx::SimulatedBox box;
  QString error;
  const QString port = box.Start({"--baud", "9600"}, error, NBX_BOXSIM_PATH);
  if (port.isEmpty()) {
    std::fprintf(stderr, "wire_time: %s\n", qPrintable(error));
    return 1;
  }

  nbx::Station station;
  nbx::Nimbometer& nm = station.nm();
  nm.config.PortName = port.toStdString();
  nm.config.RefreshPeriod = 10;

  long long wireBytes = 0, replyBytes = 0;
  station.host().onTrace = [&](std::string_view line) {
    if (line.rfind("Tx: ", 0) == 0) wireBytes += static_cast<long long>(line.size() - 4);
    if (line.rfind("Rx Complete: ", 0) == 0) {
      wireBytes += 15;
      replyBytes += 15;
    }
  };

  struct Cycle {
    double seconds;
    long long bytes;
    long long replyBytes;
  };
  std::vector<Cycle> cycles;
  int seen = 0;
  QObject::connect(&station, &nbx::Station::cycleProcessed, [&] {
    // The first cycle only identifies the box; measure full cycles.
    if (seen++ >= 1 && !nm.state.CommFailed) cycles.push_back({nm.state.Value_Cycle, wireBytes, replyBytes});
    wireBytes = replyBytes = 0;
    if (static_cast<int>(cycles.size()) >= wanted) station.Stop();
  });
  QObject::connect(&station, &nbx::Station::stopped, &app, &QCoreApplication::quit);
  station.Start();
  app.exec();

  double totalCycle = 0, totalWire = 0, totalReplies = 0;
  std::printf("cycle  bytes  cycle_s  wire_s  ratio  replies_s  ratio_replies\n");
  for (std::size_t i = 0; i < cycles.size(); ++i) {
    const double wire = static_cast<double>(cycles[i].bytes) * 10.0 / 9600.0;
    const double replies = static_cast<double>(cycles[i].replyBytes) * 10.0 / 9600.0;
    totalCycle += cycles[i].seconds;
    totalWire += wire;
    totalReplies += replies;
    std::printf("%5zu  %5lld  %7.3f  %6.3f  %5.3f  %9.3f  %13.3f\n", i + 1, cycles[i].bytes,
                cycles[i].seconds, wire, cycles[i].seconds / wire, replies, cycles[i].seconds / replies);
  }
  if (!cycles.empty())
    std::printf("mean ratio of cycle time to wire time: %.3f, to the replies' wire time: %.3f (%zu cycles)\n",
                totalCycle / totalWire, totalCycle / totalReplies, cycles.size());
  return 0;
}
