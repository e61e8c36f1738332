#!/usr/bin/env bash
# handlers.sh: every guard of an event handler has a name, and no two handlers share one: an error report says with it
# where it happened.
set -euo pipefail
code=0
# A guard names its handler where it stands, or is one of these, whose names come from a table (or from the class).
elsewhere='handler->name|Handle\(\), handler,|window, className'
# Two steps of one event, or one event of two windows.
shared='"Form_MouseMove" "Resize" "Timer1_Timer" "Transfer" "tbToolbar_ButtonMenuClick"'
guards=$(grep -rhA1 --include='*.cpp' -E '\b(GuardEvent|guarded)\(' src)
unnamed=$(awk '/(GuardEvent|guarded)\(/ { if (call != "") print call; call = "" }
               /(GuardEvent|guarded)\(/ && !/L"/ { call = $0; next }
               call != "" { if (!/L"/) print call; call = "" }' <<<"$guards" | grep -vE "$elsewhere" || true)
[ -z "$unnamed" ] || { echo "guards without a name to be found: $unnamed"; code=1; }

names=$( { grep -oE 'L"[^"]+"' <<<"$guards"; grep -rhoE --include='*.cpp' 'L"[A-Za-z]+_Click"' src; } | sort)
[ "$(uniq <<<"$names" | wc -l)" -gt 40 ] || { echo "too few handlers: do the sources still look as they did?"; code=1; }
for name in $(uniq -d <<<"$names" | sed 's/^L//; s/ /_/g'); do
    [[ $shared == *"$name"* ]] || { echo "two handlers are called $name"; code=1; }
done
exit $code
