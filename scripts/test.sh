#!/usr/bin/env bash
# On a fresh Debian 12: installs what is missing, builds everything and runs all tests.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh
cmake --preset release
cmake --build --preset release
ctest --preset release
