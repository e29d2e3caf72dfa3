#!/usr/bin/env bash
# clang-tidy over src/ with a short list of checks that find real faults
# (use after move, dangling views, dead stores, needless copies), using the
# build's compile_commands.json.
#   scripts/tidy.sh [BUILD_DIR] [FILE...]     BUILD_DIR defaults to build
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
shift || true
checks=$(tr -d ' \n' <<'LIST'
-*,
bugprone-use-after-move,
bugprone-dangling-handle,
bugprone-integer-division,
bugprone-string-constructor,
bugprone-suspicious-string-compare,
bugprone-undefined-memory-manipulation,
bugprone-unused-return-value,
bugprone-infinite-loop,
clang-analyzer-core.*,
clang-analyzer-cplusplus.*,
clang-analyzer-deadcode.DeadStores,
performance-for-range-copy,
performance-unnecessary-copy-initialization,
performance-unnecessary-value-param,
performance-move-const-arg,
modernize-use-override,
modernize-use-nullptr
LIST
)
if [ ! -f "$build/compile_commands.json" ]; then
  echo "no $build/compile_commands.json: configure the build first" >&2
  exit 2
fi
if [ $# -gt 0 ]; then
  files=("$@")
else
  mapfile -t files < <(git ls-files 'src/*.cpp')
fi
# Moc's generated sources are not ours; headers of src/ are checked through
# the files that include them.
# Any finding fails the run.
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
run-clang-tidy -quiet -p "$build" -j "${TIDY_JOBS:-2}" -checks="$checks" \
  -header-filter="$PWD/src/.*" "${files[@]}" >"$log" 2>&1 || status=$?
sed 's/\x1b\[[0-9;]*m//g' "$log" | grep -v -e '^[0-9]* warnings\? generated' -e '^Suppressed' -e '^Use -header-filter' -e '^clang-tidy' || true
if [ "$status" -ne 0 ] || grep -q -e 'warning:' -e 'error:' "$log"; then
  exit 1
fi
echo "clang-tidy: src/ is clean"
