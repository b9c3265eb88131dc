#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when they are missing.
set -euo pipefail

packages=(cmake ninja-build g++ clang libjsoncpp-dev android-liblog-dev googletest libgtest-dev
          libcli11-dev libexpat1-dev libbenchmark-dev libclang-rt-14-dev python3 ccache)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
fi
