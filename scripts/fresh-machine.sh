#!/usr/bin/env bash
# Before a release: clones the committed state into a bare Debian 12 in a folder and runs the two commands of README.md
# there. Run as root; takes half an hour on two cores.   scripts/fresh-machine.sh [MIRROR]
set -eu
cd "$(dirname "$0")/.."
. scripts/bare-debian.sh
bare_checkout fresh-machine "${1-}"
for command in scripts/demo.sh scripts/test.sh; do
    echo "== $command"
    start=$SECONDS
    in_checkout "$command"
    echo "== $command: $((SECONDS - start)) s"
done
