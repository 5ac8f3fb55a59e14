#!/usr/bin/env bash
# Builds the site: site/build.sh KVX-DEMOSAIC OUTPUT. Warnings of Doxygen and Sphinx are errors.
# Sphinx reads a copy of the documents together with the generated parts, so that relative links work.
set -eu
cd "$(dirname "$0")/.."
tool=$(realpath "$1")
output=$(realpath -m "$2")
export KVX_SITE_WORK=$output.work
source=$KVX_SITE_WORK/source

rm -rf "$source" "$KVX_SITE_WORK/xml"
mkdir -p "$source"
cp -rp docs include examples CONTRIBUTING.md SECURITY.md CHANGELOG.md LICENSE "$source"
python3 -B site/generate.py "$tool" "$source/docs/generated"
doxygen site/Doxyfile
python3 site/namespace_members.py "$KVX_SITE_WORK/xml"

for header in include/*/*.h; do
    grep -qrF "{doxygenfile} ${header#include/}" docs/reference || { echo "no page in docs/reference shows $header"; exit 1; }
done
# -E: nothing from an earlier version of the headers.
sphinx-build -E -W --keep-going -q -b html -c site -d "$KVX_SITE_WORK/doctrees" \
    -D breathe_projects.KvxDemosaicing="$KVX_SITE_WORK/xml" "$source" "$output"
echo '<!DOCTYPE html><meta http-equiv="refresh" content="0; url=docs/index.html"><title>KvxDemosaicing</title>' \
    > "$output/index.html"
