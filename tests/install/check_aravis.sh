#!/bin/sh
# Runs the live-camera example on Aravis' fake camera, whose picture is a ramp of rainbow colours along the diagonal:
# yellow turns into cyan by way of green. check_aravis.sh PROGRAM
set -eu
picture=$(mktemp)
trap 'rm -f "$picture"' EXIT
answer=$("$1" Fake_1 20 "$picture")
[ "$answer" = "20 frames BayerRG8 512x512 from Fake_1" ] || { echo "it printed '$answer'"; exit 1; }
[ "$(head -c 15 "$picture" | tr '\n' ' ')" = "P6 512 512 255 " ] || { echo "no picture"; exit 1; }

tail -c +$((16 + 512 * 3 * 100)) "$picture" | head -c $((512 * 3)) | od -An -v -w3 -tu1 | awk '
    { red[NR] = $1; green[NR] = $2; blue[NR] = $3 }
    END {
        for (x = 8; x < 490; ++x)
            if (green[x] == 255 && green[x + 10] == 255) {
                ++steps
                right += red[x + 10] < red[x] && blue[x + 10] > blue[x]
            }
        if (steps < 100 || right < 0.95 * steps) { print right + 0, "of", steps + 0, "steps in the right order"; exit 1 }
    }'
