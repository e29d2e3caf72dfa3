#!/usr/bin/env bash
# Renders every tab of the main window on a running simulated station into
# docs/window/*.png, offscreen, for the README, and every dialog beside them.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --build build --target ui_tests nbx-boxsim
NBX_WINDOW_PICTURES="$PWD/docs/window" QT_QPA_PLATFORM=offscreen \
  dbus-run-session -- build/tests/ui_tests --gtest_filter='WindowPictures.*'
# The dialogs, drawn on their own.
cmake --build build --target nbx-dialog-pictures
build/tools/dialog_pictures/nbx-dialog-pictures "$PWD/docs/window"
