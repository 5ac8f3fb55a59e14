#!/bin/sh
# Runs the live-camera example on Aravis' fake camera and checks its picture: a ramp of rainbow colours along the
# diagonal, the same on every pixel across it. check_aravis.sh PROGRAM
set -eu
picture=$(mktemp)
trap 'rm -f "$picture"' EXIT
answer=$("$1" Fake_1 20 "$picture")
[ "$answer" = "20 frames BayerRG8 512x512 from Fake_1" ] || { echo "it printed '$answer'"; exit 1; }
[ "$(head -c 15 "$picture" | tr '\n' ' ')" = "P6 512 512 255 " ] || { echo "no picture"; exit 1; }

# Rows 100 and 99, a sample a line.
row() {
    tail -c +16 "$picture" | tail -c +$((512 * 3 * $1 + 1)) | head -c $((512 * 3)) | od -An -v -w1 -tu1
}
{ row 100; row 99; } | awk '
    { sample[NR - 1] = $1 }
    function at(row, column, channel) { return sample[(row * 512 + column) * 3 + channel] }
    function abs(x) { return x < 0 ? -x : x }
    END {
        for (x = 8; x < 490; ++x) {
            for (channel = 0; channel < 3; ++channel) across += abs(at(0, x, channel) - at(1, x + 1, channel))
            # Along the ramp yellow turns into cyan by way of green: red falls and blue rises.
            if (at(0, x, 1) == 255 && at(0, x + 10, 1) == 255) {
                green++
                falling += at(0, x + 10, 0) < at(0, x, 0) && at(0, x + 10, 2) > at(0, x, 2)
            }
        }
        mean = across / (482 * 3)
        if (mean > 3 || green < 100 || falling < 0.95 * green) {
            printf "across the ramp %.2f levels; %d of %d steps in the right order\n", mean, falling, green
            exit 1
        }
    }'
