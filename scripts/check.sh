#!/usr/bin/env bash
# The checks that scripts/test.sh does not run: lint, the address and undefined-behaviour sanitizers over library,
# frame layer and tool, the thread sanitizer, and five seconds per fuzzer. Prints the time of each step and fails if one
# fails. Logs are in build/check.
#
#     scripts/check.sh [lint|sanitize|races|fuzz]...     without arguments: all of them
set -eu
cd "$(dirname "$0")/.."
[ $# -gt 0 ] || set -- lint sanitize races fuzz
scripts/install-packages.sh develop
export OMP_WAIT_POLICY=passive  # waiting threads do not occupy processors

mkdir -p build/check
failed=0
for step in "$@"; do
    case $step in
        lint) command=(scripts/lint.sh) ;;
        sanitize | races | fuzz) command=(cmake --workflow --preset "$step") ;;
        *) echo "$0: unknown step: $step" >&2; exit 2 ;;
    esac
    start=$SECONDS
    result=passed
    "${command[@]}" > "build/check/$step.log" 2>&1 || { result="FAILED, see build/check/$step.log"; failed=1; }
    printf '%-9s %3d min %2d s  %s\n' "$step" $(((SECONDS - start) / 60)) $(((SECONDS - start) % 60)) "$result"
done
exit $failed
