#!/usr/bin/env bash
# Runs the benchmarks (with the arguments, for example --benchmark_filter=12to8) and compares each with its reference.
# Figures are medians of interleaved repetitions, so a disturbance of the machine affects all alike.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh develop
cmake --preset release > /dev/null
cmake --build --preset release --target kvx_bench > /dev/null
results=$(mktemp)
trap 'rm -f "$results"' EXIT
build/release/bench/kvx_bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=15 \
    --benchmark_min_time=0.05 --benchmark_report_aggregates_only=true \
    --benchmark_out="$results" --benchmark_out_format=json "$@" > /dev/null
python3 bench/table.py "$results"
