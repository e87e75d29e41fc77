# Shared steps of the end-to-end scripts: a fresh program directory, an X server, polling.
set -euo pipefail

for tool in Xvfb xdotool import; do
  command -v "$tool" >/dev/null || { echo "SKIP: $tool is not installed"; exit 77; }
done

BIN_DIR="${TALLYON_BIN_DIR:?}"
SHOTS="${TALLYON_SCREENSHOT_DIR:-/tmp}"
mkdir -p "$SHOTS"
# The game each run keeps goes to a folder of the test's own, never the user's, removed with
# the X server.
TEST_STATE_HOME="$(mktemp -d /tmp/tallyon-state.XXXXXX)"
export XDG_STATE_HOME="$TEST_STATE_HOME"

# Starts a private X server on a display number it picks itself (-displayfd: no race with
# other servers coming and going), waits until it is ready, and exports DISPLAY. -noreset:
# without it the server resets whenever its last client leaves and refuses new connections
# while it does, so a program started right after another one ended could not connect.
XVFB_PID=""
start_xvfb() {
  local numfile
  numfile="$(mktemp /tmp/tallyon-xvfb.XXXXXX)"
  # -ac: clients of other users (the package test runs the game as "nobody") may connect.
  Xvfb -displayfd 9 -screen 0 1024x768x24 -nolisten tcp -noreset -ac 9>"$numfile" 2>/dev/null &
  XVFB_PID=$!
  for _ in $(seq 200); do
    [ -s "$numfile" ] && break
    sleep 0.05
  done
  [ -s "$numfile" ] || { echo "Xvfb did not start" >&2; return 1; }
  export DISPLAY=":$(tr -d '[:space:]' < "$numfile")"
  rm -f "$numfile"
}
stop_xvfb() {
  [ -n "$XVFB_PID" ] && kill "$XVFB_PID" 2>/dev/null
  wait "$XVFB_PID" 2>/dev/null || true
  rm -rf "$TEST_STATE_HOME"
}

# Starts a program (a command and its arguments) in the background and sets PID.
launch() { "$@" & PID=$!; }

# A fresh program directory holding the executable and its data files.
fresh_app_dir() {
  local dir
  dir="$(mktemp -d /tmp/tallyon-e2e.XXXXXX)"
  cp "$BIN_DIR/tallyon" "$BIN_DIR/all.col" "$dir/"
  [ -f "$BIN_DIR/tallyon.htm" ] && cp "$BIN_DIR/tallyon.htm" "$dir/"
  echo "$dir"
}

# Polls (every 50 ms) for a visible window whose name matches; prints its id.
wait_window() {
  local name="$1" tries="${2:-200}" id
  for _ in $(seq "$tries"); do
    id="$(xdotool search --onlyvisible --name "^${name}\$" 2>/dev/null | head -n1 || true)"
    [ -n "$id" ] && { echo "$id"; return 0; }
    sleep 0.05
  done
  echo "window '$name' did not appear" >&2
  return 1
}

wait_gone() {
  local name="$1"
  for _ in $(seq 200); do
    xdotool search --onlyvisible --name "^${name}\$" >/dev/null 2>&1 || return 0
    sleep 0.05
  done
  echo "window '$name' did not close" >&2
  return 1
}

# Colour of one pixel of a window as "r,g,b".
pixel() {
  local win="$1" x="$2" y="$3" file
  file="$(mktemp /tmp/tallyon-px.XXXXXX.png)"
  import -window "$win" "$file"
  convert "$file" -format '%[fx:int(255*p{'"$x,$y"'}.r)],%[fx:int(255*p{'"$x,$y"'}.g)],%[fx:int(255*p{'"$x,$y"'}.b)]' info:
  rm -f "$file"
}

# Fails unless the window shows on the screen as it draws itself, not black and not hidden
# under another window, and holds the keyboard focus.
check_on_top() {
  local win="$1" X Y WIDTH HEIGHT WINDOW SCREEN dir differ lightness focus
  eval "$(xdotool getwindowgeometry --shell "$win")"
  dir="$(mktemp -d /tmp/tallyon-top.XXXXXX)"
  import -window "$win" "$dir/own.png"
  import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" +repage "$dir/screen.png"
  differ="$(compare -metric AE "$dir/own.png" "$dir/screen.png" null: 2>&1 || true)"
  lightness="$(convert "$dir/screen.png" -format '%[fx:int(100*mean)]' info:)"
  rm -rf "$dir"
  [ "$differ" = "0" ] && [ "$lightness" -gt 20 ] ||
    fail "window $win is not on top: $differ pixels differ from its own picture, lightness $lightness%"
  focus="$(xdotool getwindowfocus 2>/dev/null || true)"
  [ "$focus" = "$win" ] || fail "window $win does not have the keyboard focus (focus: $focus)"
}

# Polls until pixel (x, y) of a window shows the colour "r,g,b", or with "not" until it
# shows another; fails naming what it saw.
wait_pixel() {
  local win="$1" x="$2" y="$3" want="$4" negate="${5:-}" got=""
  for _ in $(seq 100); do
    got="$(pixel "$win" "$x" "$y")"
    if [ -z "$negate" ]; then [ "$got" = "$want" ] && return 0; else [ "$got" != "$want" ] && return 0; fi
    sleep 0.05
  done
  fail "pixel ($x, $y) of window $win shows $got, waiting for ${negate:+not }$want"
}

# The number of visible windows of the program: a menu opening adds one.
window_count() { { xdotool search --onlyvisible --pid "$PID" 2>/dev/null || true; } | wc -l; }

# Clicks the window's File menu and waits until it is open.
open_file_menu() {
  local win="$1" before
  before="$(window_count)"
  xdotool mousemove --window "$win" 20 8 click 1
  for _ in $(seq 100); do
    [ "$(window_count)" -gt "$before" ] && return 0
    sleep 0.05
  done
  fail "the File menu did not open"
}

# Clicks New Puzzle and waits until the top left node is drawn where the empty grid showed
# its ground, just inside that node.
new_puzzle() {
  local win="$1" empty
  empty="$(pixel "$win" 63 82)"
  xdotool mousemove --window "$win" 674 57 click 1
  wait_pixel "$win" 63 82 "$empty" not # the whole board comes in one paint
}

# Waits until the program has ended.
wait_ended() {
  for _ in $(seq 100); do kill -0 "$PID" 2>/dev/null || return 0; sleep 0.05; done
  fail "the program did not end"
}

# Focuses a window and types Return (events sent to a window directly are ignored by Qt).
press_return() {
  xdotool windowfocus --sync "$1" 2>/dev/null || xdotool windowfocus "$1"
  sleep 0.1
  xdotool key Return
}

fail() { echo "FAIL: $*" >&2; exit 1; }

# The steps of a game played in one window. They take the status file from STATUS (the
# program's TALLYON_STATUS_FILE), board pictures go to WORK, and E2E_NAME names the script's
# screenshots.

# The last line the status line showed, and polls until it reads a text or starts with one.
last_status() { tail -n1 "$STATUS" 2>/dev/null || true; }
wait_status() {
  for _ in $(seq 100); do
    [ -f "$STATUS" ] && [ "$(last_status)" = "$1" ] && return 0
    sleep 0.05
  done
  fail "the status line does not read '$1' (last: '$(last_status)')"
}
wait_status_start() {
  for _ in $(seq 100); do
    case "$(last_status)" in "$1"*) return 0 ;; esac
    sleep 0.05
  done
  fail "the status line does not start with '$1' (last: '$(last_status)')"
}

# Takes the board picture of the window WIN under a name; whether two of them are the same;
# polls until the board shows the picture named.
board() { import -window "$WIN" -crop 560x560+8+27 +repage "$WORK/$1.png"; }
same() { [ "$(compare -metric AE "$WORK/$1.png" "$WORK/$2.png" null: 2>&1 || true)" = "0" ]; }
wait_board() {
  for _ in $(seq 60); do
    board now
    same now "$1" && return 0
    sleep 0.05
  done
  cp "$WORK/now.png" "$SHOTS/e2e-$E2E_NAME-$1-seen.png"
  fail "the board does not show $1 (see $SHOTS/e2e-$E2E_NAME-$1-seen.png)"
}

# Starts the game with arguments, the status file emptied, and waits until its window shows
# and holds the focus (sets WIN); kills it.
start() {
  : >"$STATUS"
  launch env TALLYON_STATUS_FILE="$STATUS" "$APP/tallyon" "$@"
  WIN="$(wait_window Tallyon)"
  wait_pixel "$WIN" 2 2 "0,0,0" not
  xdotool windowfocus --sync "$WIN" 2>/dev/null || xdotool windowfocus "$WIN"
}
stop() { kill -9 "$PID"; wait "$PID" 2>/dev/null || true; }

# The keys that link the first COUNT links of a puzzle's path (all of them when COUNT is
# left out), one a line, from its code and its lattice width in cells.
path_keys() {
  local cells path a b i
  cells="$("$BIN_DIR/tallyon-gen" --decode "$1" --json | grep -o '"List2":\[[0-9,]*\]' | sed 's/.*\[//; s/\]//')"
  IFS=, read -r -a path <<< "$cells"
  for ((i = 2; i < ${#path[@]} && i <= 2 * ${3:-${#path[@]}}; i += 2)); do
    a=$((path[i - 2] - 1)) b=$((path[i] - 1))
    if ((b % $2 > a % $2)); then echo shift+Right
    elif ((b % $2 < a % $2)); then echo shift+Left
    elif ((b > a)); then echo shift+Down
    else echo shift+Up; fi
  done
}
