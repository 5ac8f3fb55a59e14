#!/bin/sh
# Installs the module into an empty prefix, moves it, and converts a frame with it: check_install.sh BUILD_DIR PYTHON
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for component in misc runtime frame python; do
    cmake --install "$1" --prefix "$work/staged" --component $component > "$work/log"
done
mv "$work/staged" "$work/prefix"  # nothing may depend on where it was first put
packages=$(dirname "$(find "$work/prefix" -type d -name kvxdemosaicing)")
answer=$(cd "$work" && PYTHONPATH=$packages "$2" -c '
import kvxdemosaicing, numpy
picture = kvxdemosaicing.convert(numpy.full((4, 4), 1000, numpy.uint16), "BayerRG12")
maps = open("/proc/self/maps").read().split()
print(picture[1, 1], sum("/prefix/" in path and "libKvx" in path for path in maps) > 0)')
[ "$answer" = "[62 62 62] True" ] || { echo "the installed module says: $answer"; exit 1; }
[ -e "$packages/kvxdemosaicing/py.typed" ]
