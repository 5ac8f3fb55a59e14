#!/bin/sh
# Compares what a shared library exports with a checked-in list: check_exports.sh LIBRARY LIST
exported=$(nm --dynamic --defined-only --demangle "$1" | cut -d' ' -f3- | LC_ALL=C sort -u)
printf '%s\n' "$exported" | diff -u "$2" - || {
    echo "The exported names of $1 differ from $2: a removed name breaks callers, an added one is a promise."
    exit 1
}
