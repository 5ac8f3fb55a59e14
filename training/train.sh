#!/usr/bin/env bash
# Trains, exports and measures the weights of the learned interpolators:
#   training/train.sh PICTURES WORK [FOLDER...]
# PICTURES holds the pictures to learn from, WORK the runs and the decoded pictures (about a gigabyte), each FOLDER
# pictures to measure with. A run that was interrupted is taken up again. STEPS (default 40000) is for each of the four
# networks. The Bayer ones need the built Python module.
set -eu
cd "$(dirname "$0")/.."
[ $# -ge 2 ] || { sed -n '2,7s/^# \?//p' "$0"; exit 2; }
pictures=$(realpath "$1"); mkdir -p "$2"; work=$(realpath "$2"); shift 2
export PYTHONPATH=${PYTHONPATH-build/release/python}

scripts/install-packages.sh training
mkdir -p frame/learned/weights

stage() { # FAMILY NAME REDUCTION OPTIONS...
    local family=$1 name=$1-$2 reduction=$3
    shift 3
    /usr/bin/python3 -m training.train "$work/$name.pt" --pictures "$pictures" --cache "$work/decoded" \
        --family "$family" --steps "${STEPS-40000}" "$@" | tee -a "$work/$name.log"
    /usr/bin/python3 -m training.export "$work/$name.pt" "frame/learned/weights/$name.kvxn" --reduction "$reduction"
}
measure() { # FAMILY FILE OPTIONS...
    local family=$1 file=frame/learned/weights/$1-$2
    shift 2
    echo "$file"
    /usr/bin/python3 -m training.measure "$file" --family "$family" "$@"
}

for family in truesense bayer; do
    /usr/bin/python3 -m training.fit_swift "frame/learned/weights/$family-swift.kvxs" --family $family \
        --pictures "$pictures" --cache "$work/decoded"
done
stage truesense fine 6 --channels 40 --middle 4
stage truesense fine-noise 4 --channels 40 --middle 6 --noise
stage bayer fine 5 --channels 24 --middle 4
stage bayer fine-noise 5 --channels 24 --middle 4 --noise
[ $# -eq 0 ] && exit 0
for family in truesense bayer; do
    measure $family swift.kvxs "$@"
    measure $family fine.kvxn "$@"
    measure $family fine-noise.kvxn --gain 11 --gain 24 --gain 36.77 "$@"
done
