# Shared by ./run, ./test, ./package and ./bench: packages, build steps, and the bed the program runs on (a private
# display with window manager and compositor, and a Wine prefix). Sourced; expects bash. Everything started here is
# ended by finish().
#
# Outside the repository only the Wine prefix is written to: ${XDG_CACHE_HOME:-$HOME/.cache}/vextrel/wine.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
logs=$root/build/log
cache=${XDG_CACHE_HOME:-${HOME:-/root}/.cache}/vextrel
prefix=$cache/wine

packagesToRun="cmake ninja-build g++-mingw-w64-x86-64-posix googletest wine wine64 fonts-wine xvfb openbox picom x11-utils"
packagesToFuzz="cmake ninja-build googletest clang libclang-rt-dev"
packagesToBench="cmake ninja-build g++ googletest libbenchmark-dev"
packagesToPackage="cmake ninja-build g++-mingw-w64-x86-64-posix googletest git zip nsis python3-markdown"
packagesToTest="$packagesToRun $packagesToFuzz $packagesToPackage g++ python3 libxkbcommon-tools unzip"
# All that differs between Debian 12 and 13. Those two tools judge otherwise in each version, and the sources follow that
# of Debian 12; elsewhere their checks are skipped. picom 12 leaves parts black, now and then, if it draws only what has
# changed.
compositorOptions=()
if [ "$(sed -n 's/^VERSION_ID="\([0-9]*\)"$/\1/p' /etc/os-release 2>/dev/null)" = 12 ]; then
    packagesToTest+=" clang-format clang-tidy"
else
    compositorOptions+=(--no-use-damage)
fi

running=      # process group of the step at work
servers=()    # process groups of Xvfb, openbox and picom, in the order of their start
prefixes=()   # Wine prefixes with a server of this run

say() { printf '== %s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

# Ends what this run started, and nothing else. Also reached from INT and TERM.
finish() {
    trap '' INT TERM HUP
    [ -z "$running" ] || end_group "$running"
    local i
    for i in "${prefixes[@]}"; do
        WINEPREFIX=$i timeout 20 wineserver -k 9>&- >/dev/null 2>&1 || true
        WINEPREFIX=$i timeout 20 wineserver -w 9>&- >/dev/null 2>&1 || true
    done
    for ((i = ${#servers[@]} - 1; i >= 0; i--)); do
        end_group "${servers[i]}"
    done
}
trap finish EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

# Asks a process group to end, and insists after five seconds.
end_group() {
    local n
    kill -TERM -- "-$1" 2>/dev/null || true
    for ((n = 0; n < 50; n++)); do
        kill -0 -- "-$1" 2>/dev/null || break
        sleep 0.1
    done
    kill -KILL -- "-$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || true
}

# Runs a program in a process group of its own, so that an interruption can end all of it. Its children must not
# inherit the lock on the Wine prefix (descriptor 9), or one that lingers would keep it.
in_group() {
    local code=0
    setsid -- "$@" 9>&- &
    running=$!
    wait "$running" || code=$?
    running=
    return "$code"
}

log_of() { printf '%s' "$logs/${1// /-}.log"; }

# try NAME COMMAND...: runs a program with its output in build/log.
try() {
    local name=$1 started=$SECONDS code=0
    local log
    log=$(log_of "$1")
    shift
    mkdir -p "$logs"
    printf '== %s ... ' "$name"
    in_group "$@" >"$log" 2>&1 || code=$?
    if [ "$code" != 0 ]; then
        printf 'failed after %d s\n' $((SECONDS - started))
        return "$code"
    fi
    printf '%d s\n' $((SECONDS - started))
}

give_up() {
    local log
    log=$(log_of "$1")
    tail -n 60 "$log"
    die "$1 failed; all of its output is in ${log#"$root"/}"
}

# step NAME COMMAND...: the same, and shows the end of the output when it fails, which ends all.
step() { try "$@" || give_up "$1"; }

# until_ready WHAT SECONDS COMMAND...: waits for a condition.
until_ready() {
    local what=$1 limit=$((SECONDS + $2))
    shift 2
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$limit" ] || die "$what did not get ready; see ${logs#"$root"/}"
        sleep 0.1
    done
}

# Installs what is missing of the named Debian packages, where that is possible.
need_packages() {
    local missing=() package asRoot=()
    command -v dpkg-query >/dev/null || die "This needs Debian 12 or 13 with these packages: $*"
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ "${#missing[@]}" = 0 ] && return
    if [ "$(id -u)" != 0 ]; then
        if command -v sudo >/dev/null && { sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; }; }; then
            asRoot=(sudo)
        else
            die "These packages are missing and need root to be installed: apt-get install ${missing[*]}"
        fi
    fi
    local started=$SECONDS log=$logs/packages.log apt=(env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
    mkdir -p "$logs"
    printf '== install %s ... ' "${missing[*]}"
    if ! { "${asRoot[@]}" "${apt[@]}" update &&
        "${asRoot[@]}" "${apt[@]}" install -y --no-install-recommends "${missing[@]}"; } </dev/null >"$log" 2>&1; then
        printf 'failed\n'
        tail -n 20 "$log"
        die "Could not install: ${missing[*]}"
    fi
    printf '%d s\n' $((SECONDS - started))
}

# build PRESET: configures and builds; what the compiler warns of is refused.
build() {
    cd "$root"
    step "configure $1" cmake --preset "$1" -D VEXTREL_WARNINGS_ARE_ERRORS=ON
    step "build $1" cmake --build --preset "$1"
}

# build_to_use PRESET TARGET...: for who wants to use the result. Warnings of a compiler that we have not seen stop nobody:
# then it is built anew with them, and stays so until the next ./test.
build_to_use() {
    local preset=$1 name="build $1"
    shift
    local command=(cmake --build --preset "$preset" --target "$@")
    cd "$root"
    step "configure $preset" cmake --preset "$preset"
    try "$name" "${command[@]}" && return
    grep -q 'warnings being treated as errors' "$(log_of "$name")" || give_up "$name"
    say "the compiler warns; once more, whatever it warns of"
    step "configure $preset" cmake --preset "$preset" -D VEXTREL_WARNINGS_ARE_ERRORS=OFF
    step "$name" "${command[@]}"
}

# start_display [NAME]: a display of our own on a free number, with a window manager and a compositor; exports DISPLAY.
start_display() {
    local number=$root/build/bed/display suffix=${1:+-$1}.log
    local own=(env HOME="$root/build/bed/home" XDG_CONFIG_HOME="$root/build/bed/home" XDG_CACHE_HOME="$root/build/bed/home"
        XDG_DATA_HOME="$root/build/bed/home")
    mkdir -p "$logs" "$root/build/bed/home"
    unset WAYLAND_DISPLAY XAUTHORITY SESSION_MANAGER
    : >"$number"
    setsid -- "${own[@]}" Xvfb -displayfd 8 -screen 0 1920x1080x24 +extension Composite -nolisten tcp -noreset \
        8>"$number" 9>&- >"$logs/xvfb$suffix" 2>&1 &
    servers+=($!)
    until_ready Xvfb 30 grep -q . "$number"
    DISPLAY=:$(cat "$number")
    export DISPLAY
    setsid -- "${own[@]}" openbox --sm-disable 9>&- >"$logs/openbox$suffix" 2>&1 &
    servers+=($!)
    until_ready openbox 30 window_manager_runs
    setsid -- "${own[@]}" picom --backend xrender --config /dev/null "${compositorOptions[@]}" 9>&- >"$logs/picom$suffix" 2>&1 &
    servers+=($!)
    until_ready picom 30 compositor_runs
    say "display $DISPLAY with openbox and picom"
}
window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; }
compositor_runs() { xwininfo -root -tree | grep -qi '"picom"'; }

# Takes the Wine prefix for this run alone, and makes it if there is none or only half of one. Programs of two runs
# in one prefix would share a desktop, and the end of one run would end the other's programs.
start_wine() {
    local made=$prefix/vextrel-made-by version
    export WINEPREFIX=$prefix WINEDEBUG=-all WINEARCH=win64 HOME=$prefix/home
    export XDG_CACHE_HOME=$HOME XDG_CONFIG_HOME=$HOME XDG_DATA_HOME=$HOME
    # No start menu entries on the host, and no offers to download further parts of Wine.
    export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree=;mshtml='
    mkdir -p "$cache"
    exec 9>"$cache/wine.lock"
    if ! flock -n 9; then
        say "waiting for another ./run or ./test to give the Wine prefix back"
        flock 9
    fi
    version=$(wine --version 9>&-)
    prefixes+=("$prefix")
    if [ "$(cat "$made" 2>/dev/null)" != "$version" ]; then
        rm -rf -- "${prefix:?}"
        mkdir -p "$HOME"
        step "make Wine prefix" env -u DISPLAY timeout 180 bash -c 'wineboot -i && wineserver -w'
        # The signs on a title bar's buttons; without this font they would be letters.
        cp /usr/share/wine/fonts/marlett.ttf "$prefix/drive_c/windows/Fonts/"
        printf '%s\n' "$version" >"$made"
    fi
    wineserver -p 9>&- >/dev/null 2>&1 # it stays until finish(), so that not every test starts it anew
}

# Two beds side by side, so that two tests of the window run at once: each has a display and a prefix of its own, and its
# environment in build/bed/lane-N, where tools/under-wine finds it.
start_lanes() {
    local lane
    for lane in 1 2; do
        prefix=$cache/wine-$lane
        start_display "$lane"
        start_wine
        export -p | grep -E '^declare -x (DISPLAY|HOME|WINE[A-Z]*|XDG_[A-Z_]*)=' >"$root/build/bed/lane-$lane"
    done
}
