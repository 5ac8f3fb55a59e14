#!/usr/bin/env bash
# Measures speed and quality beside other libraries and writes docs/report:
#
#     scripts/report.sh [--step STEP]... [[NAME=]PICTURE FOLDER...]
#
# Without --step it takes all steps, about twenty minutes. Results stay in build/report, so that a step can be renewed by
# itself; the page is made of whatever is there. Without folders of pictures the figures of quality are those of the
# drawn scene only. Pictures of the folders appear in build/report and nowhere else.
set -eu
cd "$(dirname "$0")/.."
steps=()
while [ "${1-}" = --step ]; do
    steps+=("$2")
    shift 2
done
[ ${#steps[@]} -gt 0 ] || steps=(bayer-bytes bayer-words truesense-bytes truesense-words scaling quality noise page)
[ ${#steps[@]} -eq 1 ] || scripts/install-packages.sh develop

results=build/report
programs=build/release/bench
mkdir -p $results docs/report

build() {
    cmake --preset release > /dev/null
    cmake --build --preset release --target "$@" > /dev/null
}

# Medians over interleaved repetitions, so that a disturbance of the machine meets all of them alike.
measure_speed() {  # NAME FILTER
    build kvx_bench
    $programs/kvx_bench --benchmark_filter="$2" --benchmark_enable_random_interleaving=true \
        --benchmark_repetitions=5 --benchmark_min_time=0.04 \
        --benchmark_out=$results/unfinished.json --benchmark_out_format=json > /dev/null 2>&1
    mv $results/unfinished.json "$results/speed-$1.json"
}

measure_quality() {  # [NAME=]FOLDER...
    build kvx_quality kvx-demosaic
    rm -rf $results/folders $results/pictures $results/quality-*.json
    mkdir -p "$results/folders/drawn scene"
    build/release/tools/kvx-demosaic demo $results/demo > /dev/null
    cp $results/demo/scene.png "$results/folders/drawn scene/"
    local folder algorithm
    for folder in "$@"; do  # the page calls a folder by its name
        ln -s "$(realpath "${folder#*=}")" "$results/folders/$(basename "${folder%%=*}")"
    done
    for algorithm in $($programs/kvx_quality --list); do
        local pictures=$results/pictures/$algorithm
        mkdir -p "$pictures"
        $programs/kvx_quality --algorithm "$algorithm" --pictures "$pictures" --json "$results/quality-$algorithm.json" \
            "$results"/folders/* > /dev/null || echo "$algorithm is left out"
    done
    [ $# -gt 0 ] || echo "No folders of pictures given: quality on the drawn scene only."
}

measure_noise() {
    build kvx_noise
    $programs/kvx_noise -a fast simple bayer-like kodak-like \
        --analog-gain 4.5 --analog-gain 11.04 --analog-gain 17 --analog-gain 23.96 --analog-gain 30 \
        --analog-gain 36.77 --json $results/noise.json > /dev/null
}

for step in "${steps[@]}"; do
    case $step in
        bayer-bytes) measure_speed $step '^bayer_[0-9]+to8/' ;;
        bayer-words) measure_speed $step '^bayer_(10to10|12to12|14to14|16to16)/' ;;
        truesense-bytes) measure_speed $step '^truesense_algorithms_[0-9]+to8/' ;;
        truesense-words) measure_speed $step '^truesense_algorithms_(10to10|12to12|14to14)/' ;;
        scaling) measure_speed $step '_scaling/' ;;
        quality) measure_quality "$@" ;;
        noise) measure_noise ;;
        page) /usr/bin/python3 -B scripts/report $results docs/report ;;
        *) echo "$0: no step is called $step" >&2; exit 2 ;;
    esac
done
