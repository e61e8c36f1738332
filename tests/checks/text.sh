#!/usr/bin/env bash
# The rules of .editorconfig that no formatter enforces for us, over every text file: UTF-8, LF, a final newline, no
# tabs, no blanks at line ends. Layout files are data in the format of the program that reads them: CR LF, and blanks may
# be keys. Fuzzers' inputs are what a hostile file may be.
set -euo pipefail
search() { git -c safe.directory='*' grep -I "$@" -- . ':!tests/fuzz/corpus' ':!*.lng' ':!*.ini'; }
code=0
! search -nP '\t|\r| $' || code=1
while IFS= read -r file; do
    { iconv -f UTF-8 -t UTF-8 "$file" >/dev/null && [ -z "$(tail -c 1 "$file")" ]; } || { echo "$file: not UTF-8, or no newline at the end"; code=1; }
done < <(search -l '')
exit $code
