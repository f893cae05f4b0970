#!/usr/bin/env bash
# Sets up a virtual screen and a Wine desktop, and runs bench/wine_start.py FOLDER REPETITIONS on them.
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/../tools/common.sh"

frame=$(mktemp -d)
finish() {
    stop_wine
    kill "$screen" 2>/dev/null || : # it may have ended by itself
    rm -rf "$frame"
}
trap finish EXIT

# The screen's pixels lie in a file that the probe can look at many times a millisecond.
exec {number_fd}< <(exec Xvfb -displayfd 1 -screen 0 480x640x24 -fbdir "$frame" -nolisten tcp 2>/dev/null)
screen=$!
read -r -t 20 -u "$number_fd" number || die "Xvfb did not start"
export DISPLAY=:$number
use_spare_prefix >&2
python3 "$root/bench/wine_start.py" "$frame/Xvfb_screen0" "$@"
