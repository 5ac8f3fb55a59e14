#!/usr/bin/env bash
# Writes the binary interfaces of the two libraries anew, for tests/abi to compare with. For additions; what changes or
# goes away needs another soname.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh
cmake --preset release > /dev/null
cmake --build --preset release --target KvxDemosaicing
for library in KvxDemosaicing KvxMisc; do
    # Nothing that another folder or another line of a source file would change.
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names --no-architecture \
        --type-id-style hash --exported-interfaces-only --drop-private-types \
        --headers-dir include/KvxDemosaicing --headers-dir src/KvxMisc \
        --out-file "tests/abi/$library.abi" "build/release/src/lib$library.so"
    sed -i "s#path='$PWD/#path='#" "tests/abi/$library.abi"
done
