#!/usr/bin/env bash
# The game kept between runs, and puzzle codes through the clipboard, in the real program:
# a code put on the clipboard by xclip and pasted with Ctrl+V shows the board --puzzle shows,
# and a damaged one a message box; a game of two links and an undo, ended by kill -9, comes
# back with --resume to the same pixels, and Ctrl+Y redoes the link; a plain start stays empty.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"
command -v xclip >/dev/null || { echo "SKIP: xclip is not installed"; exit 77; }

start_xvfb
APP="$(fresh_app_dir)"
WORK="$(mktemp -d /tmp/tallyon-resume.XXXXXX)"
trap 'kill -9 "$PID" 2>/dev/null || true; pkill -f "xclip -selection clipboard" 2>/dev/null; rm -rf "$APP" "$WORK"; stop_xvfb' EXIT
printf ' 7  2  1  0  0  16777215  0  128  6\r\nxp.col\r\n' > "$APP/tallyon.cfg"
STATUS="$APP/status.log"

# A 6x6 puzzle from the left, and the keys of its first two links.
CODE="$("$BIN_DIR/tallyon-gen" --size 6 --side left --code)"
cells="$("$BIN_DIR/tallyon-gen" --decode "$CODE" --json | grep -o '"List2":\[[0-9,]*\]' | sed 's/.*\[//; s/\]//')"
IFS=, read -r -a path <<< "$cells"
span=13
keys=()
for ((i = 2; i <= 4; i += 2)); do
  a=$((path[i - 2] - 1)) b=$((path[i] - 1))
  if ((b % span > a % span)); then keys+=(shift+Right)
  elif ((b % span < a % span)); then keys+=(shift+Left)
  elif ((b > a)); then keys+=(shift+Down)
  else keys+=(shift+Up); fi
done

wait_status() {
  for _ in $(seq 100); do
    [ -f "$STATUS" ] && [ "$(tail -n1 "$STATUS")" = "$1" ] && return 0
    sleep 0.05
  done
  fail "the status line does not read '$1' (last: '$(tail -n1 "$STATUS" 2>/dev/null)')"
}
# The board picture, and whether two of them are the same.
board() { import -window "$WIN" -crop 560x560+8+27 +repage "$WORK/$1.png"; }
same() { [ "$(compare -metric AE "$WORK/$1.png" "$WORK/$2.png" null: 2>&1 || true)" = "0" ]; }
# Waits until the board shows the picture named.
wait_board() {
  for _ in $(seq 60); do
    board now
    same now "$1" && return 0
    sleep 0.05
  done
  fail "the board does not show $1 (see $SHOTS/e2e-resume-$1-seen.png)"
}
start() {
  : >"$STATUS"
  launch env TALLYON_STATUS_FILE="$STATUS" "$APP/tallyon" "$@"
  WIN="$(wait_window Tallyon)"
  wait_pixel "$WIN" 2 2 "0,0,0" not
  xdotool windowfocus --sync "$WIN" 2>/dev/null || xdotool windowfocus "$WIN"
}
stop() { kill -9 "$PID"; wait "$PID" 2>/dev/null || true; }

# --puzzle CODE: the board to expect.
start --puzzle "$CODE"
wait_status "Puzzle Created"
board given
stop

# A plain start is empty; Ctrl+V plays the code on the clipboard, a damaged one is explained.
start
wait_status "Click Create New Puzzle to create a new puzzle"
board empty
printf '  %s\n' "$CODE" | xclip -selection clipboard
xdotool key ctrl+v
wait_board given
printf '%s' "${CODE:0:50}" | xclip -selection clipboard
xdotool key ctrl+v
MSG="$(wait_window Message)"
import -window "$MSG" "$SHOTS/e2e-resume-damaged-paste.png"
press_return "$MSG"
wait_gone Message
board now
same now given || fail "a damaged code changed the board"
stop

# Two links and an undo, then kill -9: --resume gives the same pixels, Ctrl+Y the second link.
start --puzzle "$CODE"
wait_status "Puzzle Created"
xdotool key --delay 50 "${keys[@]}"
xdotool mousemove --window "$WIN" 300 300 # the keyboard's cursor goes when the pointer moves
sleep 0.3
board two
xdotool key ctrl+z
sleep 0.3
board one
same one two && fail "Ctrl+Z changed nothing"
cp "$WORK/one.png" "$SHOTS/e2e-resume-before-kill.png"
stop
start --resume
wait_status "Puzzle resumed"
wait_board one
xdotool key ctrl+y
wait_board two
stop

start
wait_status "Click Create New Puzzle to create a new puzzle"
wait_board empty
echo "e2e_resume: 1 passed, 0 failed"
