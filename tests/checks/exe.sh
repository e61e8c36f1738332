#!/usr/bin/env bash
# exe.sh FILE: the program is one small file that runs on any Windows 10 and is hardened: it imports only what Windows
# protects against planted copies, stays under 1.5 MB, carries the flags for address randomisation and against running
# data, and has its stack protected.
set -euo pipefail
exe=$1
if ! grep -q 'add_executable(vextrel ' src/CMakeLists.txt; then
    echo "skipped: src has no program target yet"
    exit 77
fi
[ -f "$exe" ] || { echo "$exe has not been built"; exit 1; }
code=0

# Those that Windows maps from its own list ("known DLLs") whatever lies beside the program; comctl32 comes from the
# side-by-side store, since our manifest asks for version 6. Anything else belongs loaded at run time from the system
# folder.
allowed=" advapi32 comctl32 comdlg32 gdi32 imm32 kernel32 msvcrt ole32 oleaut32 rpcrt4 shell32 shlwapi user32 "
headers=$(x86_64-w64-mingw32-objdump -p "$exe")
while read -r dll; do
    name=${dll,,}
    [[ $allowed == *" ${name%.dll} "* ]] || { echo "imports $dll, which is not in the list of allowed DLLs"; code=1; }
done < <(sed -n 's/^[[:space:]]*DLL Name: //p' <<<"$headers")
grep -qi 'DLL Name: kernel32' <<<"$headers" || { echo "no imports found: is this an executable?"; code=1; }

size=$(stat -c %s "$exe")
[ "$size" -lt 1500000 ] || { echo "$size bytes: not under 1.5 MB"; code=1; }

# Without relocations the flag for address randomisation is empty.
sections=$(x86_64-w64-mingw32-objdump -h "$exe")
grep -q '[[:space:]]\.reloc[[:space:]]' <<<"$sections" || { echo "no relocations: its place would be fixed"; code=1; }
! grep -q 'relocations stripped' <<<"$headers" || { echo "relocations stripped"; code=1; }
# The stack protector's own message comes with the first function that it guards.
grep -q 'stack smashing detected' "$exe" || { echo "no function has a stack protector"; code=1; }

for flag in DYNAMIC_BASE HIGH_ENTROPY_VA NX_COMPAT; do
    grep -q "^[[:space:]]*$flag\$" <<<"$headers" || { echo "the header lacks $flag"; code=1; }
done
grep -q '^Subsystem[[:space:]].*Windows GUI' <<<"$headers" || { echo "not a GUI program"; code=1; }

others=$(find "$(dirname "$exe")" -type f \( -iname '*.dll' -o -iname '*.a' -o -iname '*.lib' \) | head -n 3)
[ -z "$others" ] || { echo "unexpected files beside the program: $others"; code=1; }
[ $code != 0 ] || echo "$size bytes, $(grep -c 'DLL Name' <<<"$headers") imported DLLs"
exit $code
