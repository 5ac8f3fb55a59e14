#!/usr/bin/env bash
# On a fresh Debian 12: installs what is missing, builds the tool, and makes a colour picture from a raw Bayer frame.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh
cmake --preset release > /dev/null
cmake --build --preset release --target kvx-demosaic

tool=build/release/tools/kvx-demosaic
"$tool" demo build/demo
"$tool" convert build/demo/scene_768x512_BayerRG12.raw build/demo/picture.png --algorithm ipp
echo "The main job, a raw frame in and a picture out: build/demo/picture.png"
