#!/usr/bin/env bash
# Builds everything and starts a demo street: a controller and, on a display, the editor. Without a
# display it makes the same journey offscreen and leaves its screenshots in out/tour.
#   ./run.sh            build and start
#   ./run.sh --build    build only: out/bin, out/lib, out/share
set -euo pipefail
cd "$(dirname "$0")"

scripts/install.sh build
[ -f build/release/build.ninja ] || cmake --preset release -DLAMP_TESTS=OFF >/dev/null
ninja -C build/release --quiet
[ "${1:-}" = --build ] && exit 0

exec scripts/demo.sh "$@"
