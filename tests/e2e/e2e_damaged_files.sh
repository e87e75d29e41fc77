#!/usr/bin/env bash
# The real program on a corpus of damaged tallyon.cfg and all.col files: truncated, empty,
# binary, huge, CR-only, with a BOM or NUL bytes, bad and huge numbers, an unknown scheme, a
# directory or a FIFO in the file's place. For each: no crash and no hang (a window, or the
# start-up error and exit code 1, within 5 s); then, where the main window came, New Puzzle,
# one link and File > Exit "Yes" write a good tallyon.cfg. Four X servers take the cases
# side by side.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"

WORK="$(mktemp -d /tmp/tallyon-damaged.XXXXXX)"
trap '[ -n "${KEEP_WORK:-}" ] || rm -rf "$WORK"' EXIT
GOOD_CFG=$' 7  2  1  0  0  16777215  1  128  6\r\nxp.col\r\n'
GOOD_COL="$(cat "$BIN_DIR/all.col")"
mkdir -p "$WORK/cases"
# The folder of a new case, numbered after those made so far (also from a pipeline's subshell).
next_case() {
  local dir="$WORK/cases/$(( $(ls "$WORK/cases" | wc -l) + 1 ))"
  mkdir "$dir" && echo "$dir"
}
add() { # add FILE: the case's damaged file is read from stdin
  cat >"$(next_case)/$1"
}
special() { # special FILE KIND: a directory or a FIFO in the file's place
  local dir
  dir="$(next_case)"
  case "$2" in dir) mkdir "$dir/$1" ;; fifo) mkfifo "$dir/$1" ;; esac
}

for ((i = 0; i < ${#GOOD_CFG}; i += 1)); do printf '%s' "${GOOD_CFG:0:i}" | add tallyon.cfg; done
head -c 3000 /dev/urandom | add tallyon.cfg
{ printf '%s' "$GOOD_CFG"; head -c $((2 << 20)) /dev/zero | tr '\0' '7'; } | add tallyon.cfg
printf '%s' "$GOOD_CFG" | tr '\n' '\r' | tr -d '\n' | add tallyon.cfg
printf '\xef\xbb\xbf%s' "$GOOD_CFG" | add tallyon.cfg
printf ' 7 2 1\0 0 0 0 1 128 6\r\nxp.col\r\n' | add tallyon.cfg
printf ' 7 2 x 0 0 0 1 128 6\r\nxp.col\r\n' | add tallyon.cfg
printf ' 99999999999 2 1 0 0 0 1 128 6\r\nxp.col\r\n' | add tallyon.cfg
for value in 0 -5 16000 1000000 2147483647 -2147483648; do
  printf ' 7 2 %s 0 0 16777215 1 128 %s\r\nxp.col\r\n' "$value" "$value" | add tallyon.cfg
done
for value in 3 11 -1 2147483647; do
  printf ' %s 2 1 0 0 16777215 %s 128 6\r\nxp.col\r\n' "$value" "$value" | add tallyon.cfg
done
for field in 1 2 3 4 5 6 7 8 9; do # each field in turn not a number, then far too big
  for bad in x 99999999999999 -; do
    printf '%s\r\nxp.col\r\n' "$(echo 7 2 1 0 0 16777215 1 128 6 | awk -v f="$field" -v b="$bad" '{$f = b; print}')" |
      add tallyon.cfg
  done
done
printf ' 7 2 1 0 0 16777215 1 128 6\r\nGone.col\r\n' | add tallyon.cfg
{ printf ' 7 2 1 0 0 16777215 1 128 6\r\n'; head -c 200000 /dev/zero | tr '\0' 'n'; printf '.col\r\n'; } | add tallyon.cfg
special tallyon.cfg dir
special tallyon.cfg fifo
for cut in 0 1 7 20 60 100 200 400 800 1200; do printf '%s' "${GOOD_COL:0:cut}" | add all.col; done
head -c 3000 /dev/urandom | add all.col
printf '%s' "$GOOD_COL" | tr '\n' '\r' | add all.col
printf '\xef\xbb\xbf%s' "$GOOD_COL" | add all.col
printf 'xp.col\r\n1;2\0;3\r\n-9;999;x\r\n' | add all.col
{ printf '%s' "$GOOD_COL"; head -c $((17 << 20)) /dev/zero; } | add all.col
special all.col dir
special all.col fifo
n="$(ls "$WORK/cases" | wc -l)"
echo "$n cases"
[ "$n" -ge 100 ] || fail "only $n cases"

# One case: returns 0 when the program behaved, else prints why.
run_case() {
  local dir="$1" app status win ask
  app="$dir/app"
  mkdir -p "$app"
  cp "$BIN_DIR/tallyon" "$app/"
  [ -e "$dir/all.col" ] || [ -p "$dir/all.col" ] || cp "$BIN_DIR/all.col" "$app/"
  for f in tallyon.cfg all.col; do [ -e "$dir/$f" ] || [ -p "$dir/$f" ] && mv "$dir/$f" "$app/"; done
  "$app/tallyon" >/dev/null 2>"$dir/stderr" & PID=$!
  win=""
  for _ in $(seq 100); do # 5 s: a window, or the start-up error
    if ! kill -0 "$PID" 2>/dev/null; then wait "$PID"; status=$?; break; fi
    ask="$(xdotool search --onlyvisible --name '^Message$' 2>/dev/null | head -n1 || true)"
    if [ -n "$ask" ]; then press_return "$ask"; sleep 0.05; continue; fi
    win="$(xdotool search --onlyvisible --name '^Tallyon$' 2>/dev/null | head -n1 || true)"
    [ -n "$win" ] && break
    sleep 0.05
  done
  if [ -z "$win" ]; then
    kill -0 "$PID" 2>/dev/null && { kill -9 "$PID"; echo "$dir: no window within 5 s"; return 1; }
    [ "${status:-0}" -eq 1 ] || { echo "$dir: ended with status ${status:-?} before a window: $(tail -n3 "$dir/stderr")"; return 1; }
    return 0 # the start-up error for a schemes file it cannot read
  fi
  xdotool mousemove --window "$win" 674 57 click 1             # New Puzzle
  xdotool mousemove --window "$win" 91 77 click 1              # a link in the top row
  open_file_menu "$win"
  xdotool key Up Return
  ask="$(wait_window Message)" || { echo "$dir: no Exit question"; return 1; }
  press_return "$ask"
  for _ in $(seq 100); do # answering the report of a file that cannot be written, if any
    kill -0 "$PID" 2>/dev/null || break
    ask="$(xdotool search --onlyvisible --name '^Message$' 2>/dev/null | head -n1 || true)"
    [ -n "$ask" ] && press_return "$ask"
    sleep 0.05
  done
  kill -0 "$PID" 2>/dev/null && { kill -9 "$PID"; echo "$dir: did not end after Exit"; return 1; }
  wait "$PID"; status=$?
  [ "$status" -eq 0 ] || { echo "$dir: Exit ended with status $status"; return 1; }
  local cfg="$app/tallyon.cfg"
  [ -d "$cfg" ] && return 0 # a folder in the file's place: reported, and left alone
  [ -f "$cfg" ] || { echo "$dir: no tallyon.cfg after Exit"; return 1; }
  head -n1 "$cfg" | grep -qE '^( *-?[0-9]+){9}'$'\r''$' || { echo "$dir: bad first line"; return 1; }
  [ "$(sed -n 2p "$cfg" | tr -d '\r' | wc -c)" -gt 1 ] || { echo "$dir: no scheme line"; return 1; }
  return 0
}

worker() { # worker K DISPLAY: every fourth case, on an X server of its own
  local k="$1" failed=0
  export DISPLAY="$2"
  for dir in "$WORK"/cases/*; do
    [ $(( ${dir##*/} % 4 )) -eq "$k" ] || continue
    run_case "$dir" || failed=$((failed + 1))
  done
  return "$failed"
}

# The servers are started one after another: started together, two could pick one display.
displays=() servers=()
for k in 0 1 2 3; do
  start_xvfb
  displays+=("$DISPLAY") servers+=("$XVFB_PID")
done
trap '[ -n "${KEEP_WORK:-}" ] || rm -rf "$WORK"; kill "${servers[@]}" 2>/dev/null; rm -rf "$TEST_STATE_HOME"' EXIT
failures=0
pids=()
for k in 0 1 2 3; do worker "$k" "${displays[$k]}" & pids+=($!); done
for p in "${pids[@]}"; do wait "$p" || failures=$((failures + $?)); done
[ "$failures" -eq 0 ] || fail "$failures of $n damaged-file cases misbehaved"
echo "e2e_damaged_files: $n cases passed"
