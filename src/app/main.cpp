// nimbometer: the observatory's sky and safety supervisor.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

#include "station/settings_store.h"
#include "station/cycle_summary.h"
#include "station/safety_settings.h"
#include "station/simulated_box.h"
#include "station/station.h"

namespace {

int signalPipe[2] = {-1, -1};

void OnSignal(int) {
  const char byte = 1;
  (void)!::write(signalPipe[0], &byte, 1);
}

// SIGINT and SIGTERM end the program through the event loop, so that the Stop
// action runs and the heater's resting command leaves before the port closes.
void RouteSignals(std::function<void()> onSignal) {
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0) return;
  auto* notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, qApp);
  QObject::connect(notifier, &QSocketNotifier::activated, [notifier, onSignal] {
    char byte;
    (void)!::read(signalPipe[1], &byte, 1);
    notifier->setEnabled(false);
    onSignal();
  });
  struct sigaction action {};
  action.sa_handler = OnSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

}  // namespace

int main(int argc, char* argv[]) {
  QCoreApplication app(argc, argv);
  QCoreApplication::setApplicationName("nimbometer");
  QCoreApplication::setApplicationVersion(QStringLiteral(NBX_VERSION_TEXT));

  QCommandLineParser parser;
  parser.setApplicationDescription(
      "NBX Nimbometer: reads the sky, rain and wind sensor box and decides whether the site is "
      "safe.");
  parser.addHelpOption();
  parser.addVersionOption();
  QCommandLineOption headless("headless", "Run without a window: start at once, one line per cycle.");
  QCommandLineOption simulate("simulate", "Use the built-in simulated box on a pseudo-terminal.");
  QCommandLineOption settingsFile("settings", "Use this INI file as the settings store.", "FILE");
  QCommandLineOption trace("trace", "Print the wire trace on standard error.");
  parser.addOptions({headless, simulate, settingsFile, trace});
  parser.process(app);

  if (!parser.isSet(headless)) {
    std::fprintf(stderr, "nimbometer: this build has no window yet; run it with --headless\n");
    return 2;
  }

  nbx::Station station;
  nbx::Nimbometer& nm = station.nm();
  station.host().traceEnabled = parser.isSet(trace);
  auto settings = nbx::OpenSettings(parser.value(settingsFile));
  nbx::LoadLinkSettings(*settings, nm.config);
  nbx::LoadSafetySettings(*settings, nm);

  nbx::SimulatedBox box;
  if (parser.isSet(simulate)) {
    QString error;
    const QString port = box.Start({}, error);
    if (port.isEmpty()) {
      std::fprintf(stderr, "nimbometer: %s\n", qPrintable(error));
      return 1;
    }
    nm.config.PortName = port.toStdString();
    std::printf("Simulated box on %s\n", qPrintable(port));
  }

  QObject::connect(&station, &nbx::Station::cycleProcessed, [&] {
    std::printf("%s\n", nbx::CycleSummary(nm).c_str());
    std::fflush(stdout);
  });
  QObject::connect(&station, &nbx::Station::stopped, &app, [] { QCoreApplication::exit(0); });
  RouteSignals([&] { station.Stop(); });

  station.Start();
  return app.exec();
}
