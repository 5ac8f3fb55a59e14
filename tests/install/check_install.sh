#!/bin/sh
# Installs into an empty prefix, moves it, and builds and runs the examples against it by CMake and by pkg-config:
# check_install.sh BUILD_DIR SOURCE_DIR
set -eu
build=$1
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/staged" > "$work/log"
mv "$work/staged" "$work/prefix"  # nothing may depend on where it was first put
prefix=$work/prefix

expect() { # NAME PROGRAM: what the examples print
    answer=$("$2")
    case $1 in
        c) [ "$answer" = "128 128 128" ] ;;
        cpp) [ "$answer" = "100 100 100" ] ;;
        frame) [ "$answer" = "BayerRG12p to RGB8: 187 187 187" ] ;;
    esac || { echo "$2 printed '$answer'"; exit 1; }
}

cmake -G Ninja -S "$source/examples" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" >> "$work/log"
cmake --build "$work/cmake" >> "$work/log"
expect c "$work/cmake/convert_c"
expect cpp "$work/cmake/convert_cpp"
expect frame "$work/cmake/frame"
expect frame "$work/cmake/frame_c"
if [ -e "$work/cmake/aravis" ]; then
    "$source/tests/install/check_aravis.sh" "$work/cmake/aravis"
else
    grep 'live camera is left out' "$work/log"
fi

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name KvxDemosaicing.pc)")
export PKG_CONFIG_PATH
LD_LIBRARY_PATH=$(dirname "$(find "$prefix" -name libKvxDemosaicing.so)")
export LD_LIBRARY_PATH
[ "$(pkg-config --modversion KvxDemosaicing)" ]
# shellcheck disable=SC2046  # the flags are words
cc -std=c11 "$source/examples/convert.c" -o "$work/by_pc_c" $(pkg-config --cflags --libs KvxDemosaicing)
# shellcheck disable=SC2046
c++ -std=c++17 "$source/examples/convert.cpp" -o "$work/by_pc_cpp" $(pkg-config --cflags --libs KvxDemosaicing)
expect c "$work/by_pc_c"
expect cpp "$work/by_pc_cpp"
# shellcheck disable=SC2046
c++ -std=c++17 "$source/examples/frame.cpp" -o "$work/by_pc_frame" $(pkg-config --cflags --libs KvxFrame)
expect frame "$work/by_pc_frame"
# shellcheck disable=SC2046
cc -std=c11 "$source/examples/frame.c" -o "$work/by_pc_frame_c" $(pkg-config --cflags --libs KvxFrame)
expect frame "$work/by_pc_frame_c"

for library in KvxDemosaicing KvxFrame KvxMisc; do
    objdump -p "$LD_LIBRARY_PATH/lib$library.so" | grep -q "SONAME *lib$library.so.3$"
done
if objdump -p "$LD_LIBRARY_PATH/libKvxFrame.so" | grep -q 'NEEDED *libopencv'; then
    echo "libKvxFrame needs OpenCV itself"
    exit 1
fi

plugin=$(find "$prefix" -name libgstkvxdemosaicing.so)
if [ "$plugin" ]; then
    GST_REGISTRY=$work/registry.bin GST_PLUGIN_PATH=$(dirname "$plugin") LD_LIBRARY_PATH='' \
        gst-inspect-1.0 kvxdemosaic | grep -q "Filename *$plugin"
fi

if grep -q '^KVX_BUILD_PYTHON:BOOL=ON' "$build/CMakeCache.txt"; then
    packages=$(find "$prefix" -type d -name dist-packages)
    answer=$(cd "$work" && PYTHONPATH=$packages LD_LIBRARY_PATH='' /usr/bin/python3 -c '
import kvxdemosaicing, numpy
picture = kvxdemosaicing.convert(numpy.full((4, 4), 1000, numpy.uint16), "BayerRG12")
maps = open("/proc/self/maps").read().split()
print(picture[1, 1], sum("/prefix/" in path and "libKvx" in path for path in maps) > 0)')
    [ "$answer" = "[62 62 62] True" ] && [ -e "$packages/kvxdemosaicing/py.typed" ] || { echo "the installed module says: $answer"; exit 1; }
fi

# Without the frame layer the library is a package of its own.
for component in misc runtime dev; do
    cmake --install "$build" --prefix "$work/alone" --component $component >> "$work/log"
done
[ -z "$(find "$work/alone" -name '*KvxFrame*')" ]
cmake -G Ninja -S "$source/examples" -B "$work/cmake_alone" -DCMAKE_PREFIX_PATH="$work/alone" >> "$work/log"
cmake --build "$work/cmake_alone" >> "$work/log"
expect c "$work/cmake_alone/convert_c"
if cmake -G Ninja -S "$source/tests/install/caller" -B "$work/refused" -DKVX="$source" \
    -DCMAKE_PREFIX_PATH="$work/alone" > "$work/refusal" 2>&1; then
    echo "a component that is not installed was found"
    exit 1
fi
grep -q 'no component KvxFrame' "$work/refusal" || { cat "$work/refusal"; exit 1; }
echo "the installed form works by CMake and by pkg-config"
