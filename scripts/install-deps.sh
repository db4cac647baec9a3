#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, and nothing when
# they are all present already.
set -euo pipefail

packages=(
  cmake ninja-build g++ googletest libgtest-dev libgmock-dev libbenchmark-dev
  g++-mingw-w64-i686 g++-mingw-w64-x86-64 binutils-mingw-w64-i686 binutils-mingw-w64-x86-64
  wine wine64 xvfb xauth faketime sox clang libclang-rt-14-dev icoutils
  xfonts-base zlib1g-dev libstb-dev
  libx11-dev libxext-dev libxtst-dev
  lv2-dev lilv-utils sordi zip
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -ne 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  if [ "$(id -u)" -ne 0 ]; then
    sudo_cmd=(sudo)
  fi
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update -qq
  if ! "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"; then
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends -t bookworm "${missing[@]}"
  fi
fi

# 32-bit wine, to run the product DLL (needs wine64 above for its version).
# Building needs none of it: a machine that cannot have it says why in one
# line here, and scripts/test.sh counts that as a failed run.
"$(dirname "$0")/install-i386.sh" || true
