#!/usr/bin/env bash
# Prints the main window's start-up time (median of 10 runs, with tallyon.cfg present) and the
# resident memory after ten new puzzles, measured under Xvfb. Asserts nothing.
# Usage: bench/startup_memory.sh [build/bin]
set -euo pipefail
BIN_DIR="$(cd "${1:-build/bin}" && pwd)"
if [ -z "${TALLYON_BENCH_INNER:-}" ]; then
  export TALLYON_BENCH_INNER=1
  exec xvfb-run -a -s "-screen 0 1024x768x24 -noreset" bash "$0" "$BIN_DIR"
fi

APP="$(mktemp -d /tmp/tallyon-bench.XXXXXX)"
trap 'rm -rf "$APP"' EXIT
cp "$BIN_DIR/tallyon" "$BIN_DIR/all.col" "$APP/"
printf ' 7  2  1  0  0  16777215  0  128  6\r\nxp.col\r\n' > "$APP/tallyon.cfg"

now_ms() { date +%s%3N; }
times=()
for run in $(seq 10); do
  start="$(now_ms)"
  "$APP/tallyon" & pid=$!
  until xdotool search --onlyvisible --name '^Tallyon$' >/dev/null 2>&1; do sleep 0.002; done
  times+=($(( $(now_ms) - start )))
  kill "$pid"; wait "$pid" 2>/dev/null || true
done
sorted=($(printf '%s\n' "${times[@]}" | sort -n))
echo "start-up to visible window (ms), 10 runs: ${sorted[*]}"
echo "median: $(( (sorted[4] + sorted[5]) / 2 )) ms"

"$APP/tallyon" & pid=$!
win=""
until [ -n "$win" ]; do win="$(xdotool search --onlyvisible --name '^Tallyon$' 2>/dev/null | head -n1 || true)"; sleep 0.05; done
sleep 0.5
echo "resident memory at start: $(awk '/VmRSS/ {print $2, $3}' /proc/$pid/status)"
for _ in $(seq 10); do
  xdotool mousemove --window "$win" 674 57 click 1
  sleep 0.4
done
sleep 0.5
echo "resident memory after ten new puzzles: $(awk '/VmRSS/ {print $2, $3}' /proc/$pid/status)"
kill "$pid"
