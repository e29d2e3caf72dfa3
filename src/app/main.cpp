// nimbometer: the observatory's sky and safety supervisor.

#include <QCoreApplication>
#include <cstdio>

#include "app/command_line.h"
#include "app/start_up.h"

int main(int argc, char* argv[]) {
  QCoreApplication app(argc, argv);
  QCoreApplication::setApplicationName("nimbometer");
  QCoreApplication::setApplicationVersion(QStringLiteral(NBX_VERSION_TEXT));

  const nbx::ProgramOptions options = nbx::ParseCommandLine(app);
  if (!options.headless) {
    std::fprintf(stderr, "nimbometer: this build has no window yet; run it with --headless\n");
    return 2;
  }
  return nbx::RunProgram(options);
}
