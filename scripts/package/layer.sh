# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
# For the scripts beside it that work in bare systems: over TREE FOLDER puts a fresh layer over one and sets root; what is
# done there leaves the tree as it was. there COMMAND... runs a command in it; apt_there writes to $log. They are for a
# script with mounts of its own, which go when it ends. A mirror that has stood still for a while will do, and nothing has
# to outlive a power cut.
# shellcheck shell=bash

over() {
    root=$2/root
    rm -rf "$2"
    mkdir -p "$2"/{upper,work,root}
    mount -t overlay overlay -o "lowerdir=$1,upperdir=$2/upper,workdir=$2/work" "$root"
    mount -t proc proc "$root/proc"
    mount --bind /tmp "$root/tmp"
}

there() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

apt_there() {
    there apt-get -qq -y -o Dpkg::Use-Pty=0 -o Acquire::Check-Valid-Until=false \
        -o Dpkg::Options::=--force-unsafe-io "$@" >>"${log:?}" 2>&1
}
