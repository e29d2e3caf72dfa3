#include "app/command_line.h"

#include <QCommandLineParser>

namespace nbx {

ProgramOptions ParseCommandLine(const QCoreApplication& app) {
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

  ProgramOptions options;
  options.headless = parser.isSet(headless);
  options.simulate = parser.isSet(simulate);
  options.trace = parser.isSet(trace);
  options.settingsFile = parser.value(settingsFile);
  return options;
}

}  // namespace nbx
