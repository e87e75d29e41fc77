#!/usr/bin/env bash
# The real program copies the puzzle and then its solution to the clipboard; another program
# reads each picture back while the game runs, and the solution adds the path's dark lines;
# the puzzle's code lies beside the pictures as plain text.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"
command -v xclip >/dev/null || { echo "SKIP: xclip is not installed"; exit 77; }

start_xvfb

APP="$(fresh_app_dir)"
WORK="$(mktemp -d /tmp/tallyon-clip.XXXXXX)"
trap 'kill "$PID" 2>/dev/null || true; rm -rf "$APP" "$WORK"; stop_xvfb' EXIT
printf ' 7  2  1  0  0  16777215  1  128  6\r\nxp.col\r\n' > "$APP/tallyon.cfg"
launch "$APP/tallyon"
WIN="$(wait_window Tallyon)"
wait_pixel "$WIN" 2 2 "0,0,0" not
new_puzzle "$WIN"

# File > Copy to Clipboard > Puzzle, then > Solution (the submenu opens on its first item).
copy_from_menu() {
  local menus
  open_file_menu "$WIN"
  menus="$(window_count)"
  xdotool key Down Down Down Right
  for _ in $(seq 100); do [ "$(window_count)" -gt "$menus" ] && break; sleep 0.05; done
  [ "$1" = solution ] && xdotool key Down
  xdotool key Return
}
read_clipboard() {
  for _ in $(seq 40); do
    xclip -selection clipboard -t image/png -o > "$1" 2>/dev/null && [ -s "$1" ] && return 0
    sleep 0.1
  done
  fail "no picture on the clipboard"
}

xclip -selection clipboard -i /dev/null 2>/dev/null || true
copy_from_menu puzzle
read_clipboard "$WORK/puzzle.png"
copy_from_menu solution
for _ in $(seq 40); do   # until the clipboard holds the new picture
  read_clipboard "$WORK/solution.png"
  cmp -s "$WORK/puzzle.png" "$WORK/solution.png" || break
  sleep 0.1
done
cp "$WORK/puzzle.png" "$SHOTS/e2e-clipboard-puzzle.png"
cp "$WORK/solution.png" "$SHOTS/e2e-clipboard-solution.png"

size_p="$(identify -format '%wx%h' "$WORK/puzzle.png")"
size_s="$(identify -format '%wx%h' "$WORK/solution.png")"
[ "$size_p" = "$size_s" ] || fail "pictures differ in size: $size_p and $size_s"
# Pixels light in the puzzle and dark in the solution: the path's lines.
added="$(convert "$WORK/puzzle.png" "$WORK/solution.png" -colorspace Gray \
          -fx '(u>0.6 && v<0.4) ? 1 : 0' -format '%[fx:round(mean*w*h)]' info:)"
[ "$added" -gt 300 ] || fail "the solution picture shows no path ($added pixels)"
# Beside the picture, as plain text, the puzzle's code: it names a puzzle of the board's size.
code="$(xclip -selection clipboard -t text/plain -o 2>/dev/null || true)"
case "$code" in T1-*) ;; *) fail "no puzzle code beside the picture: '$code'" ;; esac
"$BIN_DIR/tallyon-gen" --decode "$code" | head -n1 | grep -q '^Puzzle 1: 7x7' || fail "the code does not name a 7x7 puzzle"
kill -0 "$PID" || fail "the program ended"
echo "e2e_clipboard: 1 passed, 0 failed"
