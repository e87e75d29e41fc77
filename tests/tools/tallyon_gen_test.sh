#!/usr/bin/env bash
# tallyon-gen from the outside: every puzzle printed for a grade is of that grade when its code
# is read back and graded afresh, at every size; an unknown grade is refused with status 2; a
# code's solution is explained step by step and ends with its path; a damaged code is refused.
set -uo pipefail
gen="${TALLYON_BIN_DIR:?}/tallyon-gen"
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

for grade in easy medium hard; do
  want="$(echo "${grade:0:1}" | tr a-z A-Z)${grade:1}"
  for size in 4 5 6 7 8 9 10; do
    codes="$("$gen" --size "$size" --side random --count 3 --grade "$grade" --code)" ||
      { fail "$grade $size: exit status $?"; continue; }
    [ "$(echo "$codes" | wc -l)" -eq 3 ] || fail "$grade $size: $(echo "$codes" | wc -l) codes printed, not 3"
    while read -r code; do
      got="$("$gen" --decode "$code" --json | sed -n 's/.*"Grade":"\([A-Za-z]*\)".*/\1/p')"
      [ "$got" = "$want" ] || fail "$grade $size: a puzzle graded \"$got\" afresh: $code"
    done <<<"$codes"
  done
done

"$gen" --size 7 --side left --grade impossible >/dev/null 2>"${TMPDIR:-/tmp}/gen_err.$$"
status=$?
[ "$status" -eq 2 ] || fail "an unknown grade exits with $status, not 2"
grep -q 'unknown grade "impossible"' "${TMPDIR:-/tmp}/gen_err.$$" || fail "an unknown grade is not named"
rm -f "${TMPDIR:-/tmp}/gen_err.$$"

code="$("$gen" --size 6 --side top --code)"
explained="$("$gen" --explain "$code")" || fail "--explain exits with $?"
first="$(echo "$explained" | head -1)"
[[ "$first" == "1. "* ]] || fail "the explanation does not start with step 1: $first"
[[ "$(echo "$explained" | tail -1)" == "Path: the "*"(Start), "*"(End)." ]] || fail "the explanation does not end with the path"
steps="$(echo "$explained" | grep -c '^[0-9]*\. ')"
[ "$steps" -eq "$(($(echo "$explained" | wc -l) - 1))" ] || fail "lines other than numbered steps and the path"
json="$("$gen" --explain "$code" --json)"
[[ "$json" == '{"Steps":[{"Number":1,'*'"Solved":true,"Path":[['* ]] || fail "--explain --json: ${json:0:80}"
[ "$(echo "$json" | grep -o '"Number":' | wc -l)" -eq "$steps" ] || fail "--json and the text differ in steps"

"$gen" --explain "T1-AAAA" >/dev/null 2>&1 && fail "a damaged code is explained"

[ "$failures" -eq 0 ] && echo "tallyon-gen: all checks passed"
exit $((failures > 0))
