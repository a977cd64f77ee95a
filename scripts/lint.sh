#!/usr/bin/env bash
# Format and static analysis.
#   scripts/lint.sh           what differs from the last commit
#   scripts/lint.sh --all     everything (the analysis takes long)
#   scripts/lint.sh --format  formats in place
set -euo pipefail
cd "$(dirname "$0")/.."

command -v clang-format >/dev/null && command -v clang-tidy >/dev/null || {
  if [ "$(id -u)" -eq 0 ]; then as_root=(); else as_root=(sudo); fi
  "${as_root[@]}" apt-get install -y -qq --no-install-recommends clang-format clang-tidy >/dev/null
}

mapfile -t all < <(git ls-files --cached --others --exclude-standard '*.h' '*.cpp')
if [ "${1:-}" = --format ]; then
  clang-format -i "${all[@]}"
  exit 0
fi
if [ "${1:-}" = --all ]; then
  files=("${all[@]}")
else
  mapfile -t files < <(git diff --name-only --diff-filter=d HEAD -- '*.h' '*.cpp')
fi
[ ${#files[@]} -eq 0 ] && { echo "nothing to check"; exit 0; }

clang-format --dry-run --Werror "${files[@]}"
# Configured and not built: the analysis can't read the precompiled headers of another compiler.
[ -f build/lint/compile_commands.json ] ||
  cmake --preset dev -B build/lint -DLAMP_PRECOMPILE=OFF >/dev/null
sources=()
for file in "${files[@]}"; do [[ $file == *.cpp ]] && sources+=("$file"); done
[ ${#sources[@]} -eq 0 ] || clang-tidy -p build/lint --quiet \
  --extra-arg=-Wno-unknown-warning-option "${sources[@]}"
