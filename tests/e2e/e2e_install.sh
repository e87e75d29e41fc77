#!/usr/bin/env bash
# A newcomer's install: `cmake --install` into a temporary prefix lays out a valid desktop entry,
# metainfo and icons, and the installed program, started through bin/tallyon, keeps its
# settings in its own directory from one run to the next.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"

for tool in desktop-file-validate appstreamcli xprop identify; do
  command -v "$tool" >/dev/null || { echo "SKIP: $tool is not installed"; exit 77; }
done

start_xvfb

BUILD="$(cd "$BIN_DIR/.." && pwd)"
APP_ID="$(sed -n 's/^TALLYON_APP_ID:STRING=//p' "$BUILD/CMakeCache.txt")"
[ -n "$APP_ID" ] || fail "the build names no desktop ID"
# An ID that is not a reversed domain name (the default, the program's name) is only warned of.
LEGACY_ID=()
[[ "$APP_ID" == *.* ]] || LEGACY_ID=(--override cid-desktopapp-is-not-rdns=info)
WORK="$(mktemp -d /tmp/tallyon-install.XXXXXX)"
PREFIX="$WORK/prefix"
APPDIR="$PREFIX/lib/tallyon"
CFG="$APPDIR/tallyon.cfg"
PID=""
trap '[ -n "$PID" ] && kill "$PID" 2>/dev/null; rm -rf "$WORK"; stop_xvfb' EXIT

# The link bin/tallyon under root must be relative and lead to an executable program.
check_link() {
  local root="$1" target
  target="$(readlink "$root/bin/tallyon")" || fail "$root/bin/tallyon is not a symlink"
  [ "$target" = "../lib/tallyon/tallyon" ] || fail "bin/tallyon points at '$target'"
  [ -x "$root/bin/tallyon" ] || fail "bin/tallyon does not lead to the program"
}

check_layout() {
  local f size
  for f in tallyon plugins/tallyon-print.so all.col tallyon.htm hint-dead-end.png hint-forced-link.png hint-pocket.png \
    hint-region.png artwork/tallyon.svg; do
    [ -f "$APPDIR/$f" ] || fail "missing $APPDIR/$f"
  done
  check_link "$PREFIX"
  desktop-file-validate "$PREFIX/share/applications/$APP_ID.desktop" || fail "desktop entry invalid"
  for f in 'Exec=tallyon' 'Icon=tallyon' 'Categories=Game;LogicGame;' "Path=$APPDIR" 'Actions=resume;' \
    '[Desktop Action resume]' 'Name=Resume Last Puzzle' 'Exec=tallyon --resume'; do
    grep -qxF "$f" "$PREFIX/share/applications/$APP_ID.desktop" || fail "desktop entry lacks $f"
  done
  appstreamcli validate --no-net "${LEGACY_ID[@]}" "$PREFIX/share/metainfo/$APP_ID.metainfo.xml" || fail "metainfo invalid"
  [ -f "$PREFIX/share/icons/hicolor/scalable/apps/tallyon.svg" ] || fail "no scalable icon"
  for size in 48 128 256; do
    f="$PREFIX/share/icons/hicolor/${size}x${size}/apps/tallyon.png"
    [ -f "$f" ] || fail "no ${size} pixel icon"
    [ "$(identify -format '%wx%h' "$f")" = "${size}x${size}" ] || fail "$f is not ${size}x${size}"
  done
}

# Grid size (first number of line 1) and scheme (line 2) of tallyon.cfg, as "size scheme".
saved_settings() {
  local size scheme
  size="$(head -n1 "$CFG" | tr -d '\r' | awk '{print $1}')"
  scheme="$(sed -n 2p "$CFG" | tr -d '\r')"
  echo "$size $scheme"
}

start_installed() {
  launch "$PREFIX/bin/tallyon"
}

# File > Exit, "Exit?" answered Yes; the program must end.
exit_program() {
  local win="$1" ask
  open_file_menu "$win"
  xdotool key Up Return
  ask="$(wait_window Message)"
  press_return "$ask"
  wait_ended
  PID=""
}

cmake --install "$BUILD" --prefix "$PREFIX" >"$WORK/install.log" 2>&1 \
  || { cat "$WORK/install.log" >&2; fail "cmake --install failed"; }
check_layout

# A staged install (DESTDIR) puts everything, the link included, under the stage.
DESTDIR="$WORK/stage" cmake --install "$BUILD" --prefix /opt/tallyon-e2e >/dev/null 2>&1 \
  || fail "staged install failed"
check_link "$WORK/stage/opt/tallyon-e2e"

# First run: no settings yet, so the configuration message comes and the file is made in the
# program's directory, not beside the link.
start_installed
MSG="$(wait_window Message)"
press_return "$MSG"
wait_gone Message
[ -f "$CFG" ] || fail "tallyon.cfg was not created in $APPDIR"
[ -e "$PREFIX/bin/tallyon.cfg" ] && fail "tallyon.cfg was written beside the link"
WIN="$(wait_window Tallyon)"
xprop -id "$WIN" _NET_WM_ICON | grep -q '_NET_WM_ICON(CARDINAL) = ' || fail "the window has no icon"
wait_pixel "$WIN" 2 2 "0,0,0" not
new_puzzle "$WIN"
xdotool mousemove --window "$WIN" 627 320 click 1  # grid size 7x7 -> 8x8
import -window "$WIN" "$SHOTS/e2e-install-first-run.png"
exit_program "$WIN"
[ "$(saved_settings)" = "8 xp.col" ] || fail "first exit saved '$(saved_settings)'"
head -n1 "$CFG" | grep -q $'\r$' || fail "tallyon.cfg lines do not end in CR LF"

# Second run: the file is read back silently and its settings are kept.
start_installed
WIN="$(wait_window Tallyon)"
wait_pixel "$WIN" 2 2 "0,0,0" not   # drawn: the start-up, message included, is over
xdotool search --onlyvisible --name '^Message$' >/dev/null 2>&1 \
  && fail "the configuration message came again on the second start"
import -window "$WIN" "$SHOTS/e2e-install-second-run.png"
exit_program "$WIN"
[ "$(saved_settings)" = "8 xp.col" ] || fail "second exit saved '$(saved_settings)'"
echo "e2e_install: 1 passed, 0 failed"
