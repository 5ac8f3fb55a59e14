#!/usr/bin/env bash
# Before a release, after scripts/package.sh: installs, uses and removes the packages in a bare Debian 12 in a folder.
# Run as root; takes a few minutes.   scripts/try-packages.sh [MIRROR]
set -eu
cd "$(dirname "$0")/.."
. scripts/bare-debian.sh
bare_debian try-packages "${1-}"

# A package source in addition to the mirror, so that apt resolves the dependencies as for any user.
mkdir "$root/packages"
cp build/package/*.deb "$root/packages"
(cd "$root/packages" && dpkg-scanpackages --multiversion . > Packages 2> /dev/null)
echo 'deb [trusted=yes] file:/packages ./' > "$root/etc/apt/sources.list.d/packages.list"
cp -r examples packaging/try "$root/root"

in_bare apt-get update -qq
for trial in packaging/try/*.sh; do
    echo "== $(basename "$trial" .sh)"
    in_bare /bin/sh "/root/try/$(basename "$trial")"
done
