#!/usr/bin/env bash
# Installs the Debian packages that building (and, with "test", testing) Tallyon needs.
# Only missing packages are installed; uses sudo when not run as root.
set -euo pipefail

build_pkgs=(cmake g++ make pkg-config qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libgl-dev
            fonts-liberation libgtest-dev libgmock-dev)
test_pkgs=(xvfb xauth xdotool xclip x11-utils poppler-utils cups cups-bsd printer-driver-cups-pdf
           desktop-file-utils appstream imagemagick dpkg-dev lintian clang-format weston qt6-wayland)

wanted=("${build_pkgs[@]}")
[ "${1:-}" = "test" ] && wanted+=("${test_pkgs[@]}")

missing=()
for p in "${wanted[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
echo "Installing: ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
