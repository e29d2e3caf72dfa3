#!/usr/bin/env bash
# Installs what is needed, builds, and runs every test.
#   scripts/test.sh              plain build in build/
#   scripts/test.sh --sanitize   AddressSanitizer + UBSan build in build-asan/
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
source scripts/compiler-cache.sh

build=build
options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
if [ "${1:-}" = "--sanitize" ]; then
  build=build-asan
  options=(-DCMAKE_BUILD_TYPE=Debug -DNBX_SANITIZE=ON -DNBX_BUILD_BENCH=OFF)
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
fi

cmake -S . -B "$build" -G Ninja "${options[@]}" "${cache_options[@]}"
cmake --build "$build" -j "$(nproc)"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" --timeout 600
