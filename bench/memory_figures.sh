#!/bin/bash
# Memory and CPU of the station in one run, side by side:
#   headless with the seven graphs exported (PNG, every sixth cycle),
#   headless with picture export off, and the window mode (offscreen).
#
#   bench/memory_figures.sh [build folder] [cycles]     default: build, 1000
#
# The three run at once, each in a fresh temporary folder with its own settings
# file, against the simulated box (--simulate). A cycle is one second and the
# program has no faster clock, so 1,000 cycles take about 17 minutes; give a
# smaller count for a quick look (the cycle-100 sample needs at least 100).
# Resident, PSS and private come from /proc/PID/smaps_rollup at the last cycle,
# all three stations running: the Qt libraries they share are split three
# ways in PSS (a station alone reads a few MB more PSS and private).
# The stations serve Alpaca on NBX_ALPACA_PORT_BASE + 1..3 (default 11311..11313).
set -u
build=${1:-build}
cycles=${2:-1000}
program=$(realpath "$build/nimbometer") || exit 1
[ -x "$program" ] || { echo "no $program: build the target nimbometer first" >&2; exit 1; }
root=$(mktemp -d "${TMPDIR:-/tmp}/nbx-memory-XXXXXX")
trap 'kill -9 $(cat "$root"/*/pid 2>/dev/null) 2>/dev/null; rm -rf "$root"' EXIT
trap 'exit 1' INT TERM

settings() { # folder, export on (1/0), Alpaca port
  # Each station serves Alpaca (on by default) on a port of its own;
  # Initiliazed=1 is a box set up before, so the window asks nothing at start.
  local images="" name
  for name in Cloud Day Rain Wind Temp Humidity Pressure; do images+="Image$name=$2"$'\n'; done
  cat <<INI
[Communication]
RefreshPeriod=1
[Window]
PathName=$1
FileName=night
AutoStartRecording=1
Debug=0
GraphFreq=6
ImageType=1
GraphImagePath=$1/pictures
$images[COMMFile]
NetFilePath=$1
PathNameCCDAP4=$1
[Electrical]
Initiliazed=1
[Alpaca]
Port=$3
Discovery=0
INI
}

kib() { awk -v k="$1" '$1 == k":" {print $2}' "/proc/$2/smaps_rollup"; }
cpu_ticks() { awk '{sub(/.*\) /, ""); print $12 + $13}' "/proc/$1/stat"; }

# run <name> <export 1/0> <window 1/0> <port>: samples at cycles 1, 100 and the
# last; gives up when the cycles do not come (a minute of slack).
run() {
  local name=$1 folder=$root/$1 n=0 line pid rss100=- cpu1=0 cpu100=0
  local deadline=$(( $(date +%s) + cycles * 3 / 2 + 60 ))
  mkdir -p "$folder/pictures" "$folder/config"
  settings "$folder" "$2" "$4" > "$folder/station.ini"
  local args=(--simulate --settings "$folder/station.ini")
  [ "$3" = 1 ] || args=(--headless "${args[@]}")
  # The window mode prints no cycle lines: its cycles are the lines its data file gains.
  HOME=$folder XDG_CONFIG_HOME=$folder/config QT_QPA_PLATFORM=offscreen \
    "$program" "${args[@]}" > "$folder/out" 2> "$folder/err" &
  pid=$!
  echo "$pid" > "$folder/pid"
  while kill -0 "$pid" 2>/dev/null; do
    if [ "$3" = 1 ]; then n=$(cat "$folder"/*.csv 2>/dev/null | wc -l)
    else n=$(grep -c ' sky ' "$folder/out"); fi
    [ "$n" -ge 1 ] && [ "$cpu1" = 0 ] && cpu1=$(cpu_ticks "$pid")
    [ "$n" -ge 100 ] && [ "$rss100" = - ] && rss100=$(kib Rss "$pid") && cpu100=$(cpu_ticks "$pid")
    [ "$n" -ge "$cycles" ] && break
    [ "$(date +%s)" -gt "$deadline" ] && { echo "$name: $n cycles only, see $folder/err" >&2; break; }
    sleep 0.2
  done
  local rss pss private cpu
  if ! [ -e "/proc/$pid/smaps_rollup" ]; then
    echo "$name: the station ended early, see its errors:" >&2; cat "$folder/err" >&2
    echo "$name $n 0 0 0 - 0 0 $(getconf CLK_TCK)" > "$root/$name.figures"; return
  fi
  rss=$(kib Rss "$pid"); pss=$(kib Pss "$pid")
  private=$(( $(kib Private_Clean "$pid") + $(kib Private_Dirty "$pid") ))
  cpu=$(cpu_ticks "$pid")
  echo "$name $n $rss $pss $private $rss100 $cpu1 $cpu $(getconf CLK_TCK)" > "$root/$name.figures"
}

pids=()
base=${NBX_ALPACA_PORT_BASE:-11310}
run "headless-graphs-on" 1 0 $((base + 1)) & pids+=($!)
run "headless-export-off" 0 0 $((base + 2)) & pids+=($!)
run "window-offscreen" 1 1 $((base + 3)) & pids+=($!)
wait "${pids[@]}"
# The stations are stopped together once all three are measured: a station
# that ended early would leave the libraries they share to the others' PSS.
kill $(cat "$root"/*/pid) 2>/dev/null; rm -f "$root"/*/pid
pids=()

mb() { awk -v k="$1" 'BEGIN {printf "%.1f MB", k / 1024}'; }
echo "NBX Nimbometer, $(date -u '+%F %H:%M UTC'), $cycles cycles of 1 s, $(nproc) cores, $program"
printf '%-38s %8s %12s %12s %12s %14s\n' "this build:" cycles resident PSS private "resident @100"
for name in headless-graphs-on headless-export-off window-offscreen; do
  read -r _ n rss pss private rss100 cpu1 cpu hz < "$root/$name.figures"
  at100=-; [ "$rss100" != - ] && at100=$(mb "$rss100")
  printf '%-38s %8s %12s %12s %12s %14s\n' "$name" "$n" "$(mb "$rss")" "$(mb "$pss")" \
    "$(mb "$private")" "$at100"
  eval "cpu_$(echo "$name" | tr - _)=\"$cpu1 $cpu $n $hz\""
done
printf '%-38s %8s %12s %12s %12s\n' "INDI weather stack (quoted from issue)" "" "\"17.3 MB\"" "\"10.3 MB\"" "\"8.9 MB\""
echo "(the INDI stack is not run here: its figures are the ones the issue measured)"
# CPU: the export-off run gives the plain cycle; the graph run adds a graph
# cycle every sixth cycle, so a graph cycle costs plain + 6 x (difference).
read -r p1 p2 pn hz <<< "$cpu_headless_export_off"
read -r g1 g2 gn _ <<< "$cpu_headless_graphs_on"
awk -v p1="$p1" -v p2="$p2" -v pn="$pn" -v g1="$g1" -v g2="$g2" -v gn="$gn" -v hz="$hz" 'BEGIN {
  plain = (p2 - p1) * 1000 / hz / (pn - 1); mixed = (g2 - g1) * 1000 / hz / (gn - 1)
  printf "CPU per plain cycle %.2f ms; per cycle with graphs every sixth %.2f ms; per graph cycle about %.1f ms\n",
    plain, mixed, plain + 6 * (mixed - plain) }'
