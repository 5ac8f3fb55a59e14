#!/usr/bin/env bash
# Before a release: clones the committed state into a bare Debian 12 in a folder and runs the two commands of README.md
# there. Run as root; takes half an hour on two cores.   scripts/fresh-machine.sh [MIRROR]
set -eu
cd "$(dirname "$0")/.."
. scripts/bare-debian.sh
bare_debian fresh-machine "${1:-http://deb.debian.org/debian}"
git clone --quiet . "$root/root/KvxDemosaicing"
for command in scripts/demo.sh scripts/test.sh; do
    echo "== $command"
    start=$SECONDS
    in_bare /bin/bash -c "cd /root/KvxDemosaicing && $command"
    echo "== $command: $((SECONDS - start)) s"
done
