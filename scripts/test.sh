#!/usr/bin/env bash
# On a fresh Debian 12: installs missing packages, builds everything and runs all tests.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh
cmake --workflow --preset release
