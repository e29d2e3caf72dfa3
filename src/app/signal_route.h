#pragma once

#include <functional>

namespace nbx {

// SIGINT and SIGTERM call `onSignal` on the event loop, once.
void RouteSignals(std::function<void()> onSignal);

}  // namespace nbx
