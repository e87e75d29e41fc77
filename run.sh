#!/usr/bin/env bash
# Builds Tallyon and starts the game.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)"
# Started in its own folder: the options window previews schemes from "all.col" there.
if [ -x build/bin/tallyon ]; then
  cd build/bin
  exec ./tallyon "$@"
fi
exec build/bin/tallyon-gen --size 7 --side random
