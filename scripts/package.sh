#!/usr/bin/env bash
# Builds the Debian packages in build/package, checks them with lintian and lists them. Arguments go to CMake. The
# maintainer is DEBFULLNAME and DEBEMAIL, or the author of the last commit.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh package

maintainer="${DEBFULLNAME:-$(git log -1 --format=%an)} <${DEBEMAIL:-$(git log -1 --format=%ae)}>"
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)  # the same commit gives the same files
export SOURCE_DATE_EPOCH
# Debian's flags: hardening, and no paths of this machine in the binaries. -g only if the build itself sets it.
export DEB_BUILD_MAINT_OPTIONS=hardening=+bindnow DEB_CFLAGS_MAINT_STRIP=-g DEB_CXXFLAGS_MAINT_STRIP=-g
eval "$(dpkg-buildflags --export=sh)"
export CFLAGS="$CFLAGS $CPPFLAGS" CXXFLAGS="$CXXFLAGS $CPPFLAGS"  # CMake does not read CPPFLAGS

cmake --preset package -DKVX_PACKAGE_MAINTAINER="$maintainer" "$@"
cmake --build --preset package
rm -f build/package/*.deb
(cd build/package && cpack)

as_root=()
[ "$(id -u)" -ne 0 ] || as_root=(--allow-root)
lintian --fail-on error "${as_root[@]}" build/package/*.deb
for package in build/package/*.deb; do
    # shellcheck disable=SC2016  # variables of dpkg-deb
    dpkg-deb --show --showformat='${Package} ${Version}, ${Installed-Size} KB: ${Depends}\n' "$package"
done
