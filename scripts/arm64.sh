#!/usr/bin/env bash
# Cross-compiles the libraries, the tool and their tests for arm64 (NEON) and runs them in qemu. The tests contain
# checksums of the pictures of every algorithm, which are the same on all machines. Takes half an hour on two cores; as
# root, since it installs packages. The packages of arm64 are unpacked below build/arm64, never installed.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh arm64
export KVX_ARM64_ROOT=$PWD/build/arm64/root
export OMP_WAIT_POLICY=passive OMP_NUM_THREADS=2

if [ ! -e "$KVX_ARM64_ROOT" ]; then
    mkdir -p build/arm64
    packages=libc6-dev,libstdc++-12-dev,libgcc-12-dev,libgomp1,libhwy-dev,libfmt-dev,libpng-dev,nlohmann-json3-dev
    packages+=,libgtest-dev,libcli11-dev,libcpp-httplib-dev,libraw-dev,libtiff-dev
    packages+=,libopencv-core-dev,libopencv-imgproc-dev,libopencv-imgcodecs-dev
    mmdebstrap --quiet --variant=extract --architectures=arm64 --include=$packages bookworm "$KVX_ARM64_ROOT.part" \
        "${1:-http://deb.debian.org/debian}"
    # Debian selects these when it configures packages, which does not happen here.
    for library in blas lapack; do
        ln -s $library/lib$library.so.3 "$KVX_ARM64_ROOT.part/usr/lib/aarch64-linux-gnu/lib$library.so.3"
    done
    mv "$KVX_ARM64_ROOT.part" "$KVX_ARM64_ROOT"
fi

cmake -S . -B build/arm64/build -G Ninja --toolchain cmake/Arm64Toolchain.cmake -DCMAKE_BUILD_TYPE=Release \
    -DKVX_BUILD_GSTREAMER=OFF -DKVX_BUILD_PYTHON=OFF -DKVX_BUILD_BENCH=OFF > /dev/null
cmake --build build/arm64/build --target kvx-demosaic kvx_tests kvx_frame_tests kvx_packing_tests

run() {
    echo "== ${1##*/}"
    qemu-aarch64-static -L "$KVX_ARM64_ROOT" "$@"
}
cd build/arm64/build
run tests/frame/packing/kvx_packing_tests --gtest_brief=1
run tests/frame/kvx_frame_tests --gtest_brief=1
run tests/kvx_tests --gtest_brief=1
run tools/kvx-demosaic demo demo > /dev/null
run tools/kvx-demosaic convert demo/scene_768x512_BayerRG12.raw demo/picture.png --look natural --algorithm fine
