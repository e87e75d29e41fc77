#!/usr/bin/env bash
# A real print job: prints a puzzle through a cups-pdf queue made the default printer and
# checks the PDF that comes out. Needs root or password-less sudo, and the packages cups and
# printer-driver-cups-pdf (tools/install-deps.sh test); installs nothing.
# Usage: cups_print_test.sh <output_print_probe> [screenshot dir]. Exit 77 = skipped.
set -uo pipefail

probe=${1:?usage: cups_print_test.sh <output_print_probe> [screenshot dir]}
shots=${2:-}
queue=TallyonPDF
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}

skip() { echo "SKIP: $*"; exit 77; }
fail() { echo "FAIL: $*"; exit 1; }

if [ "$(id -u)" -eq 0 ]; then
  SUDO=()
elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
  SUDO=(sudo -n)
else
  skip "cupsd needs root: not root and no password-less sudo"
fi
for tool in cupsd lpadmin lpinfo lpstat pdftoppm pdfinfo; do
  command -v "$tool" >/dev/null || [ -x "/usr/sbin/$tool" ] ||
    skip "$tool is missing (install cups, printer-driver-cups-pdf, poppler-utils)"
done
PATH=$PATH:/usr/sbin
[ -x /usr/lib/cups/backend/cups-pdf ] || skip "the cups-pdf backend is missing (printer-driver-cups-pdf)"

work=$(mktemp -d)
started_pid=""
old_default=""

cleanup() {
  "${SUDO[@]}" lpadmin -x "$queue" 2>/dev/null
  [ -n "$old_default" ] && "${SUDO[@]}" lpadmin -d "$old_default" 2>/dev/null
  if [ -n "$started_pid" ]; then
    "${SUDO[@]}" kill "$started_pid" 2>/dev/null
    wait "$started_pid" 2>/dev/null
  fi
  [ -n "${made_pdf:-}" ] && "${SUDO[@]}" rm -f "$made_pdf"
  rm -rf "$work"
}
trap cleanup EXIT

scheduler_up() { lpstat -r 2>/dev/null | grep -q "is running"; }

if ! scheduler_up; then
  "${SUDO[@]}" cupsd -f &
  started_pid=$!
  for _ in $(seq 1 40); do scheduler_up && break; sleep 0.5; done
  scheduler_up || skip "cupsd could not be started here"
  echo "started cupsd (pid $started_pid)"
fi
old_default=$(lpstat -d 2>/dev/null | sed -n 's/^system default destination: //p')

ppd=$(lpinfo -m 2>/dev/null | grep -i 'cups-pdf' | grep -i pdf | head -n 1 | cut -d' ' -f1)
[ -n "$ppd" ] || fail "no cups-pdf PPD listed by lpinfo -m"
"${SUDO[@]}" lpadmin -p "$queue" -E -v cups-pdf:/ -m "$ppd" || fail "lpadmin could not create $queue"
"${SUDO[@]}" lpadmin -d "$queue" || fail "could not make $queue the default"
echo "queue $queue with $ppd is the default"

# cups-pdf writes into its Out directory (usually ${HOME}/PDF of the job's owner) or, for
# jobs it cannot map to a user, into its anonymous directory.
out_dirs=("$HOME/PDF" "$(getent passwd "$(id -un)" | cut -d: -f6)/PDF" /var/spool/cups-pdf /root/PDF)
conf_out=$(sed -n 's/^Out[[:space:]]\+//p' /etc/cups/cups-pdf.conf 2>/dev/null | head -n 1)
[ -n "$conf_out" ] && out_dirs+=("${conf_out//\$\{HOME\}/$HOME}")
touch "$work/marker"

LPDEST=$queue PRINTER=$queue "$probe"
rc=$?
[ $rc -eq 2 ] && fail "Qt sees no default printer although $queue is the default"
[ $rc -eq 0 ] || fail "the print job was not reported as done (probe exit $rc)"

for _ in $(seq 1 60); do
  made_pdf=$("${SUDO[@]}" find "${out_dirs[@]}" -name '*.pdf' -newer "$work/marker" 2>/dev/null | head -n 1)
  [ -n "$made_pdf" ] && break
  sleep 1
done
if [ -z "$made_pdf" ]; then
  lpstat -W all -o 2>/dev/null | tail -n 3
  "${SUDO[@]}" tail -n 20 /var/log/cups/error_log 2>/dev/null
  fail "no PDF from cups-pdf within 60 s"
fi
sleep 1 # let cups-pdf finish writing
echo "cups-pdf wrote $made_pdf"

"${SUDO[@]}" cat "$made_pdf" >"$work/job.pdf"
pages=$(pdfinfo "$work/job.pdf" 2>/dev/null | sed -n 's/^Pages:[[:space:]]*//p')
[ "$pages" = "1" ] || fail "expected one page, got '${pages}'"
pdftoppm -r 72 -png -singlefile "$work/job.pdf" "$work/page" 2>/dev/null || fail "pdftoppm could not read the PDF"
[ -n "$shots" ] && cp "$work/page.png" "$shots/cups-printed-page.png"
"$probe" --check "$work/page.png" || fail "the printed page does not hold both boards"
echo "PASS: one page with the puzzle and its solution"
