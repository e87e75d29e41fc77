#!/usr/bin/env bash
# Puts one-line faults into a scratch copy of the source, one at a time, and reports the ones
# that no unit test catches: each of those points at a missing test.
#
# Usage: tools/fault-check.sh [faults file] [scratch dir]
#   faults file  lines "file<TAB>text<TAB>replacement", # comments and blank lines skipped;
#                the text must occur exactly once in the file (default tests/faults.txt)
#   scratch dir  kept between runs so that builds are incremental
#                (default ${TMPDIR:-/tmp}/tallyon-faults)
# Runs every test but the end-to-end ones (ctest -LE e2e), all of them allowed two minutes: a
# fault that makes them run longer (a walk that never ends) counts as caught. A fault that
# stops the build is listed apart: it says nothing about the tests. Takes a minute or so per
# fault; not for CI.
set -uo pipefail

repo="$(cd "$(dirname "$0")/.." && pwd)"
faults="${1:-$repo/tests/faults.txt}"
scratch="${2:-${TMPDIR:-/tmp}/tallyon-faults}"
src="$scratch/src"
build="$scratch/build"
jobs="$(nproc)"

# The copy is brought up to date file by file: a file whose content differs is copied anew
# (so it is newer than anything built from it and gets rebuilt), the others keep their times,
# and files git no longer knows are removed. The build in the scratch dir stays incremental.
mkdir -p "$src"
(cd "$repo" && git ls-files -co --exclude-standard) >"$scratch/files"
while IFS= read -r f; do
  [ -f "$repo/$f" ] || continue
  if ! cmp -s "$repo/$f" "$src/$f"; then
    mkdir -p "$src/$(dirname "$f")"
    cp "$repo/$f" "$src/$f"
  fi
done <"$scratch/files"
(cd "$src" && find . -type f | sed 's|^\./||') | grep -vxF -f "$scratch/files" | (cd "$src" && xargs -r rm -f)
cmake -S "$src" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null || exit 1
echo "building the unchanged copy ..."
cmake --build "$build" -j"$jobs" >"$scratch/build.log" 2>&1 || { echo "the unchanged copy does not build"; exit 1; }
(cd "$build" && ctest -LE e2e -j"$jobs" --timeout 120 >"$scratch/baseline.log" 2>&1) ||
  { echo "the unchanged copy fails its tests: see $scratch/baseline.log"; exit 1; }

# fault count|apply FILE TEXT REPLACEMENT: how often TEXT occurs in FILE, or replaces it
# once. TEXT and REPLACEMENT are read with \n, \t and \\ as escapes.
fault() {
  python3 - "$@" <<'PY'
import sys

def unescape(s):
    out, i = [], 0
    while i < len(s):
        if s[i] == "\\" and i + 1 < len(s):
            out.append({"n": "\n", "t": "\t", "\\": "\\"}.get(s[i + 1], s[i:i + 2]))
            i += 2
        else:
            out.append(s[i])
            i += 1
    return "".join(out)

mode, path, text, replacement = sys.argv[1], sys.argv[2], unescape(sys.argv[3]), unescape(sys.argv[4])
source = open(path).read()
if mode == "count":
    print(source.count(text))
else:
    open(path, "w").write(source.replace(text, replacement, 1))
PY
}

# Runs the unit tests, their report in tests.log; 0 when all pass within two minutes. A
# test's own time limit may be longer than that, so a fault that makes one run on (a walk
# that never ends) is stopped here, with every process ctest started, and counts as caught.
run_tests() {
  setsid bash -c "cd '$build' && exec ctest -LE e2e -j$jobs >'$scratch/tests.log' 2>&1" &
  local pid=$!
  for _ in $(seq 1200); do
    kill -0 "$pid" 2>/dev/null || { wait "$pid"; return $?; }
    sleep 0.1
  done
  kill -KILL -- "-$pid" 2>/dev/null
  wait "$pid" 2>/dev/null
  return 124
}

total=0 caught=0
missed=() broken=() stale=()
while IFS=$'\t' read -r file text replacement; do
  [[ -z "$file" || "$file" == \#* ]] && continue
  total=$((total + 1))
  target="$src/$file"
  count="$(fault count "$target" "$text" "$replacement" 2>/dev/null || echo 0)"
  if [ "$count" != "1" ]; then
    stale+=("$file: \"$text\" found $count times")
    continue
  fi
  cp -p "$target" "$scratch/original"
  fault apply "$target" "$text" "$replacement"
  label="$file: \"$text\" -> \"$replacement\""
  if ! cmake --build "$build" -j"$jobs" >"$scratch/fault-build.log" 2>&1; then
    broken+=("$label")
    echo "  does not build: $label"
  elif run_tests; then
    missed+=("$label")
    echo "  MISSED: $label"
  else
    caught=$((caught + 1))
    echo "  caught: $label"
    echo "    by: $(sed -n '/tests FAILED:/,$ s/^[[:space:]]*[0-9]* - \([^ ]*\).*/\1/p' "$scratch/tests.log" | tr '\n' ' ')"
  fi
  cp -p "$scratch/original" "$target"
  touch "$target"
done <"$faults"

cmake --build "$build" -j"$jobs" >/dev/null 2>&1
counted=$((total - ${#broken[@]} - ${#stale[@]}))
echo
echo "faults: $total; caught $caught of $counted that build"
for line in "${missed[@]}"; do echo "missed: $line"; done
for line in "${broken[@]}"; do echo "does not build: $line"; done
for line in "${stale[@]}"; do echo "stale: $line"; done
[ "${#missed[@]}" -eq 0 ]
