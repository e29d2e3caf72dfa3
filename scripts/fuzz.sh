#!/usr/bin/env bash
# Builds the fuzz targets of fuzz/ with clang (libFuzzer, AddressSanitizer,
# UndefinedBehaviorSanitizer) and runs each from its committed corpus with a
# fixed seed.
#   scripts/fuzz.sh                    every target for 10 seconds
#   scripts/fuzz.sh -t 600 [TARGET..]  longer, or only the targets named
#   scripts/fuzz.sh -q -t 5            a quicker build (-O0) for short runs, as CI
# Inputs the run finds go to build-fuzz/fuzz-runs/<target>/corpus, and an
# input that fails to build-fuzz/fuzz-runs/<target>/findings; the committed
# corpus is only read. A finding fails the script.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=10
optimise=-O1
while getopts "t:q" option; do
  case "$option" in
    t) seconds="$OPTARG" ;;
    q) optimise=-O0 ;;
    *) echo "usage: $0 [-q] [-t SECONDS] [TARGET...]" >&2; exit 2 ;;
  esac
done
shift $((OPTIND - 1))
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  targets=(receive_buffer frame_dispatch transfer_record transfer_file
           setting_conversions settings_load number_format)
fi

scripts/install-deps.sh
source scripts/compiler-cache.sh

build="${NBX_FUZZ_BUILD:-build-fuzz}"
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DNBX_FUZZ=ON "${cache_options[@]}" \
  -DNBX_BUILD_TESTS=OFF -DNBX_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="$optimise -gline-tables-only" >/dev/null
cmake --build "$build" -j "$(nproc)" --target nbx_fuzz

# The stations under test write their data files on every run: a folder in
# memory when the machine has one spares the disk.
scratch_root="$build"
if [ -d /dev/shm ] && [ -w /dev/shm ]; then scratch_root=/dev/shm; fi
scratch="$(mktemp -d "$scratch_root/nbx-fuzz-XXXXXX")"
trap 'rm -rf "$scratch"' EXIT

for target in "${targets[@]}"; do
  runs="$build/fuzz-runs/$target"
  mkdir -p "$runs/corpus" "$runs/findings" "$scratch/$target"
  log="$runs/last.log"
  echo "fuzz: $target, $seconds s"
  if ! NBX_FUZZ_SCRATCH="$scratch/$target" "$build/fuzz/${target}_fuzz" \
      -seed=1 -max_total_time="$seconds" -timeout=30 -print_final_stats=1 \
      -artifact_prefix="$runs/findings/" "$runs/corpus" "fuzz/corpus/$target" >"$log" 2>&1; then
    tail -n 60 "$log"
    echo "fuzz: $target failed; the input is in $runs/findings/" >&2
    exit 1
  fi
  grep -E '^(#[0-9]+ +DONE|stat::number_of_executed_units|stat::new_units_added)' "$log" || true
done
