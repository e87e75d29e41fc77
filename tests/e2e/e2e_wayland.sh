#!/usr/bin/env bash
# The real program as a native Wayland client of Weston, which runs on its X11 backend inside
# the test's Xvfb so that xdotool can type and click into it (headless Weston has no seat).
# The first-start box and the main window's maximize buttons do no harm: the program lives on
# and the windows keep their size. A new puzzle is made and linked from the keyboard. The Exit
# question stays over the main window when the main window is clicked, and still answers.
# Skipped where Weston or Qt's Wayland platform plugin is not installed.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"
command -v weston >/dev/null || { echo "SKIP: weston is not installed (tools/install-deps.sh test installs it)"; exit 77; }

# Weston's output is a window of this size at the screen's top left; the screen around it is
# where the pointer goes between moves (see wl_move).
OUT_W=960 OUT_H=720
SCHEME_BACK='#ECE9D8' # the background of xp.col, the scheme a first start takes
PLAIN_BACK='#EFEFEF'  # the windows' ground before a scheme is loaded, and Qt's title bars
TITLE_BAR=30 FRAME=3  # Qt's title bar on Wayland: its height and the frame around the window

start_xvfb
WORK="$(mktemp -d /tmp/tallyon-wayland.XXXXXX)"
APP="$(fresh_app_dir)"
PID="" WESTON_PID=""
stop_all() {
  kill $PID $WESTON_PID 2>/dev/null || true
  wait $PID $WESTON_PID 2>/dev/null || true
  rm -rf "$APP" "$WORK"
  stop_xvfb
}
trap stop_all EXIT
export XDG_RUNTIME_DIR="$WORK/runtime"
mkdir -m 700 "$XDG_RUNTIME_DIR"
weston --backend=x11-backend.so --width="$OUT_W" --height="$OUT_H" --use-pixman --no-config --idle-time=0 \
  --socket=tallyon-test >"$WORK/weston.log" 2>&1 &
WESTON_PID=$!
for _ in $(seq 200); do [ -S "$XDG_RUNTIME_DIR/tallyon-test" ] && break; sleep 0.05; done
[ -S "$XDG_RUNTIME_DIR/tallyon-test" ] || fail "weston did not start: $(tail -n 3 "$WORK/weston.log")"
sleep 1 # its shell draws the desktop
OUTPUT="$(xdotool search --class weston | head -n1 || true)"
[ -n "$OUTPUT" ] || fail "no window of Weston's output on the X screen"
xdotool windowfocus "$OUTPUT"

SHOT="$WORK/screen.png"
shoot() { import -window root "$SHOT"; }
keep() { cp "$SHOT" "$SHOTS/e2e-wayland-$1.png"; }

# The regions of one colour on the screen, largest first, as "width height x y".
regions() {
  convert "$SHOT" -alpha off -fill black +opaque "$1" -fill white -opaque "$1" \
    -define connected-components:verbose=true -define connected-components:area-threshold=400 \
    -connected-components 4 null: 2>/dev/null |
    awk 'NR > 1 && $NF == "srgb(255,255,255)" { split($2, g, /[x+]/); print $4, g[1], g[2], g[3], g[4] }' |
    sort -nr | cut -d' ' -f2-
}
# Waits for a region of a colour whose size lies within bounds; prints "width height x y".
wait_region() {
  local colour="$1" min_w="$2" max_w="$3" max_h="$4" found
  for _ in $(seq 100); do
    shoot
    found="$(regions "$colour" | awk -v a="$min_w" -v b="$max_w" -v h="$max_h" '$1 >= a && $1 <= b && $2 <= h' | head -n1)"
    [ -n "$found" ] && { echo "$found"; return 0; }
    alive || return 1
    sleep 0.1
  done
  return 1
}
message_box() { wait_region "$1" 200 700 400 || fail "no message box on the screen"; }
main_window() { wait_region "$SCHEME_BACK" 700 900 700 || fail "no main window on the screen"; }

# Weston's X11 backend follows the X pointer by its motion and takes its place only when the
# pointer enters its window: every move leaves the output and comes back in.
wl_move() { xdotool mousemove $((OUT_W + 30)) $((OUT_H + 30)); sleep 0.05; xdotool mousemove "$1" "$2"; sleep 0.2; }
wl_click() { wl_move "$1" "$2"; xdotool click 1; sleep 0.3; }
# Out of the way of every window, on Weston's panel, which stays above them all; inside the
# output, which then keeps the keyboard.
park() { wl_move $((OUT_W / 2)) 12; }

alive() { kill -0 "$PID" 2>/dev/null; }
no_protocol_error() {
  alive || fail "the program ended $1: $(tail -n 3 "$WORK/app.log")"
  ! grep -q 'Protocol error\|fatal error' "$WORK/app.log" || fail "$1: $(grep -m1 'error' "$WORK/app.log")"
}

STATUS="$APP/status.log"
wait_status() {
  for _ in $(seq 100); do
    [ -f "$STATUS" ] && grep -q "$1" "$STATUS" && return 0
    sleep 0.05
  done
  fail "the status line never read '$1' (last: '$(tail -n1 "$STATUS" 2>/dev/null)')"
}

# Qt's title bar offers maximize 40 pixels left of the window's right edge, in the middle of
# the bar. Clicking it, then moving over the window (which repaints it), must leave the program
# running and the window at its size.
maximize() {
  local right="$1" bar_top="$2"
  wl_click $((right - 40)) $((bar_top + TITLE_BAR / 2))
  wl_move $((right - 200)) $((bar_top + 60))
  xdotool mousemove $((right - 150)) $((bar_top + 90))
  sleep 0.5
  park
}

launch env WAYLAND_DISPLAY=tallyon-test QT_QPA_PLATFORM=wayland TALLYON_STATUS_FILE="$STATUS" "$APP/tallyon" \
  2>"$WORK/app.log"
# The first start, without tallyon.cfg, says so in a box before the main window shows.
if ! read -r BW BH BX BY < <(wait_region "$PLAIN_BACK" 200 700 400); then
  grep -q 'platform plugin "wayland"' "$WORK/app.log" &&
    { echo "SKIP: Qt's Wayland platform plugin is not installed (qt6-wayland)"; exit 77; }
  fail "no first-start box: $(tail -n 3 "$WORK/app.log")"
fi
keep first-start
# The region is the whole box, its title bar and frame included.
maximize $((BX + BW)) "$BY"
no_protocol_error "after the first-start box's maximize"
read -r W H BX BY < <(message_box "$PLAIN_BACK")
[ "$W $H" = "$BW $BH" ] || fail "the first-start box changed size: ${BW}x$BH to ${W}x$H"
keep first-start-maximize
xdotool key Return

# The main window: its client area below the menu bar is the largest region of the scheme's
# background; the menu bar, the same colour, lies just above it.
read -r MW MH MX MY < <(main_window)
MENU_TOP="$(regions "$SCHEME_BACK" | awk -v w="$MW" -v y="$MY" '$1 == w && $4 + $2 <= y { print $4 }' | sort -nr | head -n1)"
[ -n "$MENU_TOP" ] || fail "no menu bar above the main window's client area"
wait_status "Click Create New Puzzle to create a new puzzle"
keep main-window

# A new puzzle, and a link from the keyboard: Start lies in the left column or the top row, so
# Shift+Right or else Shift+Down links it to a neighbour; the game kept after it changes.
park
xdotool key ctrl+n
wait_status "Puzzle Created"
game="$XDG_STATE_HOME/tallyon/game"
for _ in $(seq 100); do [ -s "$game" ] && break; sleep 0.05; done
before="$(md5sum <"$game")"
xdotool key shift+Right
sleep 0.5
grep -q '^Use' "$STATUS" || xdotool key shift+Down
wait_status "^Use"
for _ in $(seq 100); do [ "$(md5sum <"$game")" != "$before" ] && break; sleep 0.05; done
[ "$(md5sum <"$game")" != "$before" ] || fail "the keyboard's link was not kept in the game"
shoot
keep linked

# The Exit question, then a click on the main window beside it: the box stays over it.
xdotool key alt+f
sleep 0.3
xdotool key Up Return
read -r EW EH EX EY < <(message_box "$SCHEME_BACK")
if ((EX + EW / 2 < MX + MW / 2)); then CX=$((MX + MW - 40)); else CX=$((MX + 40)); fi
CY=$((MY + MH - 60))
wl_click "$CX" "$CY"
park
sleep 0.5
read -r W H X Y < <(message_box "$SCHEME_BACK")
[ "$W $H $X $Y" = "$EW $EH $EX $EY" ] || fail "the Exit question is not over the main window after a click on it"
keep exit-over-main
# It still answers: focused by a click, No (the second button) leaves the game running.
wl_click $((EX + 6)) $((EY + 6))
xdotool key Right Return
sleep 0.5
shoot
[ -z "$(regions "$SCHEME_BACK" | awk -v w="$EW" -v h="$EH" '$1 == w && $2 == h')" ] || fail "the Exit question did not close"
no_protocol_error "after answering No"

# The main window's maximize: the window stays as it is, wherever the compositor shows it.
maximize $((MX - FRAME + MW + 2 * FRAME)) $((MENU_TOP - TITLE_BAR))
no_protocol_error "after the main window's maximize"
read -r W H MX MY < <(main_window)
[ "$W $H" = "$MW $MH" ] || fail "the main window changed size: ${MW}x$MH to ${W}x$H"
keep main-window-maximize

# Exit answered Yes ends the program and writes the settings.
wl_click $((MX + MW / 2)) $((MY + MH - 12)) # the status line: focus, and no command
park
xdotool key alt+f
sleep 0.3
xdotool key Up Return
message_box "$SCHEME_BACK" >/dev/null
xdotool key Return
wait_ended
[ -s "$APP/tallyon.cfg" ] || fail "Exit did not write tallyon.cfg"
! grep -q 'Protocol error' "$WORK/app.log" || fail "a protocol error on the way"
echo "e2e_wayland: 1 passed, 0 failed"
