#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the tests and the programs need,
# only when something is missing. Run as root or with sudo available.
set -euo pipefail

packages=(build-essential cmake ninja-build googletest libgtest-dev libgmock-dev libbenchmark-dev
          clang libclang-rt-14-dev shared-mime-info locales zip unzip gcab cabextract
          dpkg-dev file pkg-config
          qt6-base-dev qt6-tools-dev qt6-tools-dev-tools qt6-qpa-plugins fonts-dejavu-core)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
as_root() { if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi; }
if [ ${#missing[@]} -gt 0 ]; then
  as_root apt-get update -qq
  DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq "${missing[@]}" >/dev/null
fi

# A second locale with another date order and separators for the locale tests.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  as_root sed -i 's/^# *de_DE.UTF-8 UTF-8/de_DE.UTF-8 UTF-8/' /etc/locale.gen
  grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' | as_root tee -a /etc/locale.gen >/dev/null
  as_root locale-gen >/dev/null
fi
