#!/usr/bin/env bash
# The house rules that need no build.
set -euo pipefail
cd "$(dirname "$0")/.."
python3 scripts/check_includes.py
python3 scripts/check_files.py
python3 resources/check_texts.py
git ls-files -z --cached --others --exclude-standard '*.h' '*.cpp' |
  xargs -0 -n 50 -P "$(nproc)" clang-format --dry-run -Werror
