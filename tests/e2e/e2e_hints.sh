#!/usr/bin/env bash
# The hint key, marks and the grade in the real program: holding H changes the board's pixels
# around the node the status line names and shows the hint there; releasing it gives back the
# very same board; Alt+Right from Start draws a cross on the link cell to its right, which
# comes back after kill -9 and --resume; --grade chooses the next puzzle's grade, G steps it,
# and an unknown grade ends the program with status 2.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"

start_xvfb
APP="$(fresh_app_dir)"
WORK="$(mktemp -d /tmp/tallyon-hints.XXXXXX)"
trap 'kill -9 "$PID" 2>/dev/null || true; rm -rf "$APP" "$WORK"; stop_xvfb' EXIT
printf ' 7  2  1  0  0  16777215  0  128  6\r\nxp.col\r\n' > "$APP/tallyon.cfg"
STATUS="$APP/status.log"

# A 7x7 puzzle laid from the left, always the same one, and its board geometry in pixels of
# the board picture (BoardLeft 756 twips, a cell pitch of 492, 15 twips a pixel).
CODE=T1-BwEfEMRMRm5kTEzAeIU5JmKFMTFRQhVmM3QyWBhIU5JTIxYxUVESJVOBlEaFmWeJUXdXNFFDRFeWNTRRUjVjJ5KCYpMyYSOTdoJXmCQklIUWYXknEhZDclKFJHUYRSdhJYMhM52U
cell_x() { echo $(((756 + ($1 - 1) * 492) / 15)); }
start_cell="$("$BIN_DIR/tallyon-gen" --decode "$CODE" --json | grep -o '"List2":\[[0-9]*' | grep -o '[0-9]*$')"
start_row=$(((start_cell - 1) / 15 + 1))

E2E_NAME=hints

# The pixels that differ between two board pictures within a square around (x, y).
differ_near() {
  local half="$5" area
  area="$((2 * half))x$((2 * half))+$(($3 - half))+$(($4 - half))"
  convert "$WORK/$1.png" -crop "$area" +repage "$WORK/near-a.png"
  convert "$WORK/$2.png" -crop "$area" +repage "$WORK/near-b.png"
  compare -metric AE "$WORK/near-a.png" "$WORK/near-b.png" null: 2>&1 || true
}

# H held: the first press names a node by row and column and rings it; the release gives
# back the board and the status line.
start --puzzle "$CODE"
wait_status "Puzzle Created"
board before
xdotool keydown h
wait_status_start "Hint 1: "
sleep 0.3
board held
cp "$WORK/held.png" "$SHOTS/e2e-hints-held.png"
said="$(last_status)"
row="$(echo "$said" | grep -o 'row [0-9]*' | head -n1 | grep -o '[0-9]*')"
col="$(echo "$said" | grep -o 'column [0-9]*' | head -n1 | grep -o '[0-9]*')"
[ -n "$row" ] && [ -n "$col" ] || fail "the hint names no node: '$said'"
x="$(cell_x $((2 * col - 1)))" y="$(cell_x $((2 * row - 1)))"
[ "$(differ_near before held "$x" "$y" 20)" -gt 20 ] || fail "no ring around row $row, column $col: '$said'"
xdotool keyup h
wait_status "Puzzle Created"
wait_board before

# Alt+Right from Start: a cross on the link cell to its right, the same after kill -9 and
# --resume.
xdotool key alt+Right
sleep 0.3
xdotool mousemove --window "$WIN" 300 300 # the keyboard's cursor goes when the pointer moves
sleep 0.3
board marked
cp "$WORK/marked.png" "$SHOTS/e2e-hints-marked.png"
[ "$(differ_near before marked "$(cell_x 2)" "$(cell_x "$start_row")" 10)" -gt 10 ] ||
  fail "Alt+Right drew no cross right of Start (row $start_row)"
stop
start --resume
wait_status "Puzzle resumed"
wait_board marked
stop

# The grade: --grade hard, then G steps on to Any; an unknown grade is refused.
start --grade hard
xdotool key g
wait_status "Next puzzle: Any (no puzzle yet)"
stop
status=0
"$APP/tallyon" --grade extreme 2>"$WORK/err" || status=$?
[ "$status" -eq 2 ] || fail "an unknown grade ended with status $status"
grep -q "unknown grade 'extreme'" "$WORK/err" || fail "an unknown grade was not named: $(cat "$WORK/err")"
echo "e2e_hints: 1 passed, 0 failed"
