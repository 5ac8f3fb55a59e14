#!/usr/bin/env bash
# Writes the binary interfaces of the three libraries anew, into abi/, for tests/abi to compare with. For additions: what
# changes or goes away needs another soname.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh
cmake --preset release > /dev/null
cmake --build --preset release --target KvxFrame
for library in src/libKvxDemosaicing frame/libKvxFrame src/libKvxMisc; do
    name=${library#*/lib}
    # Nothing that another folder or another line of a source file would change.
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names --no-architecture \
        --type-id-style hash --exported-interfaces-only --drop-private-types \
        --drop-undefined-syms --no-write-default-sizes --suppressions abi/other_libraries.suppr \
        --headers-dir include/KvxDemosaicing --headers-dir include/KvxFrame --headers-dir src/KvxMisc \
        --out-file "abi/$name.abi" "build/release/$library.so"
    sed -i "s#path='$PWD/#path='#" "abi/$name.abi"
done
