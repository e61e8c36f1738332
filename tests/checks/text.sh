#!/usr/bin/env bash
# The rules of .editorconfig that no formatter enforces for us, over every text file: UTF-8, LF, a final newline, no
# tabs, no blanks at line ends.
set -euo pipefail
code=0
complain() {
    printf '%s: %s\n' "$1" "$2"
    code=1
}
while IFS= read -r -d '' file; do
    # Symbolic links and files without a line are nobody's text; pictures and the like are found by their NUL.
    { [ -f "$file" ] && [ ! -L "$file" ] && [ -s "$file" ]; } || continue
    ! LC_ALL=C grep -qP '\x00' "$file" || continue
    # Layout files are data in the format of the program that reads them: CR LF, and blanks may be keys. Fuzzers' inputs are what
    # a hostile file may be.
    case $file in tests/fuzz/corpus/* | *.lng | *.ini | *.ico | *.cur | *.png | *.bmp) continue ;; esac
    [ -z "$(tail -c 1 "$file")" ] || complain "$file" 'no newline at the end'
    iconv -f UTF-8 -t UTF-8 "$file" >/dev/null 2>&1 || complain "$file" 'not UTF-8'
    ! LC_ALL=C grep -nP '\r' "$file" | head -n 3 | grep . || complain "$file" 'carriage return'
    ! LC_ALL=C grep -nP '\t' "$file" | head -n 3 | grep . || complain "$file" 'tab'
    ! LC_ALL=C grep -nP '[ \t]+\r?$' "$file" | head -n 3 | grep . || complain "$file" 'blanks at a line end'
done < <(git -c safe.directory='*' ls-files -z)
exit $code
