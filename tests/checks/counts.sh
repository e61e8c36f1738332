#!/usr/bin/env bash
# The tests are at most a third of all that was written for the program and for them; of these, what tests by itself is
# at most 4,500 lines.
set -euo pipefail
count() {
    git -c safe.directory='*' ls-files "$@" | grep -E '(\.cpp|\.h|\.py|\.sh|\brun|^test|^bench|CMakeLists\.txt)$' |
        xargs cat | wc -l
}
program=$(count src)
tests=$(count tests test bench)
suites=$(count tests/core tests/shell tests/ui ':!tests/ui/driver' ':!tests/ui/target' ':!tests/ui/soak')
echo "tests: $tests lines, at most $((program / 2)), since src has $program; suites: $suites, at most 4500"
[ "$tests" -gt 1000 ] && [ "$tests" -le $((program / 2)) ] && [ "$suites" -le 4500 ]
