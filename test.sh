#!/usr/bin/env bash
# Builds Tallyon and runs every test: the full suite, then the core and the settings-file
# readers again under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh test
jobs="$(nproc)"

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
mkdir -p build/screenshots
(cd build && ctest --output-on-failure -j"$jobs" --timeout 600)

sanitized_tests=(core_tests config_file_tests schemes_tests)
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DTALLYON_SANITIZE=ON -DTALLYON_CORE_ONLY=OFF >/dev/null
cmake --build build-asan -j"$jobs" --target "${sanitized_tests[@]}"
(cd build-asan && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 QT_QPA_PLATFORM=offscreen \
   ctest --output-on-failure -j"$jobs" --timeout 900 -L sanitized)
