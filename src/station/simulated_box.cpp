#include "station/simulated_box.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace nbx {

SimulatedBox::~SimulatedBox() {
  if (process_.state() != QProcess::NotRunning) {
    process_.terminate();
    if (!process_.waitForFinished(2000)) process_.kill();
  }
}

QString SimulatedBox::Start(const QStringList& arguments, QString& error, QString program) {
  if (program.isEmpty()) program = QDir(QCoreApplication::applicationDirPath()).filePath("nbx-boxsim");
  if (!QFileInfo(program).isExecutable()) {
    error = "the simulated box " + program + " is missing";
    return {};
  }
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  // The box is ours to stop: a Ctrl+C at the terminal goes to the station
  // alone, which still needs the box to take the heater's resting command;
  // and the box goes when the station dies.
  process_.setChildProcessModifier([] {
    ::setsid();
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  });
  process_.start(program, arguments);
  if (!process_.waitForStarted(5000)) {
    error = "the simulated box did not start: " + process_.errorString();
    return {};
  }
  // Its first line names the port: "PTY /dev/pts/N".
  while (!process_.canReadLine()) {
    if (!process_.waitForReadyRead(5000)) {
      error = "the simulated box did not name its port";
      return {};
    }
  }
  const QString line = QString::fromUtf8(process_.readLine()).trimmed();
  if (!line.startsWith("PTY ")) {
    error = "the simulated box said \"" + line + "\"";
    return {};
  }
  return line.mid(4);
}

}  // namespace nbx
