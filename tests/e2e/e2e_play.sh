#!/usr/bin/env bash
# The real program in a fresh directory: the configuration message, a puzzle, one link made
# and undone, and File > Exit > Yes writing tallyon.cfg.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"

start_xvfb

APP="$(fresh_app_dir)"
trap 'kill "$PID" 2>/dev/null || true; rm -rf "$APP"; stop_xvfb' EXIT
launch "$APP/tallyon"

# A fresh directory: the configuration message comes first, and the file is made.
MSG="$(wait_window Message)"
wait_pixel "$MSG" 2 2 "0,0,0" not
import -window "$MSG" "$SHOTS/e2e-config-message.png"
press_return "$MSG"
wait_gone Message
[ -f "$APP/tallyon.cfg" ] || fail "tallyon.cfg was not created"
head -n1 "$APP/tallyon.cfg" | tr -d '\r' | grep -qE '^ 7 +2 +1 +0 +0 +16777215 +0 +128 +6$' \
  || fail "unexpected first line: $(head -n1 "$APP/tallyon.cfg")"

WIN="$(wait_window Tallyon)"
# Controls in window coordinates (the layout is fixed): New Puzzle, Undo, the link cell
# between the first two nodes of the top row of a 7x7 board, and a point on its link line.
NEW_X=674; NEW_Y=57; UNDO_X=674; UNDO_Y=195
CELL_X=91; CELL_Y=77; LINE_X=76; LINE_Y=77

wait_pixel "$WIN" 2 2 "0,0,0" not
new_puzzle "$WIN"
xdotool mousemove --window "$WIN" "$CELL_X" "$CELL_Y" click 1
wait_pixel "$WIN" "$LINE_X" "$LINE_Y" "128,0,0"   # the link line in the user line colour
import -window "$WIN" "$SHOTS/e2e-linked.png"

xdotool mousemove --window "$WIN" "$UNDO_X" "$UNDO_Y" click 1
wait_pixel "$WIN" "$LINE_X" "$LINE_Y" "128,0,0" not   # gone after undo
import -window "$WIN" "$SHOTS/e2e-undone.png"

# File > Options (the first item) and File > About (two up from the bottom): each comes up
# on top with the focus, and Escape closes it.
for item in "Down" "Up Up"; do
  open_file_menu "$WIN"
  xdotool key $item Return
  case "$item" in Down) title="Tallyon Options" ;; *) title="About Tallyon" ;; esac
  DLG="$(wait_window "$title")"
  wait_pixel "$DLG" 2 2 "0,0,0" not
  check_on_top "$DLG"
  xdotool key Escape
  wait_gone "$title"
done

# File > Exit: the last item of the File menu; then "Exit?" answered Yes.
open_file_menu "$WIN"
xdotool key Up Return
ASK="$(wait_window Message)"
wait_pixel "$ASK" 2 2 "0,0,0" not
import -window "$ASK" "$SHOTS/e2e-exit-question.png"
# The box comes up over the main window with the focus, with no window manager to raise it:
# the screen shows it whole, and Return answers it.
check_on_top "$ASK"
xdotool key Return
wait_ended
tr -d '\r' < "$APP/tallyon.cfg" | sed -n 2p | grep -qx 'xp.col' || fail "scheme line not written"
echo "e2e_play: 1 passed, 0 failed"
