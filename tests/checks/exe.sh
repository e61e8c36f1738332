#!/usr/bin/env bash
# exe.sh [FILE]: the program is one small file that runs on any Windows 10 and is hardened: it imports only what Windows
# protects against planted copies, stays under 1.5 MB, carries the flags for address randomisation and against running
# data, and has its stack protected.
set -euo pipefail
exe=${1:-build/win64/vextrel.exe}
headers=$(x86_64-w64-mingw32-objdump -x "$exe")
code=0
complain() { echo "$1"; code=1; }

# Those that Windows maps from its own list ("known DLLs") whatever lies beside the program; comctl32 comes from the
# side-by-side store, since our manifest asks for version 6. Anything else is to be loaded at run time.
allowed='advapi32|comctl32|comdlg32|gdi32|imm32|kernel32|msvcrt|ole32|oleaut32|rpcrt4|shell32|shlwapi|user32'
! grep 'DLL Name: ' <<<"$headers" | grep -viE " ($allowed)\.dll$" || complain "imported, and not in the list of allowed DLLs"
# Without relocations the flag for address randomisation is empty.
for part in 'DLL Name: KERNEL32' DYNAMIC_BASE HIGH_ENTROPY_VA NX_COMPAT 'Subsystem.*Windows GUI' '[0-9]+ \.reloc'; do
    grep -qE "^[[:space:]]*$part" <<<"$headers" || complain "the header lacks $part"
done
# The stack protector's own message comes with the first function that it guards.
grep -q 'stack smashing detected' "$exe" || complain "no function has a stack protector"
[ "$(stat -c %s "$exe")" -lt 1500000 ] || complain "not under 1.5 MB"
! find "$(dirname "$exe")" -type f -iregex '.*\.\(dll\|a\|lib\)' | grep . || complain "unexpected files beside the program"
exit $code
