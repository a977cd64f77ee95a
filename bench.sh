#!/usr/bin/env bash
# Measures the XML model, the pages, the steps that touch every row, the command channel, the editor
# and the start of the programs beside their bare counterparts, in one run, and leaves the table in
# out/bench.md and out/bench.json. Counts the instructions of a page's cycle as well.
#   ./bench.sh           1,000, 10,000 and 100,000 nodes, pages and steps up to 400,000
#   ./bench.sh --quick   up to 10,000 nodes, within a minute once it is built
# Ends with status 1 when a bar is missed.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install.sh bench
scripts/fetch_xml_source.sh build/xml-source
cmake --preset release -B build/bench -DLAMP_BENCH=ON -DLAMP_TESTS=OFF \
  -DLAMP_OUT="$PWD/build/bench" -DLAMP_BENCH_PUGIXML_SOURCE="$PWD/build/xml-source" >/dev/null
ninja -C build/bench --quiet
status=0
bench/count_instructions.py build/bench/bench/page_cycle || status=1
bench/report.py build/bench/bin out "$@" || status=1
exit $status
