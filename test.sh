#!/usr/bin/env bash
# Checks the code's layout, builds Tallyon and runs every test: the full suite, then the core,
# the settings-file readers and the fuzz corpora again under AddressSanitizer and
# UndefinedBehaviorSanitizer; where clang is installed, each fuzz target also runs a while.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh test
jobs="$(nproc)"
tools/lint.sh --format-only # every file in the layout of .clang-format

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTALLYON_WERROR=ON >/dev/null
cmake --build build -j"$jobs"
mkdir -p build/screenshots
(cd build && ctest --output-on-failure -j"$jobs" --timeout 600)

fuzz_targets=(config schemes numbers drawing msgbox code game)
sanitized_tests=(core_tests config_file_tests schemes_tests "${fuzz_targets[@]/#/replay_}")
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DTALLYON_SANITIZE=ON -DTALLYON_CORE_ONLY=OFF -DTALLYON_WERROR=ON >/dev/null
cmake --build build-asan -j"$jobs" --target "${sanitized_tests[@]}"
(cd build-asan && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 QT_QPA_PLATFORM=offscreen \
   ctest --output-on-failure -j"$jobs" --timeout 900 -L sanitized)

# A fixed seed, so that a failure here shows again when the run is repeated.
if command -v clang++ >/dev/null; then
  export TALLYON_FUZZ_SEED="${TALLYON_FUZZ_SEED:-20261123}"
  tools/fuzz.sh "${fuzz_targets[@]}" "${TALLYON_FUZZ_SECONDS:-20}"
fi
