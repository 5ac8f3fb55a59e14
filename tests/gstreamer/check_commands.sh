#!/usr/bin/env bash
# Runs the commands of a document, one after the other in an empty folder: indented lines that begin with
# gst-launch-1.0 or kvx-demosaic, with the lines that they go on in. check_commands.sh DOCUMENT FOLDER_OF_THE_TOOL
# Lines that need a camera are told apart by their source: v4l2src, aravissrc.
set -euo pipefail
export PATH=$2:$PATH
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
commands=$(sed -e ':join' -e '/\\$/{N;s/\\\n *//;b join' -e '}' "$1" | grep -E '^ {4}(gst-launch-1.0|kvx-demosaic) ')
cd "$work"
count=0
while IFS= read -r command; do
    case $command in *v4l2src* | *aravissrc*) continue ;; esac
    if ! bash -c "$command" > log 2>&1 < /dev/null || grep -q ERROR log; then
        echo "failed: $command"
        cat log
        exit 1
    fi
    count=$((count + 1))
done <<< "$commands"
[ "$count" -ge 5 ] || { echo "only $count commands in $1"; exit 1; }
for picture in *.ppm; do
    [ "$(head -c 2 "$picture")" = P6 ] || { echo "$picture is no picture"; exit 1; }
done
echo "$count commands of $1 ran"
