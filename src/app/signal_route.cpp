#include "app/signal_route.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace nbx {
namespace {

int signalPipe[2] = {-1, -1};

void OnSignal(int) {
  const char byte = 1;
  (void)!::write(signalPipe[0], &byte, 1);
}

}  // namespace

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

}  // namespace nbx
