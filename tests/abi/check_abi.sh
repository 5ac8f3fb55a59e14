#!/bin/sh
# Compares the binary interface of a shared library with the baseline: check_abi.sh LIBRARY BASELINE
[ "$(uname -m)" = x86_64 ] || { echo "The baseline is that of x86_64: nothing to compare with."; exit 77; }
abidiff --no-architecture --exported-interfaces-only --drop-private-types \
    --suppressions "$(dirname "$2")/other_libraries.suppr" "$2" "$1" || {
    echo "The binary interface of $1 is not that of $2. Programs that were built against the old one break where a"
    echo "record, an argument or a virtual function changed. What was only added: scripts/renew-abi.sh"
    exit 1
}
