#!/usr/bin/env bash
# Installs what the build and the tests need on Debian 12, if it is missing: the MinGW-w64
# cross compilers, CMake, Wine (64-bit) with a virtual X server, and GoogleTest's sources.
set -euo pipefail

packages=(cmake make g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix mingw-w64-tools
          wine wine64 fonts-wine xvfb xauth googletest procps util-linux)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  SUDO=""
  [ "$(id -u)" = 0 ] || SUDO="sudo"
  $SUDO apt-get update
  $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi
