#!/usr/bin/env bash
# Makes the pictures of docs/screenshots/ anew, from the program as it is.
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

mkdir -p "$root/docs/screenshots"
"$root/run" --picture "$root/docs/screenshots/main.png" "$root/docs/samples/harbour.txt"
