#!/usr/bin/env bash
# The rules of .editorconfig that no formatter enforces for us, over every text file: UTF-8, LF, a final newline, no
# tabs, no blanks at line ends.
set -euo pipefail
code=0
while IFS= read -r -d '' file; do
    # Layout files are data in the format of the program that reads them: CR LF, and blanks may be keys. Fuzzers' inputs
    # are what a hostile file may be.
    case $file in tests/fuzz/corpus/* | *.lng | *.ini | *.ico | *.cur | *.png | *.bmp) continue ;; esac
    { [ -s "$file" ] && [ ! -L "$file" ]; } || continue
    if [ -n "$(tail -c 1 "$file")" ] || ! iconv -f UTF-8 -t UTF-8 "$file" >/dev/null ||
        LC_ALL=C grep -nP '\r|\t| $' "$file" | head -n 3 | grep .; then
        echo "$file: not UTF-8, a tab, a carriage return, blanks at a line end, or no newline at the end"
        code=1
    fi
done < <(git -c safe.directory='*' ls-files -z)
exit $code
