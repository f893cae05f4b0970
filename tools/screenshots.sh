#!/usr/bin/env bash
# Makes the pictures of docs/screenshots/ anew, from the program as it is.
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need_packages "${build_packages[@]}" "${wine_packages[@]}" "${screen_packages[@]}" "${test_packages[@]}"
build windows nira nira_probe || die "NIRA could not be built"
use_spare_prefix
start_screen
trap 'stop_wine; stop_screen' EXIT
mkdir -p "$root/docs/screenshots"
"$python" "$root/tools/screenshots.py" "$root/docs/screenshots" "$root/docs/samples/harbour.txt"
