#!/usr/bin/env bash
# The tests are at most a third of all that was written for the program and for them.
set -euo pipefail
count() {
    git -c safe.directory='*' ls-files "$@" | grep -E '(\.cpp|\.h|\.py|\.sh|\brun|^test|^bench|CMakeLists\.txt)$' |
        xargs cat | wc -l
}
program=$(count src)
tests=$(count tests test bench)
echo "tests: $tests lines, at most $((program / 2)), since src has $program"
[ "$tests" -gt 1000 ] && [ "$tests" -le $((program / 2)) ]
