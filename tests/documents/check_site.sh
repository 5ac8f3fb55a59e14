#!/bin/sh
# Builds the site with warnings as errors, if its packages are installed: check_site.sh KVX-DEMOSAIC OUTPUT
set -eu
for program in sphinx-build doxygen breathe-apidoc; do
    command -v $program > /dev/null || { echo "$program is missing: scripts/install-packages.sh site"; exit 77; }
done
exec "$(dirname "$0")/../../site/build.sh" "$1" "$2"
