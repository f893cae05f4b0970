#!/usr/bin/env bash
# Makes the pictures of docs/screenshots/ anew, from the program as it is.
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need_packages "${build_packages[@]}" "${wine_packages[@]}" "${screen_packages[@]}" "${test_packages[@]}"
build windows nira nira_probe || die "NIRA could not be built"
use_spare_prefix
trap 'stop_wine; stop_screen' EXIT
mkdir -p "$root/docs/screenshots"

# take WIDTHxHEIGHT SUFFIX
take() {
    stop_wine
    start_screen "$1"
    say "Taking the pictures of $1 ..."
    "$python" "$root/tools/screenshots.py" "$root/docs/screenshots" "$root/docs/samples/harbour.txt" "$1" "$2"
    stop_wine
    stop_screen
}

take 480x640 ""
take 240x320 -small
