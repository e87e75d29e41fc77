#!/usr/bin/env bash
# Checks the layout of every C++ file against .clang-format and runs clang-tidy's checks
# (.clang-tidy) over the sources; needs a configured build (compile_commands.json in build/).
# Usage: tools/lint.sh [--format-only]
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run --Werror "${files[@]}"
[ "${1:-}" = "--format-only" ] && exit 0
mapfile -t sources < <(git ls-files 'core/*.cpp' 'play/*.cpp' 'platform/*.cpp' 'ui/*.cpp' 'output/*.cpp' 'shell/*.cpp' \
                                     'shell/**/*.cpp' 'tools/*.cpp')
out="$(clang-tidy -p build --quiet "${sources[@]}" 2>/dev/null | grep -E 'warning:|error:' || true)"
[ -z "$out" ] || { echo "$out"; exit 1; }
echo "clang-format and clang-tidy: clean"
