#!/bin/bash
# Applies each hand-picked mutant of mutants.txt alone, rebuilds the one test
# program that covers its folder, runs it, and counts the mutants it kills.
# Usage: tests/mutation/sweep.sh [build-dir] [filter]; the source is restored
# after every mutant, also when the sweep is interrupted.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$root/build}
filter=${2:-}
# Restoring is a checkout: uncommitted work in src/ would be lost with it.
if ! git -C "$root" diff --quiet -- src; then
  echo "sweep: src/ has uncommitted changes; commit or stash them first" >&2
  exit 2
fi
current=
restore() { [ -n "$current" ] && git -C "$root" checkout -q -- "$current"; current=; }
trap 'restore; exit 130' INT TERM
declare -A killed total
while IFS=$'\t' read -r program file from to; do
  case "$program" in ''|'#'*) continue ;; esac
  [[ "$program$file" == *"$filter"* ]] || continue
  [ "$to" = '""' ] && to=
  current=$file
  if ! FROM=$from TO=$to python3 - "$root/$file" <<'PY'
import os, sys
path, old, new = sys.argv[1], os.environ["FROM"], os.environ["TO"]
text = open(path).read()
if text.count(old) != 1: sys.exit(f"not once in {path}: {old}")
open(path, "w").write(text.replace(old, new))
PY
  then restore; exit 2; fi
  if ! cmake --build "$build" -j2 --target "$program" >/dev/null 2>&1; then
    printf 'UNBUILT  %s: %s\n' "$file" "$from"; restore; continue
  fi
  total[$program]=$(( ${total[$program]:-0} + 1 ))
  if timeout 600 "$build/tests/$program" --gtest_brief=1 >/dev/null 2>&1; then
    verdict=SURVIVED
  else
    verdict=killed
  fi
  [ "$verdict" != SURVIVED ] && killed[$program]=$(( ${killed[$program]:-0} + 1 ))
  printf '%-8s %s: %s\n' "$verdict" "$file" "$from"
  restore
done < "$(dirname "$0")/mutants.txt"
[ ${#total[@]} -gt 0 ] && cmake --build "$build" -j2 --target "${!total[@]}" >/dev/null 2>&1
for p in "${!total[@]}"; do echo "$p: ${killed[$p]:-0} of ${total[$p]} mutants killed"; done
