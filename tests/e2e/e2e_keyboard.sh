#!/usr/bin/env bash
# The real program started on a known puzzle from its code and played from the keyboard: the
# whole path typed with Shift+arrows, then V held, and the status line reads "All Done !".
# Then Ctrl+Z and Ctrl+Y give back the same board, Ctrl+P prints without the plugins folder,
# and a damaged code is explained in a message box over an empty board.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"

start_xvfb
APP="$(fresh_app_dir)"
trap 'kill "$PID" 2>/dev/null || true; rm -rf "$APP"; stop_xvfb' EXIT
printf ' 7  2  1  0  0  16777215  0  128  6\r\nxp.col\r\n' > "$APP/tallyon.cfg"
STATUS="$APP/status.log"

# A 5x5 puzzle laid from the left, and the keys that link its whole path.
CODE="$("$BIN_DIR/tallyon-gen" --size 5 --side left --code)"
mapfile -t keys < <(path_keys "$CODE" 11)

start --puzzle "$CODE"
wait_status "Puzzle Created"
xdotool key --delay 20 "${keys[@]}"
# Each key's link shows its hint first.
for _ in $(seq 100); do
  [ "$(grep -c '^Use' "$STATUS")" -ge "${#keys[@]}" ] && break
  sleep 0.05
done
[ "$(grep -c '^Use' "$STATUS")" -ge "${#keys[@]}" ] || fail "not every key linked: $(grep -c '^Use' "$STATUS") of ${#keys[@]}"
import -window "$WIN" "$SHOTS/e2e-keyboard-path.png"
xdotool keydown v
wait_status "All Done !"
xdotool keyup v
wait_status ""

# Ctrl+Z takes the last link back, Ctrl+Y makes it again: the same board as before.
before="$(mktemp /tmp/tallyon-kb.XXXXXX.png)" after="$(mktemp /tmp/tallyon-kb.XXXXXX.png)"
import -window "$WIN" -crop 560x560+8+27 "$before"
xdotool key ctrl+z
sleep 0.3
import -window "$WIN" -crop 560x560+8+27 "$after"
[ "$(compare -metric AE "$before" "$after" null: 2>&1 || true)" != "0" ] || fail "Ctrl+Z changed nothing"
xdotool key ctrl+y
for _ in $(seq 40); do
  import -window "$WIN" -crop 560x560+8+27 "$after"
  [ "$(compare -metric AE "$before" "$after" null: 2>&1 || true)" = "0" ] && break
  sleep 0.05
done
[ "$(compare -metric AE "$before" "$after" null: 2>&1 || true)" = "0" ] || fail "Ctrl+Y did not give the board back"
rm -f "$before" "$after"

# Ctrl+P prints from this copy of the program, which has no plugins folder beside it: with no
# printer, the page is written as a PDF beside the program, and "Done" follows.
xdotool key ctrl+p
press_return "$(wait_window Message)"
for _ in $(seq 200); do [ -s "$APP/tallyon-print.pdf" ] && break; sleep 0.05; done
[ -s "$APP/tallyon-print.pdf" ] || fail "Ctrl+P wrote no PDF from a program without its plugins folder"
press_return "$(wait_window Message)"
wait_gone Message
kill "$PID"
wait "$PID" 2>/dev/null || true

# A damaged code: a message box, then the empty board and the start-up prompt.
launch "$APP/tallyon" --puzzle "${CODE:0:40}"
MSG="$(wait_window Message)"
wait_pixel "$MSG" 2 2 "0,0,0" not
import -window "$MSG" "$SHOTS/e2e-keyboard-damaged-code.png"
press_return "$MSG"
wait_gone Message
WIN="$(wait_window Tallyon)"
kill -0 "$PID" || fail "the program ended after a damaged code"
echo "e2e_keyboard: 1 passed, 0 failed"
