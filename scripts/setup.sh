#!/usr/bin/env bash
# Installs the Debian packages that building, testing and drawing need. Quick and silent when they
# are all there; needs root or sudo when they are not.
set -euo pipefail

packages=(
    # building
    g++ cmake ninja-build pkg-config
    libegl-dev libopengl-dev libgl-dev libglu1-mesa-dev
    libfreetype-dev libfontconfig-dev libpng-dev
    libx11-dev libxext-dev libcairo2-dev libpolyclipping-dev libcli11-dev
    # drawing without a display or a GPU
    libegl1 libegl-mesa0 libgl1-mesa-dri fonts-liberation
    # tests and checks
    libgtest-dev clang-14 libclang-rt-14-dev clang-format clang-tidy-14 imagemagick ccache
    xvfb xclip xdotool poppler-utils librsvg2-bin libxml2-utils btrfs-progs
    fonts-dejavu-core fonts-droid-fallback
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "setup: these packages are missing: ${missing[*]}" >&2
        echo "setup: install them as root (apt-get install ...), or install sudo, and run again" >&2
        exit 1
    fi
    as_root=(sudo)
fi
if ! command -v apt-get >/dev/null; then
    echo "setup: no apt-get here; install the equivalents of: ${missing[*]}" >&2
    exit 1
fi

echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" apt-get update -qq &&
       "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
           --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "setup: the packages could not be installed" >&2
    exit 1
fi
