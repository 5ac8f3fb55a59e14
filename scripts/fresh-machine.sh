#!/usr/bin/env bash
# Before a release: makes a bare Debian 12 in a folder, clones what is committed here into it and runs the two commands
# of README.md there. As root; half an hour on two cores.   scripts/fresh-machine.sh [MIRROR]
set -eu
cd "$(dirname "$0")/.."
mirror=${1:-http://deb.debian.org/debian}
[ "$(id -u)" -eq 0 ] || { echo "Only root can make a system in a folder."; exit 1; }
command -v debootstrap > /dev/null || apt-get install -y -qq --no-install-recommends debootstrap > /dev/null

root=$(mktemp -d "${TMPDIR:-/var/tmp}/fresh-machine.XXXXXX")
remove() {
    if findmnt --raw --noheadings --output TARGET | grep -q "^$root/"; then
        echo "Something is mounted below $root: not removed."
    else
        rm -rf --one-file-system "$root"
    fi
}
trap remove EXIT
chmod 755 "$root"  # apt reads as a user of its own

debootstrap --variant=minbase bookworm "$root" "$mirror" > "$root.log" 2>&1 || { tail -5 "$root.log"; exit 1; }
rm "$root.log"
cp /etc/resolv.conf "$root/etc/resolv.conf"
git clone --quiet . "$root/root/KvxDemosaicing"
# Mounts and processes of its own: both go with the last command, whatever becomes of it.
for command in scripts/demo.sh scripts/test.sh; do
    echo "== $command"
    start=$SECONDS
    unshare --mount --pid --fork --kill-child --mount-proc="$root/proc" \
        chroot "$root" /bin/bash -c "cd /root/KvxDemosaicing && $command"
    echo "== $command: $((SECONDS - start)) s"
done
