#!/usr/bin/env bash
# On a fresh Debian 12: installs missing packages, builds the tool, and converts a raw Bayer frame to a colour image.
# An existing build tree keeps its configuration; scripts/test.sh completes a new one.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh demo
[ -f build/release/build.ninja ] || cmake --preset demo > /dev/null
cmake --build build/release --target kvx-demosaic

tool=build/release/tools/kvx-demosaic
"$tool" demo build/demo
"$tool" convert build/demo/scene_768x512_BayerRG12.raw build/demo/picture.png --algorithm ipp
echo "Converted a raw frame to build/demo/picture.png"
