#!/usr/bin/env bash
# Installs what is missing, checks the house rules, builds the programs as released and everything
# under the address and undefined-behaviour sanitizers, and runs every test there; what was found by
# fuzzing is tried again as well.
#   ./test.sh        within half an hour on two processors, from a fresh clone
#   ./test.sh --all  the tests with the label "slow" too, which take longer by nature
set -euo pipefail
cd "$(dirname "$0")"

left_out=(-LE slow)
case "${1:-}" in
  "") ;;
  --all) left_out=() ;;
  *)
    echo "usage: ./test.sh [--all]" >&2
    exit 2
    ;;
esac

# ccache would hand the precompiled headers of another clone to this one.
export CCACHE_NAMESPACE="$PWD"

# step NAME COMMAND...: runs it and says how long it took.
step() {
  local from=$SECONDS
  "${@:2}"
  echo "-- $1: $((SECONDS - from)) s"
}

build() {
  cmake --preset "$@" >/dev/null
  ninja -C "build/$1" --quiet
}

step "packages" scripts/install.sh
step "house rules" scripts/check.sh
step "build as released" build release -DLAMP_TESTS=OFF -DLAMP_COSTS=ON
step "released programs" scripts/check_programs.py out
step "files of released programs" scripts/check_files.py out
step "costs of XML" bench/check_shapes.py build/release/bench/shape_costs
step "build with sanitizers" build asan

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir build/asan --output-on-failure --no-tests=error "${left_out[@]}" \
  -j "$(nproc)" --timeout 300
