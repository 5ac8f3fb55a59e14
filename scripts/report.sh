#!/usr/bin/env bash
# Compares speed and quality with other libraries and writes docs/report:
#
#     scripts/report.sh [--step STEP]... [[NAME=]PICTURE FOLDER...]
#
# Without --step it runs all steps, which takes about half an hour. Results stay in build/report, so that one step can
# be repeated; the page shows all results found there. Without folders of images, quality covers the drawn scene only. The
# images of the folders are copied to build/report only.
set -eu
cd "$(dirname "$0")/.."
steps=()
while [ "${1-}" = --step ]; do
    steps+=("$2")
    shift 2
done
[ ${#steps[@]} -gt 0 ] || steps=(finished instructions bayer-bytes bayer-words
    truesense-bytes truesense-words scaling quality noisy noise page)
[ ${#steps[@]} -eq 1 ] || scripts/install-packages.sh develop

results=build/report
programs=build/release/bench
mkdir -p $results docs/report

build() {
    cmake --preset release > /dev/null
    cmake --build --preset release --target "$@" > /dev/null
}

# Medians of interleaved repetitions, so a disturbance of the machine affects all alike.
measure_speed() {  # PROGRAM NAME FILTER
    build "$1"
    "$programs/$1" --benchmark_filter="$3" --benchmark_enable_random_interleaving=true \
        --benchmark_repetitions=5 --benchmark_min_time=0.04 \
        --benchmark_out=$results/unfinished.json --benchmark_out_format=json > /dev/null 2>&1
    mv $results/unfinished.json "$results/speed-$2.json"
}

measure_quality() {  # [NAME=]FOLDER...
    build kvx_quality kvx-demosaic
    rm -rf $results/folders $results/pictures $results/quality-*.json
    mkdir -p "$results/folders/drawn scene"
    build/release/tools/kvx-demosaic demo $results/demo > /dev/null
    cp $results/demo/scene.png "$results/folders/drawn scene/"
    local folder algorithm
    for folder in "$@"; do  # the page shows the name of the folder
        ln -s "$(realpath "${folder#*=}")" "$results/folders/$(basename "${folder%%=*}")"
    done
    for algorithm in $($programs/kvx_quality --list); do
        local pictures=$results/pictures/$algorithm
        mkdir -p "$pictures"
        $programs/kvx_quality --algorithm "$algorithm" --pictures "$pictures" --json "$results/quality-$algorithm.json" \
            "$results"/folders/* > /dev/null || echo "$algorithm: no results"
    done
    [ $# -gt 0 ] || echo "No folders of images: quality of the drawn scene only."
}

# The same images; other libraries remove no noise.
measure_noisy() {
    build kvx_quality
    rm -f $results/noisy-*.json
    local algorithm
    for algorithm in $($programs/kvx_quality --list | grep -v -e opencv -e gstreamer -e libraw); do
        $programs/kvx_quality --algorithm "$algorithm" --analog-gain 36.77 --json "$results/noisy-$algorithm.json" \
            "$results"/folders/* > /dev/null
    done
}

measure_noise() {
    build kvx_noise
    $programs/kvx_noise -a fast simple bayer-like kodak-like truesense-swift truesense-fine \
        --analog-gain 4.5 --analog-gain 11.04 --analog-gain 17 --analog-gain 23.96 --analog-gain 30 \
        --analog-gain 36.77 --json $results/noise.json > /dev/null
}

for step in "${steps[@]}"; do
    case $step in
        finished) measure_speed kvx_frame_bench $step '^frame_[a-z]*_12to8' ;;
        instructions) measure_speed kvx_frame_bench $step '^(AVX|SSE4|NEON|SVE).*_frame_' ;;
        bayer-bytes) measure_speed kvx_bench $step '^bayer_[0-9]+to8/' ;;
        bayer-words) measure_speed kvx_bench $step '^bayer_(10to10|12to12|14to14|16to16)/' ;;
        truesense-bytes) measure_speed kvx_bench $step '^truesense_algorithms_[0-9]+to8/' ;;
        truesense-words) measure_speed kvx_bench $step '^truesense_algorithms_(10to10|12to12|14to14)/' ;;
        scaling) measure_speed kvx_bench $step '_scaling/' ;;
        quality) measure_quality "$@" ;;
        noisy) measure_noisy ;;
        noise) measure_noise ;;
        page) /usr/bin/python3 -B scripts/report $results docs/report ;;
        *) echo "$0: unknown step: $step" >&2; exit 2 ;;
    esac
done
