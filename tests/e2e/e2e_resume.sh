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
mapfile -t keys < <(path_keys "$CODE" 13 2)
E2E_NAME=resume

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
