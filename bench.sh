#!/usr/bin/env bash
# Measures the XML model against the bare XML library doing the same work, in one run, and leaves the
# table in out/bench.txt.
#   ./bench.sh           1,000, 10,000 and 100,000 nodes
#   ./bench.sh --quick   within a minute
set -euo pipefail
cd "$(dirname "$0")"

scripts/install.sh bench
[ -f build/bench/build.ninja ] || cmake --preset release -B build/bench -DLAMP_BENCH=ON \
  -DLAMP_TESTS=OFF -DLAMP_EDITOR=OFF -DLAMP_ROOMS="resources;host" -DLAMP_OUT="$PWD/build/bench" >/dev/null
ninja -C build/bench --quiet xml_bench

seconds=0.5
[ "${1:-}" = --quick ] && seconds=0.05
mkdir -p out
build/bench/bin/xml_bench --benchmark_min_time="$seconds" | tee out/bench.txt
