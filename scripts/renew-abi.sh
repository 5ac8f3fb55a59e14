#!/usr/bin/env bash
# Updates the baselines of the binary interfaces in abi/, which tests/abi compares with. Use it after additions; a
# change or removal needs another soname.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh
cmake --preset release > /dev/null
cmake --build --preset release --target KvxFrame
for library in src/libKvxDemosaicing frame/libKvxFrame src/libKvxMisc; do
    name=${library#*/lib}
    # Exclude everything that depends on the folder or on line numbers.
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names --no-architecture \
        --type-id-style hash --exported-interfaces-only --drop-private-types \
        --drop-undefined-syms --no-write-default-sizes --suppressions abi/other_libraries.suppr \
        --headers-dir include/KvxDemosaicing --headers-dir include/KvxFrame --headers-dir src/KvxMisc \
        --out-file "abi/$name.abi" "build/release/$library.so"
    sed -i "s#path='$PWD/#path='#" "abi/$name.abi"
done
