#!/usr/bin/env bash
# Installs what the AArch64 cross build and its tests under qemu-user need, on a Debian 12 amd64
# machine, from Debian's packages only. Safe to run repeatedly.
#
# Debian's arm64 libc++ cannot be installed beside the amd64 one (the packages share file paths),
# so it is downloaded and unpacked into a private directory ($STC_ARM64_ROOT, default
# build/arm64-root) that cmake/aarch64-linux-gnu.cmake points at. The same directory serves as
# qemu's library prefix: there the test programs find libc++ and the arm64 7z.so that
# android-libbacktrace loads from /usr/lib/p7zip.
set -euo pipefail
cd "$(dirname "$0")/.."
ARM64_ROOT=${STC_ARM64_ROOT:-$PWD/build/arm64-root}

SUDO=""
[[ $(id -u) -ne 0 ]] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive

PACKAGES=(
  libc6-dev:arm64 libgcc-12-dev:arm64 libxml2-dev:arm64 liblcms2-dev:arm64 libpng-dev:arm64
  android-liblog-dev:arm64 android-libutils-dev:arm64
  qemu-user-static binfmt-support lld
)
# Unpacked privately, not installed.
PRIVATE_PACKAGES=(
  libc++1-14:arm64 libc++abi1-14:arm64 libunwind-14:arm64
  libc++-14-dev:arm64 libc++abi-14-dev:arm64 libunwind-14-dev:arm64 p7zip-full:arm64
)

need_update=0
if ! dpkg --print-foreign-architectures | grep -qx arm64; then
  $SUDO dpkg --add-architecture arm64
  need_update=1
fi
missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  need_update=1
fi
if ((need_update)); then
  $SUDO apt-get update -qq
fi
if ((${#missing[@]})); then
  $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

stamp="$ARM64_ROOT/.unpacked"
if [[ ! -f "$stamp" || "$(cat "$stamp")" != "${PRIVATE_PACKAGES[*]}" ]]; then
  downloads=$(mktemp -d)
  trap 'rm -rf "$downloads"' EXIT
  # apt fetches as its own user when it may write there.
  id _apt >/dev/null 2>&1 && chown _apt "$downloads" 2>/dev/null || true
  (cd "$downloads" && apt-get download -qq "${PRIVATE_PACKAGES[@]}")
  rm -rf "$ARM64_ROOT"
  mkdir -p "$ARM64_ROOT"
  for deb in "$downloads"/*.deb; do
    dpkg-deb -x "$deb" "$ARM64_ROOT"
  done
  echo "${PRIVATE_PACKAGES[*]}" >"$stamp"
fi
