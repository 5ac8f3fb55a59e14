#!/bin/sh
# Projects around this one get the libraries alone, optimised, under the names of the installed package; their own files
# are built as they choose. Configures and compiles one file; scripts/embed.sh builds and runs:
# check_embedding.sh SOURCE_DIR
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

expect() { # TEXT FILE: in a line of the file
    grep -q -e "$1" "$2" || { echo "no '$1' in $2 of $how"; exit 1; }
}
for how in add_subdirectory FetchContent; do
    out=$work/$how
    cmake -G Ninja -S "$1/tests/install/caller" -B "$out" -DHOW=$how -DKVX="$1" -DKVX_STATIC=ON \
        -DCMAKE_EXPORT_COMPILE_COMMANDS=ON > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
    cmake --build "$out" --target "CMakeFiles/frame.dir$1/examples/frame.cpp.o" > "$work/log" ||
        { cat "$work/log"; exit 1; }
    ninja -C "$out" -t targets all > "$work/targets"
    expect 'libKvxFrame.a: phony' "$work/targets"
    if grep -E 'kvx-demosaic|kvx_tests|kvx_bench|_native|gstkvx' "$work/targets"; then
        echo "more than the libraries: $how"
        exit 1
    fi
    grep '"command".*KvxBayer/MosaicRow.cpp' "$out/compile_commands.json" > "$work/ours"
    expect ' -O3 -DNDEBUG ' "$work/ours"
    if grep '"command".*examples/convert.c' "$out/compile_commands.json" | grep -e ' -O'; then
        echo "the caller's own files have our build type: $how"
        exit 1
    fi
    if DESTDIR=$work/installed cmake --install "$out" | grep KvxDemosaicing; then
        echo "the caller installs our files: $how"
        exit 1
    fi
done
