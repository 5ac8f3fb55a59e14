#!/usr/bin/env bash
# Runs all tests and prints their line and branch coverage of src, frame and tools (arguments go to ctest, for example
# -R Bayer). build/coverage/report has a page per file.
#
# A kernel file is compiled once per instruction set: a line counts as reached if any of them reached it. Branches that
# the compiler adds for exceptions do not count.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh develop
cmake --preset coverage > /dev/null
cmake --build --preset coverage > /dev/null
find build/coverage -name '*.gcda' -delete
# HalfWritten limits the size of files, also of those with the counters.
ctest --preset coverage --exclude-regex HalfWritten "$@" || echo "Some tests failed." >&2
mkdir -p build/coverage/report
gcovr --root . --object-directory build/coverage --filter src/ --filter frame/ --filter tools/ \
    --exclude-throw-branches --exclude-unreachable-branches \
    --json-summary build/coverage/report/summary.json --html-details build/coverage/report/index.html \
    --txt build/coverage/report/files.txt
/usr/bin/python3 scripts/coverage_table.py build/coverage/report/summary.json
