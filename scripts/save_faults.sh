#!/usr/bin/env bash
# Saves while processes are killed, disks are full and files are read-only, and checks that there is
# always the old file or the new one, whole, with nothing beside it: save_faults.sh PROGRAM
# As root, with the right to mount, it tries more (other owners, a small disk, a read-only one).
set -euo pipefail
program=$1
folder=$(mktemp -d)
disks=()
clean() {
    for disk in "${disks[@]}"; do umount "$disk"; done
    rm -rf "$folder"
}
trap clean EXIT

mount_disk() { # mount_disk FOLDER OPTIONS
    mkdir "$1"
    mount -t tmpfs -o "$2" none "$1" 2>/dev/null && disks+=("$1")
}
if mount_disk "$folder/small" size=1m; then
    mkdir "$folder/small/disk"
    if mount_disk "$folder/fixed" size=1m; then
        echo old >"$folder/fixed/old.chart"
        mount -o remount,ro "$folder/fixed"
    fi
fi
mkdir "$folder/work"
arguments=("$folder/work")
[ ${#disks[@]} -lt 1 ] || arguments+=("$folder/small/disk")
[ ${#disks[@]} -lt 2 ] || arguments+=("$folder/fixed")
"$program" "${arguments[@]}"
