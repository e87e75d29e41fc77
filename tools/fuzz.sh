#!/usr/bin/env bash
# Runs fuzz targets for a while: tools/fuzz.sh NAME... SECONDS (each NAME one of config,
# schemes, numbers, drawing, msgbox, code, game). Builds them in the clang fuzz build in
# build-fuzz/, then runs them side by side, one per processor, each starting from its seed
# corpus fuzz/corpus/NAME (new inputs collect in build-fuzz/corpus-NAME, never in the
# repository), and prints libFuzzer's figures per target. A crash leaves its input in
# build-fuzz/ and makes the script exit non-zero; add the input to the seed corpus once it is
# fixed.
# With TALLYON_FUZZ_SEED set (./test.sh sets it), a run is repeatable: libFuzzer draws from
# that seed and starts from the seed corpus alone, in a fresh folder, so a failure seen once
# is seen again on the next run of the same commit. Without it each run draws a new seed and
# builds on the inputs earlier runs collected, which suits longer hunts.
set -euo pipefail
cd "$(dirname "$0")/.."
usage="usage: tools/fuzz.sh NAME... SECONDS"
[ $# -ge 2 ] || { echo "$usage" >&2; exit 2; }
seconds="${*: -1}"
names=("${@:1:$#-1}")
[[ "$seconds" =~ ^[0-9]+$ ]] || { echo "$usage" >&2; exit 2; }
command -v clang++ >/dev/null || { echo "fuzz.sh: clang++ is needed" >&2; exit 2; }
if [ ! -f build-fuzz/CMakeCache.txt ]; then
  CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DTALLYON_FUZZ=ON -DTALLYON_TESTS=OFF -DTALLYON_WERROR=ON >/dev/null
fi
cmake --build build-fuzz -j"$(nproc)" --target "${names[@]/#/fuzz_}" >/dev/null

# Runs one target in build-fuzz/ and leaves its figures in fuzz-NAME.log.
run_target() {
  local name="$1" binary work seed=() leaks=1
  binary="$(find . -name "fuzz_$name" -type f -perm -u+x | head -n1)"
  [ -n "$binary" ] || { echo "fuzz.sh: no target fuzz_$name" >"fuzz-$name.log"; return 2; }
  work="corpus-$name"
  if [ -n "${TALLYON_FUZZ_SEED:-}" ]; then
    work="corpus-$name-seed-$TALLYON_FUZZ_SEED"
    rm -rf "$work"
    seed=("-seed=$TALLYON_FUZZ_SEED")
  fi
  mkdir -p "$work"
  # The message box's target keeps a Qt application alive to the end, whose caches are not
  # freed at exit; leak reports there are about Qt, not the harness.
  [ "$name" = msgbox ] && leaks=0
  ASAN_OPTIONS="detect_leaks=$leaks" QT_QPA_PLATFORM=offscreen "$binary" -max_total_time="$seconds" \
    -print_final_stats=1 -detect_leaks="$leaks" "${seed[@]}" "$work" "../fuzz/corpus/$name" >"fuzz-$name.log" 2>&1
}

cd build-fuzz
declare -A running=() # target names by process id
status=0
next=0
while [ "$next" -lt "${#names[@]}" ] || [ "${#running[@]}" -gt 0 ]; do
  if [ "$next" -lt "${#names[@]}" ] && [ "${#running[@]}" -lt "$(nproc)" ]; then
    name="${names[$next]}"
    echo "fuzzing $name for $seconds s${TALLYON_FUZZ_SEED:+, seed $TALLYON_FUZZ_SEED}"
    run_target "$name" &
    running[$!]="$name"
    next=$((next + 1))
    continue
  fi
  rc=0
  wait -n -p finished || rc=$?
  name="${running[$finished]}"
  unset "running[$finished]"
  echo "$name:"
  grep -E "stat::number_of_executed_units|stat::peak_rss|ERROR|SUMMARY|Test unit written" "fuzz-$name.log" || true
  [ "$rc" -eq 0 ] || { status=1; echo "fuzz_$name FAILED (status $rc): see build-fuzz/fuzz-$name.log"; }
done
exit "$status"
