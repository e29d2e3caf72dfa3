#pragma once

namespace nbx {
struct Nimbometer;

// The menus follow the run and the clients: with no client, Start or Stop as
// the station runs, and Exit; with clients, none of them.
void RefreshMenus(Nimbometer& nm);

// The window's state as a client sets it. Without a window only the state is
// kept: there is nothing to show, raise or move.
void WindowNormal(Nimbometer& nm);
void WindowMinimize(Nimbometer& nm);

}  // namespace nbx
