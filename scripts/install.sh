#!/usr/bin/env bash
# Installs what is needed on Debian 12: scripts/install.sh build, bench, fuzz or test (the default).
# Does nothing when all of it is there.
set -euo pipefail
cd "$(dirname "$0")/.."

build_packages=(
  g++ cmake ninja-build pkg-config ccache python3 git librsvg2-bin curl
  libpugixml-dev libcurl4-openssl-dev libssl-dev nlohmann-json3-dev
  libexpat1-dev libpcre2-dev libmicrohttpd-dev zlib1g-dev
  qt6-base-dev libgl1-mesa-dev fonts-dejavu-core
)
fuzz_packages=(clang libclang-rt-dev llvm libxml2-dev)
test_packages=(
  clang-format libgtest-dev libgmock-dev libxml2-dev libxml2-utils procps valgrind openssl chromium
  libcap2 libedit2 libgnutls30 libnettle8 libpam0g libseccomp2 libwrap0 libssl3
)
# Servers that the tests start themselves. They are unpacked, not installed: an installed one would
# start with the machine, and the time server would replace the machine's own.
servers=(vsftpd chrony)
server_folder=build/test-servers

packages=("${build_packages[@]}")
case "${1:-test}" in
  build) ;;
  bench) packages+=(libbenchmark-dev libcpp-httplib-dev dpkg-dev valgrind xvfb libx11-6) ;;
  fuzz) packages+=("${fuzz_packages[@]}") ;;
  *) packages+=("${test_packages[@]}") ;;
esac

unpack_servers() {
  [ -x "$server_folder/usr/sbin/vsftpd" ] && [ -x "$server_folder/usr/sbin/chronyd" ] && return
  local archives
  archives=$(mktemp -d)
  chmod 755 "$archives"
  echo "Unpacking ${servers[*]} into $server_folder"
  (cd "$archives" && apt-get download -qq "${servers[@]}" 2>/dev/null) || {
    rm -r "$archives"
    echo "Can't download ${servers[*]}; run apt-get update as root." >&2
    exit 1
  }
  mkdir -p "$server_folder"
  local archive
  for archive in "$archives"/*.deb; do dpkg-deb --extract "$archive" "$server_folder"; done
  rm -r "$archives"
}

install() {
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "Missing packages: $*. Install them as root, or install sudo." >&2
      exit 1
    }
    as_root=(sudo)
  fi
  echo "Installing $*"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "$@" >/dev/null
}

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] || install "${missing[@]}"
[ "${1:-test}" != test ] || {
  unpack_servers
  scripts/fetch_xml_suite.sh build/xml-suite
}
