#!/usr/bin/env bash
# Installs what is missing, builds the programs as released and everything under the address and
# undefined-behaviour sanitizers, checks the house rules, runs every test and each fuzz target for a
# moment.
set -euo pipefail
cd "$(dirname "$0")"

# ccache would hand the precompiled headers of another clone to this one.
export CCACHE_NAMESPACE="$PWD"

scripts/install.sh
scripts/check.sh

configure() {
  cmake --preset "$@" >/dev/null
}

configure release -DLAMP_TESTS=OFF -DLAMP_GATE=ON
ninja -C build/release --quiet
scripts/check_programs.py out
bench/count_instructions.py build/release/bench/page_cycle
configure asan
ninja -C build/asan --quiet

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir build/asan --output-on-failure --no-tests=error -LE slow -j "$(nproc)" --timeout 300
./fuzz.sh --seconds 10
