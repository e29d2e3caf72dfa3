#!/usr/bin/env bash
# Builds the Debian package nimbometer_<version>_<arch>.deb in build-package/
# from an optimised build of its own, with Debian's hardening flags, and
# checks it with lintian.
#   scripts/package.sh
#   sudo apt install ./build-package/nimbometer_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
source scripts/compiler-cache.sh

build=build-package
# The flags every Debian package is built with, bind-now included; read on
# the first configure only, as CMake does with CXXFLAGS.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
LDFLAGS="$(dpkg-buildflags --get LDFLAGS)"
export CXXFLAGS LDFLAGS

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DNBX_BUILD_TESTS=OFF -DNBX_BUILD_BENCH=OFF "${cache_options[@]}"
cmake --build "$build" -j "$(nproc)"
rm -f "$build"/nimbometer_*.deb
(cd "$build" && cpack -G DEB)

package="$(ls "$build"/nimbometer_*.deb)"
if command -v lintian >/dev/null; then
  # Errors fail the build; warnings are printed for the maintainer.
  lintian --fail-on error "$package"
fi
echo "built $package"
