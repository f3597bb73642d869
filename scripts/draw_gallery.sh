#!/usr/bin/env bash
# Runs every example: draw_gallery.sh FOLDER_OF_PROGRAMS FOLDER_OF_PICTURES [WIDTHxHEIGHT]
set -euo pipefail
programs=$1
pictures=$2
size=${3:-1024x768}
mkdir -p "$pictures"
for program in "$programs"/example_*; do
    echo "demo: $(basename "$program" | sed 's/^example_//; s/_/ /g')"
    "$program" examples/data "$pictures" "$size"
done
echo "demo: $(find "$pictures" -name '*.png' | wc -l) pictures in $pictures"
