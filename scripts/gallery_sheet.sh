#!/usr/bin/env bash
# Puts twelve of the gallery's pictures on one sheet, the README's: gallery_sheet.sh PICTURES SHEET
# (needs ImageMagick; draw the gallery first).
set -euo pipefail
names=(surface_volcano_height bars_3d scatter_penguins
    area_anomaly stock_candles areas_stacked
    surface_volcano_bands line_helix boxes
    bars_log surface_function aux_shapes)
files=()
for name in "${names[@]}"; do files+=("$1/$name.png"); done
montage "${files[@]}" -resize 480x360 -tile 3x -geometry +6+6 -quality 88 "$2"
