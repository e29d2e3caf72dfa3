// nimbometer: the observatory's sky and safety supervisor.

#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>

#include "app/command_line.h"
#include "app/start_up.h"

namespace {

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

}  // namespace

int main(int argc, char* argv[]) {
  // The graphs are drawn with fonts, which need a GUI application; without
  // a display it runs on the offscreen platform.
  if (!IsSet("QT_QPA_PLATFORM") && !IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY"))
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QGuiApplication app(argc, argv);
  QCoreApplication::setApplicationName("nimbometer");
  QCoreApplication::setApplicationVersion(QStringLiteral(NBX_VERSION_TEXT));

  const nbx::ProgramOptions options = nbx::ParseCommandLine(app);
  if (!options.headless) {
    std::fprintf(stderr, "nimbometer: this build has no window yet; run it with --headless\n");
    return 2;
  }
  return nbx::RunProgram(options);
}
