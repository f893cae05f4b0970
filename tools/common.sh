# Shell functions shared by ./run, ./test and tools/*.sh. Source it; it sets nothing up by itself.
# shellcheck shell=bash
# shellcheck disable=SC2034  # the variables are for the scripts that source this file
set -euo pipefail

# Without a UTF-8 locale Wine garbles file names beyond ASCII.
export LC_ALL=C.UTF-8
export HOME="${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}"

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Where ccache is installed, what one checkout has compiled serves another in another folder.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}

cache=${XDG_CACHE_HOME:-$HOME/.cache}/nira
data=${XDG_DATA_HOME:-$HOME/.local/share}/nira

# Debian's own Python, which has Debian's pytest; another one may come first in PATH.
python=/usr/bin/python3
[ -x "$python" ] || python=python3

build_packages=(cmake ninja-build g++-mingw-w64-x86-64)
wine_packages=(wine wine64 fonts-wine fonts-liberation2)
screen_packages=(xvfb xauth xdotool imagemagick)
bench_packages=(cmake ninja-build g++ libbenchmark-dev)
test_packages=(g++ clang libclang-rt-14-dev git googletest clang-format clang-tidy python3 python3-pytest)

say() { printf '%s\n' "$*"; }

# die MESSAGE: the last line of a run that could not be made.
die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# need_packages NAME...: installs the Debian packages that are missing, or says which to install.
need_packages() {
    local missing=() name
    command -v dpkg-query >/dev/null || return 0 # another distribution: the commands themselves will tell
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        die "these Debian packages are missing; install them as root: apt-get install ${missing[*]}"
    fi
    say "Installing Debian packages: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! {
        apt-get update &&
            DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
    } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        die "the packages could not be installed (whole log: $log)"
    fi
    rm -f "$log"
}

# build PRESET [TARGET...]: configures and builds; prints only what goes wrong.
build() {
    local preset=$1 log=$root/build/$1.log started=$SECONDS
    shift
    mkdir -p "$root/build"
    say "Building $preset ${*:-everything} ..."
    if ! (cd "$root" && cmake --preset "$preset" && ninja -j "$(nproc)" -C "build/$preset" "$@") >"$log" 2>&1; then
        grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking)' "$log" | tail -n 60 >&2
        say "Building $preset failed (whole log: $log)" >&2
        return 1
    fi
    say "Built $preset in $((SECONDS - started)) s"
}

# use_prefix FOLDER [desktop]: makes FOLDER the Wine prefix of everything that follows, creating it once.
# With `desktop`, programs open on a Wine desktop of 480 x 640 instead of each in a window of its own.
use_prefix() {
    export WINEPREFIX=$1 WINEDEBUG=${WINEDEBUG:--all}
    # Neither a .NET nor a browser engine is needed, and no program is to enter itself in the person's menus.
    export WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe=d'
    local ready=$WINEPREFIX/nira-ready desktop=${2:-} want
    want="settings 2 $desktop"
    [ "$(cat "$ready" 2>/dev/null)" = "$want" ] && return 0
    say "Making the Wine prefix $WINEPREFIX (once) ..."
    mkdir -p "$WINEPREFIX"
    local log=$WINEPREFIX.log
    if ! fill_prefix "$desktop" >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        die "the Wine prefix could not be made (whole log: $log)"
    fi
    rm -f "$log"
    printf '%s\n' "$want" >"$ready"
}

fill_prefix() {
    wineboot --init || return 1
    wineserver -w
    # The frames' buttons are drawn with Marlett and dialogs with Tahoma, but Debian's Wine looks for its own fonts
    # by a path that it cannot open itself.
    local font
    for font in marlett tahoma tahomabd symbol wingding; do
        [ ! -f "/usr/share/wine/fonts/$font.ttf" ] ||
            ln -sf "/usr/share/wine/fonts/$font.ttf" "$WINEPREFIX/drive_c/windows/Fonts/"
    done
    # A crash must end the program, not wait for an answer that nobody gives.
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f || return 1
    # A fresh prefix draws Courier New with a proportional font.
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Courier New' /d 'Liberation Mono' /f || return 1
    if [ "$1" = desktop ]; then
        wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d NIRA /f || return 1
        wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v NIRA /d 480x640 /f || return 1
    fi
    wineserver -w
}

# use_spare_prefix: takes the first prefix of the cache that no other run is using, and ends what is left in it.
use_spare_prefix() {
    local number
    mkdir -p "$cache"
    for number in 1 2 3 4 5 6 7 8 9; do
        exec {prefix_lock}>"$cache/wine-$number.lock"
        flock -n "$prefix_lock" && break
        exec {prefix_lock}>&-
        [ "$number" -lt 9 ] || die "nine runs are using the Wine prefixes in $cache"
    done
    use_prefix "$cache/wine-$number" desktop
    stop_wine
    # The server outlives the programs of one test, so that the next one starts warm.
    wineserver -p60
    # Encodings that a broken-off run left registered would change what the tests see.
    wine reg delete 'HKLM\Software\NIRA' /f >/dev/null 2>&1 || : # there were none
}

# stop_wine: ends every program of the current prefix, and of no other.
stop_wine() {
    wineserver -k || : # nothing was running
    wineserver -w
}

# start_screen [WIDTHxHEIGHT]: a virtual screen, of 480 x 640 unless told otherwise, on a free display; sets DISPLAY
# and screen_pid.
start_screen() {
    local number
    exec {screen_fd}< <(exec Xvfb -displayfd 1 -screen 0 "${1:-480x640}x24" -nolisten tcp 2>/dev/null)
    screen_pid=$!
    read -r -t 20 -u "$screen_fd" number || die "Xvfb did not start"
    export DISPLAY=:$number
}

stop_screen() {
    [ -n "${screen_pid:-}" ] || return 0
    kill "$screen_pid" 2>/dev/null || : # it may have ended by itself
    screen_pid=
}
