#!/usr/bin/env bash
# Every source file is formatted as .clang-format says; "tests/checks/format.sh --fix" makes it so.
set -euo pipefail
command -v clang-format-14 >/dev/null || { echo "skipped: the sources follow clang-format 14"; exit 77; }
how=(--dry-run -Werror)
[ "${1:-}" != --fix ] || how=(-i)
# safe.directory: the tests may run as another user than the one who cloned.
git -c safe.directory='*' ls-files -z '*.cpp' '*.h' | xargs -0 -r clang-format-14 "${how[@]}"
