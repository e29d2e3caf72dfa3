#!/usr/bin/env bash
# Installs what is needed, builds, and runs the station headless against the
# simulated sensor box. Ctrl+C stops it (the heater's resting command leaves
# first, then the settings are saved).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j "$(nproc)" --target nimbometer nbx-boxsim
exec build/nimbometer --headless --simulate "$@"
