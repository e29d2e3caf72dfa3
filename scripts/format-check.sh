#!/usr/bin/env bash
# Reports where the code departs from .clang-format, without changing it:
# a file is reformatted when someone works in it, never the whole tree at
# once (that would collide with every branch in flight).
#   scripts/format-check.sh            every C++ file of src/, tools/, tests/, bench/, fuzz/
#   scripts/format-check.sh FILE...    only those; exit status 1 when any differs
set -euo pipefail
cd "$(dirname "$0")/.."
FORMAT=${CLANG_FORMAT:-clang-format}
if [ $# -gt 0 ]; then
  files=("$@")
else
  mapfile -t files < <(git ls-files '*.cpp' '*.h')
fi
differing=0
changed=0
for file in "${files[@]}"; do
  lines=$("$FORMAT" --style=file "$file" | diff "$file" - | grep -c '^[<>]' || true)
  if [ "$lines" -gt 0 ]; then
    echo "$file: $lines lines differ"
    differing=$((differing + 1))
    changed=$((changed + lines))
  fi
done
echo "${differing} of ${#files[@]} files differ from .clang-format (${changed} lines)"
[ "$differing" -eq 0 ]
