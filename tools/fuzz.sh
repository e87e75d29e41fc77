#!/usr/bin/env bash
# Runs one fuzz target for a while: tools/fuzz.sh NAME SECONDS (NAME one of config, schemes,
# numbers, drawing, msgbox, code, game). Builds the clang fuzz build in build-fuzz/ when needed, starts
# from the seed corpus fuzz/corpus/NAME (new inputs collect in build-fuzz/corpus-NAME,
# never in the repository) and prints libFuzzer's figures. A crash leaves its input in
# build-fuzz/ and exits non-zero; add the input to the seed corpus once it is fixed.
# With TALLYON_FUZZ_SEED set (./test.sh sets it), the run is repeatable: libFuzzer draws from
# that seed and starts from the seed corpus alone, in a fresh folder, so a failure seen once
# is seen again on the next run of the same commit. Without it each run draws a new seed and
# builds on the inputs earlier runs collected, which suits longer hunts.
set -euo pipefail
cd "$(dirname "$0")/.."
name="${1:?usage: tools/fuzz.sh NAME SECONDS}"
seconds="${2:-60}"
command -v clang++ >/dev/null || { echo "fuzz.sh: clang++ is needed" >&2; exit 2; }
if [ ! -x "build-fuzz/bin/fuzz_$name" ] && [ ! -x "build-fuzz/fuzz/fuzz_$name" ]; then
  CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DTALLYON_FUZZ=ON -DTALLYON_TESTS=OFF -DTALLYON_WERROR=ON >/dev/null
fi
cmake --build build-fuzz -j"$(nproc)" --target "fuzz_$name" >/dev/null
binary="$(find build-fuzz -name "fuzz_$name" -type f -perm -u+x | head -n1)"
work="corpus-$name"
seed=()
if [ -n "${TALLYON_FUZZ_SEED:-}" ]; then
  work="corpus-$name-seed-$TALLYON_FUZZ_SEED"
  rm -rf "build-fuzz/$work"
  seed=("-seed=$TALLYON_FUZZ_SEED")
fi
mkdir -p "build-fuzz/$work"
cd build-fuzz
# The message box's target keeps a Qt application alive to the end, whose caches are not freed
# at exit; leak reports there are about Qt, not the harness.
leaks=1
[ "$name" = msgbox ] && leaks=0
set +e
ASAN_OPTIONS="detect_leaks=$leaks" QT_QPA_PLATFORM=offscreen "../$binary" -max_total_time="$seconds" -print_final_stats=1 -detect_leaks="$leaks" \
  "${seed[@]}" "$work" "../fuzz/corpus/$name" >"fuzz-$name.log" 2>&1
status=$?
set -e
grep -E "stat::number_of_executed_units|stat::peak_rss|ERROR|SUMMARY|Test unit written" "fuzz-$name.log" || true
exit "$status"
