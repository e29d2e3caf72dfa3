// nimbometer: the observatory's sky and safety supervisor.

#include <QApplication>
#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "app/command_line.h"
#include "app/start_up.h"
#include "app/window_station.h"

namespace {

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

bool AskedFor(int argc, char* argv[], const char* option) {
  for (int i = 1; i < argc; ++i)
    if (std::strcmp(argv[i], option) == 0) return true;
  return false;
}

}  // namespace

int main(int argc, char* argv[]) {
  const bool headless = AskedFor(argc, argv, "--headless");
  const bool window = !headless && nbx::DisplayAvailable();
  // The graphs are drawn with fonts, which need a GUI application; without
  // a display it runs on the offscreen platform.
  if (!IsSet("QT_QPA_PLATFORM") && !IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY"))
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
  std::unique_ptr<QGuiApplication> app;
  if (window)
    app = std::make_unique<QApplication>(argc, argv);
  else
    app = std::make_unique<QGuiApplication>(argc, argv);
  QCoreApplication::setApplicationName("nimbometer");
  QCoreApplication::setApplicationVersion(QStringLiteral(NBX_VERSION_TEXT));

  const nbx::ProgramOptions options = nbx::ParseCommandLine(*app);
  if (!options.headless && !window) {
    std::fprintf(stderr, "nimbometer: no display to open the window on; run it with --headless\n");
    return 2;
  }
  return nbx::RunProgram(options);
}
