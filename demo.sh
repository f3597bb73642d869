#!/usr/bin/env bash
# Draws the gallery from real data into out/gallery: installs what is needed, builds, draws. Needs
# no display and no GPU.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh
echo "demo: building the library and the examples"
cmake --preset release -DVARNEL_TESTS=OFF -DVARNEL_TOOLS=OFF --log-level=WARNING
cmake --build --preset release
scripts/draw_gallery.sh build/release/bin out/gallery
