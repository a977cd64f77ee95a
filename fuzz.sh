#!/usr/bin/env bash
# Lets every fuzz target run for a while, with the address and undefined-behaviour sanitizers, and
# prints what they did as a table.
#   ./fuzz.sh                  a minute each
#   ./fuzz.sh --seconds N      N seconds each
#   ./fuzz.sh --target NAME    only this one; may be given several times
# What was found before (fuzz/findings) is tried first. Ends with status 1 when something is found,
# and leaves the input under out/fuzz/.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install.sh fuzz
cmake --preset fuzz >/dev/null
ninja -C build/fuzz --quiet fuzz_targets
fuzz/run.py build/fuzz/bin out/fuzz "$@"
