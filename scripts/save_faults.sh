#!/usr/bin/env bash
# Saves while processes are killed, disks are full and files are read-only, and checks that there is
# always the old file or the new one, whole, with nothing beside it: save_faults.sh PROGRAM
# As root, with the right to mount, it tries more: other owners, a small disk, a read-only one and,
# where there are the tools of btrfs, one with a quota.
set -euo pipefail
program=$1
folder=$(mktemp -d)
disks=()
clean() {
    for disk in "${disks[@]}"; do umount "$disk"; done
    rm -rf "$folder"
}
trap clean EXIT

try() { "$@" 2>/dev/null; }
mount_disk() { # mount_disk FOLDER MOUNT'S OPTIONS AND SOURCE
    mkdir "$1"
    try mount "${@:2}" "$1" && disks=("$1" "${disks[@]}")
}
small='' quota='' fixed=''
if mount_disk "$folder/small" -t tmpfs -o size=1m none; then
    small=$folder/small/disk
    mkdir "$small"
fi
if command -v mkfs.btrfs >/dev/null && truncate -s 128M "$folder/image" &&
    try mkfs.btrfs -q "$folder/image" >/dev/null &&
    mount_disk "$folder/quota" -o loop "$folder/image" &&
    try btrfs quota enable "$folder/quota" &&
    try btrfs subvolume create "$folder/quota/disk" >/dev/null &&
    try btrfs qgroup limit 1M "$folder/quota/disk"; then
    quota=$folder/quota/disk
fi
if mount_disk "$folder/fixed" -t tmpfs -o size=1m none; then
    fixed=$folder/fixed
    echo old >"$fixed/old.chart"
    mount -o remount,ro "$fixed"
fi
mkdir "$folder/work"
"$program" "$folder/work" "$small" "$quota" "$fixed"
