#!/usr/bin/env python3
"""Opens a DNG file of ours in RawTherapee and darktable and compares their pictures with our own.

    scripts/install-packages.sh viewers
    scripts/dng_viewers.py build/release/tools/kvx-demosaic

The frame shows the drawn scene through a sensor with its own balance, matrix and levels. Both programs convert it
without a look of their own. Means of blocks of 16x16 pixels may differ by 2 of 255 in the median; single blocks of
saturated colours differ by more, since each program limits colours outside sRGB in its own way.
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile

import numpy as np
from PIL import Image

BLACK, WHITE = 256, 4000
GAINS = np.array([1.9, 1.0, 1.4])
MATRIX = np.array([[1.6, -0.4, -0.2], [-0.3, 1.5, -0.2], [0.1, -0.6, 1.5]])
EXPOSURE = 0.8
LARGEST_MEDIAN = 2
BLOCK = 16
HEIGHT, WIDTH = 480, 736  # in the middle: RawTherapee cuts a border off
VIEWERS = {
    "RawTherapee": ["rawtherapee-cli", "-q", "-Y", "-n", "-b8", "-o", "out.png", "-c", "frame.dng"],
    "darktable": ["darktable-cli", "frame.dng", "out.png", "--core", "--library", ":memory:", "--configdir", "config",
                  "--cachedir", "cache", "--conf", "plugins/darkroom/workflow=none",
                  "--conf", "plugins/darkroom/chromatic-adaptation=legacy"],
}


def write_frame(scene):
    encoded = np.asarray(Image.open(scene).convert("RGB")) / 255
    linear = np.where(encoded <= 0.04045, encoded / 12.92, ((encoded + 0.055) / 1.055) ** 2.4)
    sensor = EXPOSURE * linear @ np.linalg.inv(MATRIX).T / GAINS
    words = np.clip(np.rint(BLACK + sensor * (WHITE - BLACK)), 0, 4095).astype(np.uint16)
    frame = words[:, :, 1].copy()
    frame[0::2, 0::2], frame[1::2, 1::2] = words[0::2, 0::2, 0], words[1::2, 1::2, 2]
    frame.tofile("frame.raw")
    pathlib.Path("frame.raw.json").write_text(json.dumps({
        "format": "BayerRG12", "width": frame.shape[1], "height": frame.shape[0], "black_level": BLACK,
        "white_level": WHITE, "white_balance_gains": dict(zip("RGB", GAINS)),
        "colour_matrix": MATRIX.ravel().tolist()}))


def block_means(path):
    picture = np.asarray(Image.open(path).convert("RGB")).astype(float)
    top, left = (picture.shape[0] - HEIGHT) // 2, (picture.shape[1] - WIDTH) // 2
    middle = picture[top:top + HEIGHT, left:left + WIDTH]
    return middle.reshape(HEIGHT // BLOCK, BLOCK, WIDTH // BLOCK, BLOCK, 3).mean((1, 3))


def main():
    tool = pathlib.Path(sys.argv[1]).resolve()
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        os.environ["HOME"] = folder  # the programs keep settings there
        subprocess.run([tool, "demo", "."], check=True, stdout=subprocess.DEVNULL)
        write_frame("scene.png")
        subprocess.run([tool, "convert", "frame.raw", "frame.dng"], check=True)
        subprocess.run([tool, "convert", "frame.dng", "own.png", "--tone", "srgb", "--algorithm", "ipp"], check=True)
        own = block_means("own.png")
        for name, command in VIEWERS.items():
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            difference = np.abs(block_means("out.png") - own)
            pathlib.Path("out.png").unlink()
            median = np.median(difference)
            failures += median > LARGEST_MEDIAN
            print(f"{name}: blocks differ by {median:.1f} of 255 (median), 95 % by at most "
                  f"{np.percentile(difference, 95):.1f}")
        os.chdir("/")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
