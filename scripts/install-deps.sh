#!/usr/bin/env bash
# Installs every Debian package that building, testing and running the
# program needs. Safe to run again: it only installs what is missing.
set -euo pipefail

packages=(
  # build
  cmake ninja-build g++ clang pkg-config clang-format clang-tidy ccache
  # clang's runtimes of libFuzzer and the sanitizers, for the fuzz targets
  libclang-rt-dev
  # Qt: event loop, serial port, settings, drawing, automation over D-Bus, sound
  qt6-base-dev qt6-serialport-dev qt6-multimedia-dev
  # the ASCOM Alpaca server (Debian's HTTP server package does not pull in the
  # WebSockets development files its CMake package asks for)
  qt6-httpserver-dev qt6-websockets-dev
  # the media player's decoders and sound output, without which no alarm sounds
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-pulseaudio
  # image files of the graphs
  libfreeimage-dev libfreeimage3
  # a serif font for the graph captions
  fonts-dejavu-core
  # tests and benchmarks
  libgtest-dev libgmock-dev libbenchmark-dev dbus dbus-x11 python3
  # the desktop-entry checker of the autostart and menu-entry tests
  desktop-file-utils
  # gdbus, the foreign client of the automation tests
  libglib2.0-bin
  # the Debian package: its dependencies, icons rendered from the SVG, and the
  # checks of its metainfo and of the package as a whole
  dpkg-dev librsvg2-bin appstream lintian file
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -q
$sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
