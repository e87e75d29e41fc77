#!/usr/bin/env bash
# The Debian package as a system-wide install: cpack makes the .deb, which is unpacked into a
# temporary root whose program folder nobody may write to; the program, run as the
# unprivileged user "nobody", keeps its settings under XDG_CONFIG_HOME, names that path in
# its first message, prints with its print module to a PDF beside them, and reads its settings
# back on the next start. Also: --help, --version.
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/xvfb_steps.sh"

for tool in cpack dpkg-deb setpriv; do
  command -v "$tool" >/dev/null || { echo "SKIP: $tool is not installed"; exit 77; }
done
[ "$(id -u)" -eq 0 ] || { echo "SKIP: running as another user needs root"; exit 77; }
id nobody >/dev/null 2>&1 || { echo "SKIP: no user 'nobody'"; exit 77; }

BUILD="$(cd "$BIN_DIR/.." && pwd)"
WORK="$(mktemp -d /tmp/tallyon-deb.XXXXXX)"
PID=""
trap '[ -n "$PID" ] && kill "$PID" 2>/dev/null; rm -rf "$WORK"; stop_xvfb' EXIT

(cd "$WORK" && cpack -G DEB --config "$BUILD/CPackConfig.cmake" >"$WORK/cpack.log" 2>&1) ||
  { cat "$WORK/cpack.log" >&2; fail "cpack -G DEB failed"; }
DEB="$(ls "$WORK"/tallyon_*_amd64.deb)"
# The package names whoever builds it as its maintainer (DEBFULLNAME and DEBEMAIL, or the user
# and host): on a build machine that is root at a host with no mail domain, which lintian
# flags; a packager names themselves. Every other error fails.
if command -v lintian >/dev/null; then
  lintian --fail-on error --suppress-tags bogus-mail-host,bogus-mail-host-in-debian-changelog,root-in-contact \
    "$DEB" >"$WORK/lintian.log" 2>&1 || { cat "$WORK/lintian.log" >&2; fail "lintian reports errors"; }
fi
ROOT="$WORK/root"
dpkg-deb -x "$DEB" "$ROOT" || fail "dpkg-deb -x failed"
# The homepage comes from TALLYON_HOMEPAGE alone, empty in this build: the package names none,
# and neither do its metainfo and copyright; no file names an address the project does not own.
if [ -z "$(sed -n 's/^TALLYON_HOMEPAGE:STRING=//p' "$BUILD/CMakeCache.txt")" ]; then
  [ -z "$(dpkg-deb -f "$DEB" Homepage)" ] || fail "the package names a homepage"
  ! grep -q "<url\|<screenshot" "$ROOT"/usr/share/metainfo/*.metainfo.xml || fail "the metainfo names an address"
  ! grep -q "^Source:" "$ROOT/usr/share/doc/tallyon/copyright" || fail "the copyright names a source"
fi
! zgrep -rqs "github\|noreply" "$ROOT/usr/share/doc" "$ROOT/usr/share/metainfo" "$ROOT/usr/share/applications" ||
  fail "an invented address"
[ "$(dpkg-deb -f "$DEB" Maintainer)" != "" ] || fail "the package names no maintainer"
# A Wayland session runs the game natively only with Qt's Wayland plug-in.
dpkg-deb -f "$DEB" Recommends | grep -qw "qt6-wayland" || fail "the package does not recommend qt6-wayland"
[ -x "$ROOT/usr/bin/tallyon" ] || fail "no /usr/bin/tallyon in the package"
[ -f "$ROOT/usr/share/man/man6/tallyon.6.gz" ] || fail "no manual page in the package"
chmod -R a-w "$ROOT/usr/lib/tallyon"
chmod 755 "$WORK"
CONFIG="$WORK/home/config"
mkdir -p "$CONFIG" && chown -R nobody "$WORK/home"

# Runs a command as "nobody"; start_as_nobody starts the game so, keeping its PID.
as_nobody() {
  setpriv --reuid=nobody --regid=nogroup --clear-groups \
    env HOME="$WORK/home" XDG_CONFIG_HOME="$CONFIG" XDG_STATE_HOME="$WORK/home/state" DISPLAY="${DISPLAY:-}" "$@"
}
start_as_nobody() {
  setpriv --reuid=nobody --regid=nogroup --clear-groups \
    env HOME="$WORK/home" XDG_CONFIG_HOME="$CONFIG" XDG_STATE_HOME="$WORK/home/state" DISPLAY="$DISPLAY" \
    "$ROOT/usr/bin/tallyon" &
  PID=$!
}

as_nobody "$ROOT/usr/bin/tallyon" --version | grep -qx "tallyon [0-9.]*" || fail "--version"
as_nobody "$ROOT/usr/bin/tallyon" --help | grep -q -- "--version" || fail "--help"
set +e
as_nobody "$ROOT/usr/bin/tallyon" --no-such-option 2>/dev/null
[ $? -eq 2 ] || fail "an unknown option must exit with 2"
set -e

start_xvfb
CFG="$CONFIG/tallyon/tallyon.cfg"

# First start: the message names the settings file under XDG_CONFIG_HOME, which is made.
start_as_nobody
MSG="$(wait_window Message)"
wait_pixel "$MSG" 2 2 "0,0,0" not
import -window "$MSG" "$SHOTS/e2e-deb-first-message.png"
press_return "$MSG"
wait_gone Message
[ -f "$CFG" ] || fail "tallyon.cfg was not written to $CFG"
[ -e "$ROOT/usr/lib/tallyon/tallyon.cfg" ] && fail "tallyon.cfg was written beside the program"
WIN="$(wait_window Tallyon)"
wait_pixel "$WIN" 2 2 "0,0,0" not
# Printing loads the print module from the package's read-only program folder; with no
# printer the page is written beside the settings. (A machine with a default printer would
# get a real page, so there this step is left out.)
if ! lpstat -d 2>/dev/null | grep -q '^system default destination:'; then
  new_puzzle "$WIN"
  xdotool windowfocus --sync "$WIN" 2>/dev/null || xdotool windowfocus "$WIN"
  xdotool key ctrl+p
  press_return "$(wait_window Message)" # "Print Puzzle and its Solution?" Yes
  PDF="$CONFIG/tallyon/tallyon-print.pdf"
  for _ in $(seq 200); do [ -s "$PDF" ] && break; sleep 0.05; done
  [ -s "$PDF" ] || fail "printing wrote no $PDF"
  DONE="$(wait_window Message)" # "Done" and the file's name
  import -window "$DONE" "$SHOTS/e2e-deb-printed.png"
  press_return "$DONE"
  wait_gone Message
fi
xdotool mousemove --window "$WIN" 627 320 click 1  # grid size 7x7 -> 8x8
open_file_menu "$WIN"
xdotool key Up Return
press_return "$(wait_window Message)"
wait_ended
PID=""
tr -d '\r' <"$CFG" | head -n1 | grep -q '^ 8 ' || fail "Exit did not save the grid size: $(head -n1 "$CFG")"

# Second start: read back silently.
start_as_nobody
WIN="$(wait_window Tallyon)"
wait_pixel "$WIN" 2 2 "0,0,0" not
xdotool search --onlyvisible --name '^Message$' >/dev/null 2>&1 && fail "the settings were not read back"
kill "$PID"
PID=""
echo "e2e_deb: 1 passed, 0 failed"
