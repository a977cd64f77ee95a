#!/usr/bin/env bash
# Installs what is needed on Debian 12: scripts/install.sh build, bench or test (which is the default).
# Does nothing when all of it is there.
set -euo pipefail

build_packages=(
  g++ cmake ninja-build pkg-config ccache python3 git librsvg2-bin curl
  libpugixml-dev libcurl4-openssl-dev libssl-dev nlohmann-json3-dev libcpp-httplib-dev
  qt6-base-dev libgl1-mesa-dev fonts-dejavu-core
)
test_packages=(libgtest-dev libgmock-dev libxml2-dev procps valgrind)

packages=("${build_packages[@]}")
case "${1:-test}" in
  build) ;;
  bench) packages+=(libbenchmark-dev dpkg-dev xvfb libx11-6) ;;
  *) packages+=("${test_packages[@]}") ;;
esac

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "Missing packages: ${missing[*]}. Install them as root, or install sudo." >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
