#!/usr/bin/env bash
# Builds the Debian package of this build tree, unpacks it into a scratch
# root as dpkg would lay it out, and checks what a desktop and a site get
# from it: both programs, runnable; the menu entry with its icon; the
# metainfo; the manual where the program's help looks; the user unit and the
# activation file naming the installed program; dependencies from Debian.
#   check_package.sh CPACK BUILD_DIR
set -euo pipefail
cpack="$1" build="$2"

fail() { echo "FAIL: $*" >&2; exit 1; }

scratch="$(mktemp -d "$build/package-check.XXXXXX")"
trap 'rm -rf "$scratch"' EXIT
"$cpack" --config "$build/CPackConfig.cmake" -G DEB -B "$scratch" >/dev/null
packages=("$scratch"/nimbometer_*.deb)
package="${packages[0]}"
[ -f "$package" ] || fail "cpack made no nimbometer_*.deb"
root="$scratch/root"
dpkg-deb -x "$package" "$root"

# Computed from the programs' libraries, not written by hand; and FreeImage,
# which is loaded at run time, at least recommended.
dpkg-deb -f "$package" Depends | grep -q 'libqt6serialport6 (>=' ||
  fail "Depends not computed from the libraries: $(dpkg-deb -f "$package" Depends)"
dpkg-deb -f "$package" Recommends | grep -qw libfreeimage3 || fail "libfreeimage3 not recommended"

"$root/usr/bin/nimbometer" --version | grep -q '^nimbometer [0-9]' ||
  fail "the packaged nimbometer does not run"
"$root/usr/bin/nbx-boxsim" --help >/dev/null || fail "the packaged nbx-boxsim does not run"
for page in nimbometer nbx-boxsim; do
  [ -s "$root/usr/share/man/man1/$page.1.gz" ] || fail "no manual page of $page"
done

# The program's help opens ../share/nimbometer/manual from its own folder.
manual="$root/usr/bin/../share/nimbometer/manual"
[ -f "$manual/index.html" ] || fail "the manual is not where the program looks for it"
for link in $(grep -o 'href="[a-z]*\.\(html\|css\)' "$manual/index.html" | cut -d'"' -f2 | sort -u); do
  [ -f "$manual/$link" ] || fail "the manual's contents link to $link, which is not packaged"
done

unit="$root/usr/share/systemd/user/nimbometer.service"
grep -qx 'ExecStart=/usr/bin/nimbometer --headless' "$unit" || fail "the unit: $(grep ExecStart "$unit")"
activation="$root/usr/share/dbus-1/services/NBX_Nimbometer.Nimbometer.service"
grep -qx 'Exec=/usr/bin/nimbometer --headless' "$activation" ||
  fail "the activation file: $(grep Exec "$activation")"

entry="$root/usr/share/applications/org.nimbometer.Nimbometer.desktop"
desktop-file-validate "$entry" || fail "desktop-file-validate"
exec_name="$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$entry")"
[ -x "$root/usr/bin/$exec_name" ] || fail "the menu entry starts $exec_name, which is not packaged"
icon="$(sed -n 's/^Icon=//p' "$entry")"
hicolor="$root/usr/share/icons/hicolor"
grep -q '<svg' "$hicolor/scalable/apps/$icon.svg" || fail "no scalable icon $icon"
for size in 48 256; do
  file -b "$hicolor/${size}x$size/apps/$icon.png" | grep -q "PNG image data, $size x $size," ||
    fail "the ${size}px icon is not a ${size}x$size PNG"
done

# The metainfo, and (the tree check, which passes a tree without one) that its
# launchable is the packaged menu entry.
appstreamcli validate --no-net "$root/usr/share/metainfo/org.nimbometer.Nimbometer.metainfo.xml" ||
  fail "appstreamcli validate"
appstreamcli validate-tree --no-net "$root" || fail "appstreamcli validate-tree"
echo "package $(basename "$package") checked"
