#!/usr/bin/env bash
# tidy.sh [FILE...]: runs clang-tidy over these sources, as .clang-tidy says. Without arguments over those that differ
# from the last commit, or include a header that does; with VEXTREL_CHECK_ALL in the environment over all. Left out are
# GoogleTest's cases, which take long and give little to find. Core files are read with the flags of the host build, the
# others with those of the Windows build.
set -euo pipefail
command -v run-clang-tidy-14 >/dev/null || { echo "skipped: the sources follow clang-tidy 14"; exit 77; }
ours() { git -c safe.directory='*' "$@"; }
changed() {
    for file in $(ours status --porcelain --untracked-files=all | cut -c 4- | grep -E '\.(cpp|h)$'); do
        echo "$file"
        ours grep -lE "#include \".*\b${file##*/}\"" -- '*.cpp' || true
    done
}
if [ $# -gt 0 ]; then
    files=$(printf '%s\n' "$@")
else
    files=$({ [ "${VEXTREL_CHECK_ALL:-}" ] && ours ls-files || changed; } | grep '\.cpp$' | grep -vE 'Test(Main)?\.cpp$') || true
fi
tidy() { # PRESET, ITS FILES, OPTIONS
    [ -z "$2" ] || nice run-clang-tidy-14 -quiet -p "build/obj/$1" -extra-arg=-Wno-error "${@:3}" $(sed "s|.*|^$PWD/&$|" <<<"$2")
}
code=0
tidy host "$(grep -E '^(src|tests)/core/' <<<"$files")" || code=1
# Without the cross-compiler's own built-in headers: those are written for GCC, and clang has its own.
folders=$(x86_64-w64-mingw32-g++-posix -E -x c++ /dev/null -v 2>&1 | grep -oE '/\S+(/c\+\+\S*|/x86_64-w64-mingw32/include)$')
tidy win64 "$(grep -vE '^((src|tests)/core/.*)?$' <<<"$files")" -extra-arg=--target=x86_64-w64-mingw32 \
    -extra-arg=-nostdinc++ $(printf -- '-extra-arg=-isystem%s ' $folders) || code=1
exit $code
