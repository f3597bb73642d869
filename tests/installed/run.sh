#!/usr/bin/env bash
# Installs a build into an empty folder and builds and runs a host against it: run.sh BUILD SOURCE
set -euo pipefail
build=$1
source=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cmake --install "$build" --prefix "$folder/usr" >/dev/null
[ -z "$(find "$folder/usr/include" -name detail)" ] || { echo "internal headers installed"; exit 1; }
cmake -S "$source" -B "$folder/build" -G Ninja -DCMAKE_PREFIX_PATH="$folder/usr" --log-level=WARNING
cmake --build "$folder/build"
"$folder/build/host" "$folder/picture.png"
[ -s "$folder/picture.png" ]
pkg=$(find "$folder/usr" -name varnel.pc)
PKG_CONFIG_PATH=$(dirname "$pkg") pkg-config --exists varnel
