#!/usr/bin/env bash
# Runs all tests with counters in the code and prints which share of the lines and branches of src, frame and tools they
# reach (arguments go to ctest, for example -R Bayer). A page for each file is in build/coverage/report.
#
# A kernel file is compiled once for each instruction set: a line counts as reached when any of them reached it. Branches
# that the compiler makes for exceptions alone do not count.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh develop
cmake --preset coverage > /dev/null
cmake --build --preset coverage > /dev/null
find build/coverage -name '*.gcda' -delete
# HalfWritten limits how large files may grow: the counters' too.
ctest --preset coverage --exclude-regex HalfWritten "$@" || echo "Not all tests passed." >&2
mkdir -p build/coverage/report
gcovr --root . --object-directory build/coverage --filter src/ --filter frame/ --filter tools/ \
    --exclude-throw-branches --exclude-unreachable-branches \
    --json-summary build/coverage/report/summary.json --html-details build/coverage/report/index.html \
    --txt build/coverage/report/files.txt
/usr/bin/python3 scripts/coverage_table.py build/coverage/report/summary.json
