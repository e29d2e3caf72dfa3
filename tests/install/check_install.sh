#!/usr/bin/env bash
# Installs the build into a prefix of its own and checks what a site gets:
# both programs, runnable from there, and the user service naming the
# installed program, verified by systemd-analyze where the machine has it.
#   check_install.sh CMAKE BUILD_DIR PREFIX
set -euo pipefail
cmake_command="$1" build="$2" prefix="$3"

fail() { echo "FAIL: $*" >&2; exit 1; }

rm -rf "$prefix"
"$cmake_command" --install "$build" --prefix "$prefix" >/dev/null

for program in nimbometer nbx-boxsim; do
  [ -x "$prefix/bin/$program" ] || fail "bin/$program is not installed"
done
"$prefix/bin/nimbometer" --version | grep -q '^nimbometer [0-9]' ||
  fail "the installed nimbometer does not run"
"$prefix/bin/nbx-boxsim" --help >/dev/null || fail "the installed nbx-boxsim does not run"

unit="$prefix/share/systemd/user/nimbometer.service"
[ -f "$unit" ] || fail "the user unit is not installed"
grep -qx "ExecStart=$prefix/bin/nimbometer --headless" "$unit" ||
  fail "the unit does not start the installed program headless: $(grep ExecStart "$unit")"
grep -qx 'KillSignal=SIGTERM' "$unit" || fail "the unit does not stop with SIGTERM"
grep -qx 'Restart=on-failure' "$unit" || fail "the unit does not restart on failure"
grep -qx 'WantedBy=default.target' "$unit" || fail "the unit cannot be enabled"

if command -v systemd-analyze >/dev/null; then
  # The system manager's checks: without a user session there is no user
  # manager to ask, and the unit's keys are the same for both.
  report="$(systemd-analyze verify "$unit" 2>&1)" || fail "systemd-analyze: $report"
  [ -z "$report" ] || fail "systemd-analyze: $report"
else
  echo "systemd-analyze not found: the unit's syntax is not verified"
fi
echo "installed and checked in $prefix"
