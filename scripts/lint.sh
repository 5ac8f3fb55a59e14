#!/usr/bin/env bash
# Checks formatting and runs clang-tidy over the library and its front ends (a few minutes; files as arguments narrow it).
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh develop
git ls-files -z '*.h' '*.c' '*.cpp' | xargs -0 clang-format --dry-run -Werror
git ls-files -z 'python/*.py' 'tests/*.py' 'examples/*.py' 'bench/python/*.py' 'site/*.py' |
    xargs -0 flake8 --max-line-length 120
cmake --preset release > /dev/null
# A prebuilt-for-GCC flag list suits clang but for warnings that it does not know, and one flag.
mkdir -p build/lint
sed 's/ -femit-class-debug-always//' build/release/compile_commands.json > build/lint/compile_commands.json
if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files 'src/*.cpp' 'frame/*.cpp' 'tools/*.cpp' 'gstreamer/*.cpp' 'python/*.cpp')
    set -- "${files[@]}"
fi
printf '%s\0' "$@" | xargs -0 -n 1 -P "$(nproc)" clang-tidy -quiet -p build/lint
