#!/usr/bin/env bash
# Installs what is needed, builds, and runs the station against the simulated
# sensor box: in its window when there is a display, headless otherwise.
# Headless, Ctrl+C stops it (the heater's resting command leaves first, then
# the settings are saved); in the window, File > Exit or closing does the same.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j "$(nproc)" --target nimbometer nbx-boxsim
if [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]; then
  exec build/nimbometer --simulate "$@"
fi
exec build/nimbometer --headless --simulate "$@"
