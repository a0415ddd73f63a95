#!/usr/bin/env bash
# Installs the Debian packages the build, tests, gallery and benchmarks need.
# As root it installs what is missing; otherwise it prints the command to run.
set -euo pipefail
PKGS=(qt6-base-dev qt6-base-dev-tools qt6-svg-dev libqt6sql6-sqlite qt6-image-formats-plugins
      libgtest-dev libgmock-dev libbenchmark-dev cmake ninja-build g++ make fonts-dejavu-core
      fonts-liberation2 ccache xvfb xauth libgif-dev poppler-utils locales python3-numpy python3-scipy clang)
# Optional: only for comparison benchmarks (bench/); the library never links them.
OPTIONAL=(libfftw3-dev)
missing=()
for p in "${PKGS[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
need_locale=0
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then need_locale=1; fi
optional_missing=()
for p in "${OPTIONAL[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || optional_missing+=("$p")
done
if [ ${#optional_missing[@]} -gt 0 ]; then
  if [ "$(id -u)" -eq 0 ]; then
    DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${optional_missing[@]}" ||
      echo "note: optional ${optional_missing[*]} not installed; its benchmark is skipped" >&2
  else
    echo "note: optional ${optional_missing[*]} missing; its benchmark is skipped" >&2
  fi
fi
if [ ${#missing[@]} -eq 0 ] && [ $need_locale -eq 0 ]; then exit 0; fi
if [ "$(id -u)" -ne 0 ]; then
  if [ ${#missing[@]} -gt 0 ]; then
    echo "Missing packages. Run as root:" >&2
    echo "  apt-get update && apt-get install -y ${missing[*]}" >&2
    exit 1
  fi
  echo "note: locale de_DE.UTF-8 missing; the comma-decimal test run will be skipped" >&2
  exit 0
fi
if [ ${#missing[@]} -gt 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q
  apt-get install -y -q --no-install-recommends "${missing[@]}"
fi
if [ $need_locale -eq 1 ]; then
  sed -i 's/^# *de_DE.UTF-8 UTF-8/de_DE.UTF-8 UTF-8/' /etc/locale.gen 2>/dev/null || true
  grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen 2>/dev/null || echo 'de_DE.UTF-8 UTF-8' >> /etc/locale.gen
  locale-gen >/dev/null
fi
