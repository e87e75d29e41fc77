#!/usr/bin/env bash
# Prints Tallyon's footprint beside a bare Qt window (bench_bare_window, a QMainWindow with a
# File menu and a label), both started five times in turn under one Xvfb: the time from the
# start to a visible window, and the resident memory 1.5 s after the start, with Tallyon's
# empty board and again after a 10x10 puzzle. Medians of five, and Tallyon's over the bare
# window's. Asserts nothing.
# Usage: bench/footprint.sh [build/bin]
set -euo pipefail
BIN_DIR="$(cd "${1:-build/bin}" && pwd)"
if [ -z "${TALLYON_BENCH_INNER:-}" ]; then
  export TALLYON_BENCH_INNER=1
  exec xvfb-run -a -s "-screen 0 1024x768x24 -noreset" bash "$0" "$BIN_DIR"
fi

APP="$(mktemp -d /tmp/tallyon-bench.XXXXXX)"
trap 'rm -rf "$APP"' EXIT
cp "$BIN_DIR/tallyon" "$BIN_DIR/all.col" "$APP/"
printf ' 10  2  1  0  0  16777215  1  128  6\r\nxp.col\r\n' > "$APP/tallyon.cfg"
export XDG_STATE_HOME="$APP/state"

now_us() { echo $(( $(date +%s%N) / 1000 )); }
median() { printf '%s\n' "$@" | sort -n | sed -n "$(( ($# + 1) / 2 ))p"; }
rss_kb() { awk '/VmRSS/ {print $2}' "/proc/$1/status"; }

# run NAME PROGRAM: starts it, prints "ms kB", the start-up time and the memory at 1.5 s;
# for Tallyon, also the memory 1.5 s after a 10x10 puzzle is made.
run() {
  local name="$1" start pid win visible rss puzzle=""
  start="$(now_us)"
  "$2" & pid=$!
  until win="$(xdotool search --onlyvisible --name "^$name\$" 2>/dev/null | head -n1)" && [ -n "$win" ]; do
    sleep 0.002
  done
  visible=$(( ($(now_us) - start) / 1000 ))
  sleep "$(awk -v s="$start" -v n="$(now_us)" 'BEGIN { d = 1.5 - (n - s) / 1e6; print (d > 0 ? d : 0) }')"
  rss="$(rss_kb "$pid")"
  if [ "$name" = Tallyon ]; then
    xdotool mousemove --window "$win" 674 57 click 1
    sleep 1.5
    puzzle=" $(rss_kb "$pid")"
  fi
  kill "$pid"; wait "$pid" 2>/dev/null || true
  echo "$visible $rss$puzzle"
}

bare_ms=() bare_kb=() ty_ms=() ty_kb=() ty_puzzle_kb=()
for _ in 1 2 3 4 5; do
  read -r ms kb < <(run Bare "$BIN_DIR/bench_bare_window")
  bare_ms+=("$ms") bare_kb+=("$kb")
  read -r ms kb puzzle < <(run Tallyon "$APP/tallyon")
  ty_ms+=("$ms") ty_kb+=("$kb") ty_puzzle_kb+=("$puzzle")
done
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
bm="$(median "${bare_ms[@]}")" bk="$(median "${bare_kb[@]}")"
tm="$(median "${ty_ms[@]}")" tk="$(median "${ty_kb[@]}")" tp="$(median "${ty_puzzle_kb[@]}")"
echo "start-up to a visible window (ms), five runs: bare ${bare_ms[*]}; Tallyon ${ty_ms[*]}"
echo "resident memory at 1.5 s (kB), five runs: bare ${bare_kb[*]}; Tallyon ${ty_kb[*]}; after a 10x10 puzzle ${ty_puzzle_kb[*]}"
echo
echo "| | bare Qt window | Tallyon | Tallyon / bare |"
echo "|---|---|---|---|"
echo "| start-up to a visible window (median ms) | $bm | $tm | $(ratio "$tm" "$bm") |"
echo "| resident memory, empty board (median MB) | $(ratio "$bk" 1024) | $(ratio "$tk" 1024) | $(ratio "$tk" "$bk") |"
echo "| resident memory, after a 10x10 puzzle (median MB) | $(ratio "$bk" 1024) | $(ratio "$tp" 1024) | $(ratio "$tp" "$bk") |"
