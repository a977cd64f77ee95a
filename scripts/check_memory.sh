#!/usr/bin/env bash
# Runs the unit tests under valgrind's memcheck, which also sees what was never written; too long
# for each change. A test program runs whole, in one process.
#   scripts/check_memory.sh [NAME...]    only these programs of build/dev/bin
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_NAMESPACE="$PWD"

scripts/install.sh
cmake --preset dev >/dev/null
ninja -C build/dev --quiet

export QT_QPA_PLATFORM=offscreen
programs=("$@")
if [ ${#programs[@]} -eq 0 ]; then
  for program in build/dev/bin/*_tests; do
    case $program in
      *_load_tests | */editor_tests) ;;  # one measures, the other is Qt's more than ours
      *) programs+=("$(basename "$program")") ;;
    esac
  done
fi
# One brings an operator new of its own, which valgrind's would stand in front of.
printf '%s\n' "${programs[@]}" | xargs -P "$(nproc)" -I{} sh -c '
  [ {} = memory_tests ] && own=--soname-synonyms=somalloc=nouserintercepts
  valgrind --quiet ${own:-} --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite \
    --show-leak-kinds=definite --num-callers=30 --fair-sched=try \
    --suppressions=tests/memory_suppressions.supp \
    build/dev/bin/{} --gtest_brief=1 >build/dev/{}.memcheck 2>&1
  status=$?
  echo "{}: status $status: $(tail -1 build/dev/{}.memcheck)"
  exit $status' || {
  echo "Findings stand in build/dev/*.memcheck" >&2
  exit 1
}
