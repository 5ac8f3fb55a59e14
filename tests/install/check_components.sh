#!/bin/sh
# Every installed file belongs to one component, and to the right one: a component is a Debian package. Headers and
# Python modules are listed by folder; manual pages are left out.   check_components.sh BUILD_DIR LIST COMPONENT...
set -eu
build=$1 list=$2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for component; do
    cmake --install "$build" --prefix "$work/$component" --component "$component" > /dev/null
    (cd "$work/$component" && find . -not -type d -printf "$component %P\n")
done | sed -e '/\/man\//d' -e 's#lib/[a-z0-9_]*-linux-gnu/#lib/#' -e 's/Targets-[a-z]*/Targets-BUILD/' \
    -e 's/\(\.so\.[0-9]*\)\..*/\1.VERSION/' | LC_ALL=C sort > "$work/files"
sed -e 's#[^/]*\.\(h\|py\|pyi\)$#*.\1#' -e 's/_native\..*so$/_native.so/' "$work/files" | LC_ALL=C sort -u > "$work/found"
# Only of components that this build has.
for component; do grep "^$component " "$list" || echo "$component is not in the list"; done | LC_ALL=C sort > "$work/expected"
diff -u "$work/expected" "$work/found"
twice=$(sed 's/^[^ ]* //' "$work/files" | sort | uniq -d)
[ -z "$twice" ] || { echo "in two components: $twice"; exit 1; }
