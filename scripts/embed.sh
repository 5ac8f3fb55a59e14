#!/usr/bin/env bash
# Builds and runs the example programs as the other projects of docs/howto/embed.md do: part of a project by
# add_subdirectory and by FetchContent, and against installed archives by CMake and by pkg-config. As root, with `bare`,
# in a bare Debian 12 in a folder with the packages of the libraries alone. Takes some minutes, several in a bare one.
#
#     scripts/embed.sh [bare [MIRROR]]
set -eu
cd "$(dirname "$0")/.."
if [ "${1-}" = bare ]; then
    . scripts/bare-debian.sh
    bare_checkout embed "${2-}"
    in_checkout scripts/embed.sh
    exit
fi
scripts/install-packages.sh libraries

shared=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
run() { # NAME: the programs print what they should, and need our shared libraries or not, as in $shared
    [ "$("$work/$1/convert_c")" = "128 128 128" ]
    [ "$("$work/$1/frame")" = "BayerRG12p to RGB8: 187 187 187" ]
    [ "$(ldd "$work/$1/frame" | grep -c libKvx)" -eq "$shared" ]
    echo "$1: built and run"
}
build() { # NAME HOW OPTIONS...
    cmake -G Ninja -S tests/install/caller -B "$work/$1" -DHOW="$2" -DKVX="$PWD" "${@:3}" > "$work/log"
    cmake --build "$work/$1" > "$work/log" || { cat "$work/log"; exit 1; }
    run "$1"
}
shared=3 build add_subdirectory add_subdirectory
shared=0 build FetchContent FetchContent -DKVX_STATIC=ON -DKVX_INSTALL=ON

cmake --install "$work/FetchContent" --prefix "$work/prefix" > "$work/log"
shared=0 build find_package find_package -DCMAKE_PREFIX_PATH="$work/prefix"

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name KvxFrame.pc)")
export PKG_CONFIG_PATH
mkdir "$work/pkg-config"
# shellcheck disable=SC2046  # the flags are words
cc -std=c11 examples/convert.c -o "$work/pkg-config/convert_c" $(pkg-config --cflags --libs KvxDemosaicing)
# shellcheck disable=SC2046
c++ -std=c++17 examples/frame.cpp -o "$work/pkg-config/frame" $(pkg-config --cflags --libs KvxFrame)
shared=0 run pkg-config
