#!/usr/bin/env bash
# Installs missing packages and builds the documentation site: build/site/index.html.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh site
cmake --preset release > /dev/null
cmake --build --preset release --target kvx-demosaic > /dev/null
site/build.sh build/release/tools/kvx-demosaic build/site
echo "build/site/index.html"
