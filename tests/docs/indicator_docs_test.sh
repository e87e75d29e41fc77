#!/usr/bin/env bash
# What the player reads about the indicator above "% Completed" matches what it shows: the
# check turns it red on a solved board as on a fault (play/verify.cpp), so the README and the
# help page must say so beside "green", not promise green for a board whose links are all right.
set -euo pipefail
root="${1:?source folder}"
fail() { echo "FAIL: $*" >&2; exit 1; }

readme="$(grep -F '**% Completed**' "$root/README.md" || true)"
[ -n "$readme" ] || fail "README.md has no step about the indicator above % Completed"
grep -qiE 'red[^.;]*solved' <<< "$readme" || fail "README.md does not say the indicator is red on a solved board"

# The help page's paragraph on the indicator, joined into one line.
help="$(sed -n '/<a name="indicator">/,/Back to top/p' "$root/data/tallyon.htm" | tr '\r\n' '  ')"
[ -n "$help" ] || fail "the help page has no section on the indicator"
grep -qiE 'red[^.]*solved' <<< "$help" || fail "the help page does not say the indicator is red on a solved board"
echo "the README and the help page say the indicator is red on a solved board"
