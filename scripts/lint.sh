#!/usr/bin/env bash
# Checks the formatting and runs clang-tidy over the library and its front ends, or over the files in the arguments.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh develop
git ls-files -z '*.h' '*.c' '*.cpp' '*.js' | xargs -0 clang-format --dry-run -Werror
git ls-files -z '*.py' | xargs -0 flake8 --max-line-length 120
for script in tools/tune/page/*.js; do node --check --input-type=module < "$script"; done  # modules
cmake --preset release > /dev/null
# clang accepts GCC's compile commands, except for one flag.
mkdir -p build/lint
sed 's/ -femit-class-debug-always//' build/release/compile_commands.json > build/lint/compile_commands.json
if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files 'src/*.cpp' 'frame/*.cpp' 'tools/*.cpp' 'gstreamer/*.cpp' 'python/*.cpp')
    set -- "${files[@]}"
fi
printf '%s\0' "$@" | xargs -0 -n 1 -P "$(nproc)" clang-tidy -quiet -p build/lint
