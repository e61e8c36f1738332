#!/usr/bin/env bash
# handlers.sh: every event handler that the sources guard has failed in the tests of the error report, by its name.
set -euo pipefail
test=tests/ui/main/ErrorsTest.cpp
code=0
# A guard names its handler where it stands, or is one of these, whose names come from a table (or from the class).
elsewhere='handler->name|Handle\(\), handler,|window, className'
guards=$(grep -rhA1 --include='*.cpp' -E '\b(GuardEvent|guarded)\(' src)
unnamed=$(awk '/(GuardEvent|guarded)\(/ { if (call != "") print call; call = "" }
               /(GuardEvent|guarded)\(/ && !/L"/ { call = $0; next }
               call != "" { if (!/L"/) print call; call = "" }' <<<"$guards" | grep -vE "$elsewhere" || true)
[ -z "$unnamed" ] || { echo "guards without a name to be found: $unnamed"; code=1; }

names=$( { grep -oE 'L"[^"]+"' <<<"$guards"
    grep -rhoE --include='*.cpp' 'L"[A-Za-z]+_[A-Za-z]+"' src; } | sort -u)
[ "$(wc -l <<<"$names")" -gt 40 ] || { echo "too few handlers found: do the sources still look as they did?"; code=1; }
while read -r name; do
    grep -qF "$name" "$test" || { echo "no test lets $name fail"; code=1; }
done <<<"$names"
exit $code
