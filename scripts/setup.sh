#!/usr/bin/env bash
# Installs every build and test dependency from Debian's packages.
# Safe to run repeatedly: apt-get skips what is already installed.
set -euo pipefail

PACKAGES=(
  clang libc++-dev libc++abi-dev libclang-rt-14-dev lld cmake ninja-build pkg-config
  libxml2-dev android-liblog-dev android-libutils-dev
  libgtest-dev googletest catch2
  nlohmann-json3-dev libcli11-dev libfmt-dev
  liblcms2-dev libpng-dev
  python3 python3-matplotlib
)

missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if ((${#missing[@]})); then
  SUDO=""
  [[ $(id -u) -ne 0 ]] && SUDO="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -qq
  $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
