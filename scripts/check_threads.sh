#!/usr/bin/env bash
# Builds everything under the sanitizer for threads and runs every test; too long for each change.
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_NAMESPACE="$PWD"

scripts/install.sh
cmake --preset tsan >/dev/null
ninja -C build/tsan --quiet

export QT_QPA_PLATFORM=offscreen
# A test forks an editor that has threads already, to kill it.
export TSAN_OPTIONS="die_after_fork=0:halt_on_error=1:second_deadlock_stack=1:suppressions=$PWD/tests/thread_suppressions.txt"
ctest --test-dir build/tsan --output-on-failure --no-tests=error -LE slow -j "$(nproc)" --timeout 600
